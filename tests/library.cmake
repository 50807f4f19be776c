# Tests of cmif/, on every target.

# Stand-ins for the platform's store and for system calls: objects, so that every program has all.
add_library(test_support OBJECT
  support/at_request.cpp support/at_request_checks.cpp support/child.cpp support/memory_store.cpp
  support/queue_pair.cpp support/record.cpp support/redirect.cpp support/system_calls.cpp)
target_include_directories(test_support PUBLIC support ${PROJECT_SOURCE_DIR}/cmif
  ${PROJECT_SOURCE_DIR}/platform)
target_link_libraries(test_support PRIVATE GTest::gtest_main PUBLIC ${CMAKE_DL_LIBS})
target_precompile_headers(test_support REUSE_FROM prefix)

# library_test(NAME): NAME.cpp over the library and the stand-ins.
function(library_test name)
  cmif_test(${name} LIBRARIES test_support cmif)
endfunction()

# support_library(NAME): support/NAME.cpp, for the programs that need it.
function(support_library name)
  add_library(${name} OBJECT support/${name}.cpp)
  target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  target_link_libraries(${name} PRIVATE test_support GTest::gtest_main)
  target_precompile_headers(${name} REUSE_FROM prefix)
endfunction()

library_test(text_getters_test)
library_test(code_getters_test)
library_test(other_getters_test)
library_test(broadband_info_test)
library_test(at_sim_test)
library_test(at_sim_queries_test)
library_test(trace_test)
library_test(at_channel_test)
library_test(at_trace_test)
library_test(at_radio_test)

# The header in C and in C++, and what the library shows of itself.
library_test(header_test)
target_sources(header_test PRIVATE header_test.c)
set_target_properties(header_test PROPERTIES C_EXTENSIONS OFF DISABLE_PRECOMPILE_HEADERS ON)
set_source_files_properties(header_test.c PROPERTIES COMPILE_OPTIONS -pedantic-errors)
foreach(language c99 c17 c++98 c++20)
  string(REGEX REPLACE "[0-9]+" "" input ${language})
  add_test(NAME header_as_${language} COMMAND ${CMAKE_CXX_COMPILER} -std=${language} -pedantic-errors
    -Wall -Wextra -Werror -fsyntax-only -x ${input} ${PROJECT_SOURCE_DIR}/cmif/cmif.h)
endforeach()
add_test(NAME exports_test COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/exports_test.sh $<TARGET_FILE:cmif>
  ${PROJECT_SOURCE_DIR}/cmif/cmif.h $<TARGET_FILE:tarn_store> ${CMAKE_C_COMPILER} ${CMAKE_NM}
  ${CMAKE_READELF} "${CMIF_SANITIZE}")
library_test(at_operator_test)
library_test(at_misc_test)
library_test(at_sms_test)
library_test(message_copy_test)
library_test(provider_list_test)
library_test(provider_list_file_test)
library_test(symbol_filter_test)
library_test(property_test)
support_library(mailbox)
foreach(name at_sms_test message_copy_test)
  target_link_libraries(${name} PRIVATE mailbox)
endforeach()
support_library(provider_list_run)
foreach(name provider_list_test provider_list_file_test property_test)
  target_link_libraries(${name} PRIVATE provider_list_run)
endforeach()
target_sources(property_test PRIVATE reference/message_copy.cpp reference/provider_list.cpp)

# The debug log and the calls to the QMI daemon.
support_library(qmi_call)
function(qmi_test name)
  library_test(${name})
  target_link_libraries(${name} PRIVATE qmi_call)
endfunction()
library_test(time_stamp_test)
library_test(debug_log_test)
library_test(debug_log_rotation_test)
library_test(debug_log_writers_test)
qmi_test(qmi_channel_test)
qmi_test(qmi_ready_test)
qmi_test(qmi_switch_test)
qmi_test(qmi_caller_test)
qmi_test(qmi_connection_test)
qmi_test(qmi_waits_test)
qmi_test(qmi_profile_test)
qmi_test(qmi_profile_modify_test)
qmi_test(qmi_auto_apn_test)
qmi_test(qmi_status_test)
qmi_test(qmi_small_requests_test)
library_test(threads_test)

# The table of all functions, against the library.
add_test(NAME functions_table_test COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/functions_table_test.sh
  $<TARGET_FILE:cmif> ${PROJECT_SOURCE_DIR}/docs/functions.md ${CMAKE_NM})
