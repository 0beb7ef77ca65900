# What is installed, and where.

# brivane_libexec(<target> <command>)
#
# A program that Brivane runs and nobody else does, under the name <command>. It lies beside the
# programs of the build tree as it does when installed, so that both find it the same way.
function(brivane_libexec target command)
  set_target_properties(${target} PROPERTIES
    OUTPUT_NAME ${command}
    RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/libexec/brivane
  )
  set_property(GLOBAL APPEND PROPERTY BRIVANE_LIBEXEC ${target})
  install(TARGETS ${target} DESTINATION ${CMAKE_INSTALL_LIBEXECDIR}/brivane)
endfunction()

# brivane_install(): the program and what a desktop knows it by. To be called when all targets exist.
function(brivane_install)
  if(NOT TARGET brivane)
    return()
  endif()
  get_property(helpers GLOBAL PROPERTY BRIVANE_LIBEXEC)
  add_dependencies(brivane ${helpers})
  install(TARGETS brivane DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES data/com.brivane.app.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES data/com.brivane.app.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
  install(FILES data/com.brivane.app.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps
  )
endfunction()
