# brivane_module(<folder> SOURCES ... [LINKS ...])
#
# One folder of src/ as one static library, brivane_<folder>. Headers are included from src/
# ("platform/Walk.h"), so that an include names the folder that it depends on.
function(brivane_module folder)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  set(target brivane_${folder})
  qt_add_library(${target} STATIC ${ARG_SOURCES})
  target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${target} PUBLIC Qt6::Core QCoro6::Core ${ARG_LINKS}
    PRIVATE brivane_options
  )
  target_precompile_headers(${target} PRIVATE
    <QByteArray> <QObject> <QString> <algorithm> <functional> <memory> <optional> <vector>
  )
endfunction()

# What `./test tsan` builds and runs.
add_custom_target(threaded_tests)

# brivane_test(<name> [THREADED] SOURCES ... [LINKS ...])
#
# One test program, each of its cases a CTest test. THREADED are those that are worth the thread
# sanitizer: threads of our own are in them, and little else that it cannot see into.
function(brivane_test name)
  cmake_parse_arguments(ARG "THREADED" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LINKS} GTest::gmock GTest::gtest brivane_options)
  set(labels)
  if(ARG_THREADED)
    add_dependencies(threaded_tests ${name})
    set(labels LABELS threads)
  endif()
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT 300 ENVIRONMENT QT_QPA_PLATFORM=offscreen ${labels}
  )
endfunction()
