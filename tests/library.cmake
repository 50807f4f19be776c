# Tests of cmif/, on every target.
