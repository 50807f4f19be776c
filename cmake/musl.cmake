# musl(TRIPLET ARCHITECTURE PROCESSOR [QEMU]): Debian's compiler for TRIPLET over the musl that
# `scripts/musl ARCHITECTURE` has unpacked. Debian has no C++ library for musl. The library needs none:
# the headers of glibc's do.
include(${CMAKE_CURRENT_LIST_DIR}/cross.cmake)

macro(musl triplet architecture processor)
  cross(${triplet} ${processor} ${ARGN})
  get_filename_component(root ${CMAKE_CURRENT_LIST_DIR}/../build/musl/${architecture} ABSOLUTE)
  file(GLOB specs ${root}/usr/lib/*/musl-gcc.specs)
  if(NOT specs)
    message(FATAL_ERROR "First run scripts/musl ${architecture}")
  endif()
  set(CMAKE_C_FLAGS_INIT "'-specs=${specs}'")

  execute_process(COMMAND ${triplet}-g++ -E -x c++ -v /dev/null OUTPUT_QUIET ERROR_VARIABLE searched)
  string(REGEX MATCHALL " /[^\n]*/c[+][+]/[^\n]*" headers "${searched}")
  list(JOIN headers " -isystem" headers)
  set(CMAKE_CXX_FLAGS_INIT "'-specs=${specs}' -nostdinc++ -isystem${headers} '-D__GLIBC_PREREQ(a,b)=0'")

  set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY) # a program would be linked with the C++ library
  file(GLOB loader ${root}/lib/ld-musl-*.so.1)
  set(CMAKE_EXE_LINKER_FLAGS_INIT "'-Wl,--dynamic-linker=${loader}'")
endmacro()
