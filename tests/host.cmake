# Tests of platform/, sim/ and tools/.
