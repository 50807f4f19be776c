include(${CMAKE_CURRENT_LIST_DIR}/cross.cmake)
cross(arm-linux-gnueabihf arm arm)
