# How every target of the project is compiled: language, warnings, sanitizers, compiler cache.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

set(BRIVANE_SANITIZE "" CACHE STRING "Value for -fsanitize=, e.g. address,undefined; empty for none")

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  # Precompiled headers carry time stamps; ccache has to be told that those do not matter.
  set(CMAKE_CXX_COMPILER_LAUNCHER
    ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
    ${CCACHE_PROGRAM}
  )
endif()

add_library(brivane_options INTERFACE)
target_compile_options(brivane_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wnon-virtual-dtor
  -Woverloaded-virtual -Wcast-align -Wold-style-cast -Wnull-dereference -Werror
  -fcoroutines -fno-strict-aliasing
  $<$<CONFIG:Release>:-Wno-null-dereference>
)
target_compile_definitions(brivane_options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_KEYWORDS
  QT_DISABLE_DEPRECATED_BEFORE=0x060400
)
if(BRIVANE_SANITIZE)
  target_compile_options(brivane_options INTERFACE
    -fsanitize=${BRIVANE_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all
    # Sanitizer instrumentation makes the flow analysis see null where there is none.
    -Wno-null-dereference -Wno-maybe-uninitialized
  )
  if(BRIVANE_SANITIZE STREQUAL thread)
    # It does not know fences, of which Qt's headers have some.
    target_compile_options(brivane_options INTERFACE -Wno-tsan)
  endif()
  target_link_options(brivane_options INTERFACE -fsanitize=${BRIVANE_SANITIZE})
endif()
