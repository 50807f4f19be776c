# Target isolate: the launcher of tests and fuzz targets; variable launcher: its path.
# It runs on the build machine, whatever they are built for, and without sanitizers.
find_program(HOST_CXX NAMES c++ g++ clang++ NO_CMAKE_FIND_ROOT_PATH REQUIRED)
set(CMIF_LAUNCHER "" CACHE FILEPATH "A launcher that another build folder of these sources has made")
set(launcher ${PROJECT_BINARY_DIR}/bin/isolate)
if(CMIF_LAUNCHER)
  add_custom_target(isolate ALL COMMAND ${CMAKE_COMMAND} -E create_symlink ${CMIF_LAUNCHER} ${launcher})
  return()
endif()
file(GLOB launcher_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/sandbox/*.cpp)
file(GLOB launcher_headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/sandbox/*.h)
add_custom_command(
  OUTPUT ${launcher}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/bin # which Makefiles don't make
  COMMAND ${HOST_CXX} -std=c++20 -O1 -I${PROJECT_SOURCE_DIR} -o ${launcher} ${launcher_sources}
  DEPENDS ${launcher_sources} ${launcher_headers} ${PROJECT_SOURCE_DIR}/cmif/cmif.h
  VERBATIM)
add_custom_target(isolate ALL DEPENDS ${launcher})

# Not built: it puts the source into the compile commands, which editors and checkers read.
add_library(isolate_for_checkers OBJECT EXCLUDE_FROM_ALL ${PROJECT_SOURCE_DIR}/sandbox/isolate.cpp)
