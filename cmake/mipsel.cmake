include(${CMAKE_CURRENT_LIST_DIR}/cross.cmake)
cross(mipsel-linux-gnu mipsel mipsel)
