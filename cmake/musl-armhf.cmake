include(${CMAKE_CURRENT_LIST_DIR}/musl.cmake)
musl(arm-linux-gnueabihf armhf arm arm)
