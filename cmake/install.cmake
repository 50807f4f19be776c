# What `cmake --install` installs, in components. docs/packaging.md has the list.

# Everything runs from where it is installed, and can be moved.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
file(RELATIVE_PATH libraries_from_programs ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
set(CMAKE_INSTALL_RPATH $ORIGIN/${libraries_from_programs})

# install_program(NAME COMPONENT): the target, with the manual page and the completions that it prints.
function(install_program name component)
  install(TARGETS ${name} RUNTIME COMPONENT ${component})
  if(CMAKE_CROSSCOMPILING)
    return()
  endif()
  set(run ${CMAKE_COMMAND} -E env) # finds the libraries with CMAKE_SKIP_RPATH, too
  foreach(library cmif tarn_store)
    list(APPEND run --modify LD_LIBRARY_PATH=path_list_prepend:$<TARGET_FILE_DIR:${library}>)
  endforeach()
  add_custom_command(OUTPUT ${name}.1 ${name}.bash _${name}
    COMMAND ${run} $<TARGET_FILE:${name}> manual > ${name}.1
    COMMAND ${run} $<TARGET_FILE:${name}> completion bash > ${name}.bash
    COMMAND ${run} $<TARGET_FILE:${name}> completion zsh > _${name}
    DEPENDS ${name} VERBATIM)
  add_custom_target(${name}-texts ALL DEPENDS ${name}.1 ${name}.bash _${name})
  set(texts ${CMAKE_CURRENT_BINARY_DIR})
  install(FILES ${texts}/${name}.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT ${component})
  install(FILES ${texts}/${name}.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
          RENAME ${name} COMPONENT ${component})
  install(FILES ${texts}/_${name} DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions
          COMPONENT ${component})
endfunction()

# install_pkg_config(LIBRARY DESCRIPTION COMPONENT): LIBRARY.pc, which finds its folders from its own
# place. Not in /usr: from there cross builds take it, whose pkg-config puts the sysroot in front.
function(install_pkg_config library description component)
  set(prefix ${CMAKE_INSTALL_PREFIX})
  if(NOT prefix STREQUAL /usr)
    file(RELATIVE_PATH up ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${prefix})
    set(prefix "\${pcfiledir}/${up}")
  endif()
  string(REGEX REPLACE "/$" "" prefix "${prefix}")
  set(includedir "\${prefix}")
  set(libdir "\${prefix}")
  cmake_path(APPEND includedir ${CMAKE_INSTALL_INCLUDEDIR}) # an absolute one replaces it
  cmake_path(APPEND libdir ${CMAKE_INSTALL_LIBDIR})
  configure_file(${PROJECT_SOURCE_DIR}/cmake/library.pc.in ${library}.pc @ONLY)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${library}.pc
          DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT ${component})
endfunction()

# find_package(cmif), the licence and the examples.
function(install_package)
  include(CMakePackageConfigHelpers)
  write_basic_package_version_file(${PROJECT_BINARY_DIR}/cmif-config-version.cmake
    COMPATIBILITY SameMajorVersion)
  file(WRITE ${PROJECT_BINARY_DIR}/cmif-config.cmake
    "include(\"\${CMAKE_CURRENT_LIST_DIR}/cmif-targets.cmake\")\n")
  install(EXPORT cmif FILE cmif-targets.cmake NAMESPACE cmif::
          DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/cmif COMPONENT development)
  install(FILES ${PROJECT_BINARY_DIR}/cmif-config.cmake ${PROJECT_BINARY_DIR}/cmif-config-version.cmake
          DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/cmif COMPONENT development)
  install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT runtime)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples DESTINATION ${CMAKE_INSTALL_DOCDIR}
          COMPONENT development FILES_MATCHING PATTERN *.[ch] PATTERN scenarios EXCLUDE)
endfunction()
