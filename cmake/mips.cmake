include(${CMAKE_CURRENT_LIST_DIR}/cross.cmake)
cross(mips-linux-gnu mips mips)
