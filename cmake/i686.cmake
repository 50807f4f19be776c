include(${CMAKE_CURRENT_LIST_DIR}/cross.cmake)
cross(i686-linux-gnu i686)

# The cross compiler's own loader and libraries: nothing else need be installed to run the tests.
set(CMAKE_EXE_LINKER_FLAGS_INIT
    "-Wl,--dynamic-linker=/usr/i686-linux-gnu/lib/ld-linux.so.2 -Wl,-rpath,/usr/i686-linux-gnu/lib")
