# Tests of platform/, sim/ and tools/.

# What runs in a child, and what it prints.
add_library(host_support OBJECT support/child.cpp support/redirect.cpp)
target_link_libraries(host_support PRIVATE GTest::gtest_main)
target_precompile_headers(host_support REUSE_FROM prefix)

# The development store. One test opens its database as well.
foreach(name host_store_test host_store_kill_test host_store_trouble_test)
  cmif_test(${name} LIBRARIES host_support tarn_store)
  target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
endforeach()
target_link_libraries(host_store_kill_test PRIVATE ${LMDB_LIBRARY})

# Over the store's own sources without sanitizers, whose allocator itself is stuck after such a fork.
get_target_property(store_sources tarn_store SOURCES)
list(TRANSFORM store_sources PREPEND ${PROJECT_SOURCE_DIR}/platform/)
add_library(plain_store OBJECT ${store_sources})
set_target_properties(plain_store PROPERTIES UNITY_BUILD ON)
cmif_test(host_store_fork_test LIBRARIES plain_store ${LMDB_LIBRARY}
  SOURCES support/child.cpp support/redirect.cpp)
target_include_directories(host_store_fork_test PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}
  ${PROJECT_SOURCE_DIR}/platform)
foreach(name plain_store host_store_fork_test)
  target_compile_options(${name} PRIVATE -fno-sanitize=all)
endforeach()
target_link_options(host_store_fork_test PRIVATE -fno-sanitize=all)
set_target_properties(host_store_fork_test PROPERTIES DISABLE_PRECOMPILE_HEADERS ON)

foreach(name sandbox_test shared_sandbox_test)
  cmif_test(${name} LIBRARIES sim_sandbox)
endforeach()
target_compile_definitions(sandbox_test PRIVATE ISOLATE="${launcher}")
cmif_test(run_test)
target_compile_definitions(run_test PRIVATE CMIF_SIM="$<TARGET_FILE:cmif-sim>")
add_dependencies(run_test cmif-sim cmifctl)

# The simulated modem and its AT daemon.
foreach(name sim_card_test network_test modem_test)
  cmif_test(${name} LIBRARIES sim_modem)
endforeach()
foreach(name at_daemon_test at_requests_test at_lists_test)
  cmif_test(${name} LIBRARIES host_support sim_modem)
endforeach()

# Its data connection and the QMI daemon, asked through the library as well.
foreach(name connection_test modem_connection_test)
  cmif_test(${name} LIBRARIES sim_modem)
endforeach()
foreach(name qmi_daemon_test qmi_daemon_requests_test qmi_daemon_connection_test)
  cmif_test(${name} LIBRARIES host_support sim_modem cmif)
endforeach()

# The example, built as a user would and run over the development store.
set(example_options)
if(CMIF_SANITIZE)
  set(example_options -fsanitize=${CMIF_SANITIZE})
  if(CMAKE_C_COMPILER_ID STREQUAL Clang)
    list(APPEND example_options -fsanitize-link-c++-runtime -lstdc++) # for the store
  endif()
endif()
add_test(NAME example_test COMMAND ${launcher} ${CMAKE_CURRENT_SOURCE_DIR}/example_test.sh
  ${PROJECT_SOURCE_DIR} $<TARGET_FILE_DIR:cmif> ${CMAKE_C_COMPILER} ${example_options})

# The parts of cmifctl that need no daemon.
foreach(name cmifctl_output_test cmifctl_command_test cmifctl_call_test cmifctl_questions_test)
  cmif_test(${name} LIBRARIES cmifctl_parts)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
endforeach()

include(end_to_end/tests.cmake)
