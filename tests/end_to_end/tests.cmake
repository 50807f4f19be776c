# cmifctl against the simulated router, through the library, the queues, the store and the daemons.

# end_to_end_test(NAME LAUNCHER...): NAME.sh under the launcher, as the test EndToEnd.NAME.
function(end_to_end_test name)
  add_test(NAME EndToEnd.${name}
    COMMAND ${ARGN} sh ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/${name}.sh
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}) # which the sandbox keeps in sight
  set_tests_properties(EndToEnd.${name} PROPERTIES TIMEOUT 60 COST 10 # first, being long
    ENVIRONMENT_MODIFICATION "PATH=path_list_prepend:$<TARGET_FILE_DIR:cmif-sim>")
endfunction()

foreach(name sim_pin sim_lost sim_settings status usage refused radio network sms data_profile log)
  end_to_end_test(${name} $<TARGET_FILE:cmif-sim> run --pace 0.1 --)
endforeach()
# States on the way last long enough to be seen.
foreach(name data_connection data_change)
  end_to_end_test(${name} $<TARGET_FILE:cmif-sim> run --pace 0.3 --)
endforeach()
# These start and end the router themselves.
foreach(name status_alone at_daemon qmi_daemon config data_kept)
  end_to_end_test(${name} ${launcher})
endforeach()
