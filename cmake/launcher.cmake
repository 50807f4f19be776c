# Target isolate: the launcher of tests and fuzz targets; variable launcher: its path.
# It runs on this machine whatever they are built for, and without sanitizers.
find_program(HOST_CXX NAMES c++ g++ clang++ NO_CMAKE_FIND_ROOT_PATH REQUIRED)
set(launcher ${PROJECT_BINARY_DIR}/bin/isolate)
set(launcher_sources isolate.cpp sandbox.cpp private_tree.cpp unisolated.cpp)
set(launcher_headers sandbox.h check.h private_tree.h unisolated.h interrupts.h)
list(TRANSFORM launcher_sources PREPEND ${PROJECT_SOURCE_DIR}/sandbox/)
list(TRANSFORM launcher_headers PREPEND ${PROJECT_SOURCE_DIR}/sandbox/)
add_custom_command(
  OUTPUT ${launcher}
  COMMAND ${HOST_CXX} -std=c++20 -O1 -I${PROJECT_SOURCE_DIR} -o ${launcher} ${launcher_sources}
  DEPENDS ${launcher_sources} ${launcher_headers} ${PROJECT_SOURCE_DIR}/cmif/cmif.h
  VERBATIM)
add_custom_target(isolate ALL DEPENDS ${launcher})
