options:
	@printf '%s\n' $(CMAKE_OPTIONS)
