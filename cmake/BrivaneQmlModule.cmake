# brivane_qml_module(<folder> <name> QML_FILES ... [SINGLETONS ...] [DEPENDENCIES ...])
#
# Adds the QML module Brivane.<name> to the library of a folder that brivane_module() has made. All of it
# is compiled into the binary, below qrc:/qt/qml: engines need that import path, and programs link
# brivane_<folder>plugin. SINGLETONS are those of the QML_FILES that hold one;
# DEPENDENCIES are modules whose types stand in the C++ side's properties.
function(brivane_qml_module folder name)
  cmake_parse_arguments(ARG "" "" "QML_FILES;SINGLETONS;DEPENDENCIES" ${ARGN})
  set(target brivane_${folder})
  if(ARG_SINGLETONS)
    set_source_files_properties(${ARG_SINGLETONS} PROPERTIES QT_QML_SINGLETON_TYPE TRUE)
  endif()
  qt_add_qml_module(${target}
    URI Brivane.${name}
    VERSION 1.0
    RESOURCE_PREFIX /qt/qml
    OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/qml/Brivane/${name}
    DEPENDENCIES QtQuick ${ARG_DEPENDENCIES}
    IMPORT_PATH ${CMAKE_BINARY_DIR}/qml
    QML_FILES ${ARG_QML_FILES}
  )
  # The generated registration of the C++ types includes their headers by bare name.
  target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  # Code that the QML compiler writes is not ours to keep free of warnings.
  get_target_property(sources ${target} SOURCES)
  list(FILTER sources INCLUDE REGEX "/qmlcache/.*\\.cpp$")
  set_source_files_properties(${sources} PROPERTIES COMPILE_OPTIONS -w)
  # The QML compiler looks into the other files of the module for the types of what a file uses. Built
  # without this, a file that others use would change behind their backs.
  foreach(source IN LISTS sources)
    if(NOT source MATCHES "qmlcache_loader")
      add_custom_command(OUTPUT ${source} APPEND DEPENDS ${ARG_QML_FILES})
    endif()
  endforeach()
endfunction()
