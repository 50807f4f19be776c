include(${CMAKE_CURRENT_LIST_DIR}/musl.cmake)
musl(x86_64-linux-gnu amd64 x86_64)
