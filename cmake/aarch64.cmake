include(${CMAKE_CURRENT_LIST_DIR}/cross.cmake)
cross(aarch64-linux-gnu aarch64 aarch64)
