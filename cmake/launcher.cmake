# Target isolate: the launcher of tests and fuzz targets; variable launcher: its path.
# It runs on this machine whatever they are built for, and without sanitizers.
find_program(HOST_CXX NAMES c++ g++ clang++ NO_CMAKE_FIND_ROOT_PATH REQUIRED)
set(launcher ${PROJECT_BINARY_DIR}/bin/isolate)
set(launcher_sources isolate.cpp sandbox.cpp private_tree.cpp shared_ground.cpp)
list(TRANSFORM launcher_sources PREPEND ${PROJECT_SOURCE_DIR}/sim/)
add_custom_command(
  OUTPUT ${launcher}
  COMMAND ${HOST_CXX} -std=c++20 -O1 -o ${launcher} ${launcher_sources}
  DEPENDS ${launcher_sources} ${PROJECT_SOURCE_DIR}/sim/sandbox.h ${PROJECT_SOURCE_DIR}/sim/need.h
          ${PROJECT_SOURCE_DIR}/sim/private_tree.h ${PROJECT_SOURCE_DIR}/sim/shared_ground.h
          ${PROJECT_SOURCE_DIR}/sim/interrupts.h
  VERBATIM)
add_custom_target(isolate ALL DEPENDS ${launcher})
