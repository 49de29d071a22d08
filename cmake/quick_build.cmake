# What makes the build for ./test quick. Every other build reads each source on its own, which tells includes that are missing.

set(OX_QUICK OFF)
if(OX_SANITIZE AND CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  set(OX_QUICK ON)
  add_compile_options("SHELL:-Xclang -fno-pch-timestamp")  # the same header makes the same file, which ccache wants
endif()

# ox_precompile_headers(NAME LINKS...): what most sources include is read once. For sources with the toolkit that is the
# toolkit; the others share the headers of the standard library.
function(ox_precompile_headers name)
  if(NOT OX_QUICK)
    return()
  endif()
  if("${ARGN}" MATCHES "Qt6")
    target_precompile_headers(${name} PRIVATE <QApplication> <QLabel> <QMenu> <QPainter> <QPushButton> <QWidget>
                              <algorithm> <functional> <optional> <vector>)
    return()
  endif()
  if(NOT TARGET ox_standard_headers)
    file(WRITE ${PROJECT_BINARY_DIR}/standard_headers.cpp "")
    add_library(ox_standard_headers OBJECT ${PROJECT_BINARY_DIR}/standard_headers.cpp)
    target_link_libraries(ox_standard_headers PRIVATE ox_flags)
    target_precompile_headers(ox_standard_headers PRIVATE <algorithm> <array> <chrono> <filesystem> <functional> <map>
                              <memory> <optional> <ostream> <sstream> <string> <string_view> <utility> <vector>)
  endif()
  target_precompile_headers(${name} REUSE_FROM ox_standard_headers)
endfunction()

# ox_compile_plainly(SOURCE...): to optimise what these sources take from libraries that are headers alone lasts longer than
# all tests of it.
function(ox_compile_plainly)
  if(OX_QUICK)
    set_source_files_properties(${ARGN} PROPERTIES COMPILE_OPTIONS -O0 SKIP_PRECOMPILE_HEADERS ON)
  endif()
endfunction()

# The bodies of tests cost most of a build. They are compiled plainly, with the test framework precompiled; what they
# test, and the virtual host in tests/support, keep optimisation and both sanitizers.
function(ox_compile_quickly name)
  target_compile_options(${name} PRIVATE $<$<CONFIG:Debug>:-O0>)
  if(OX_SANITIZE)
    target_compile_options(${name} PRIVATE -fno-sanitize=undefined)
  endif()
  if("${ARGN}" MATCHES "Qt6")  # Qt's own compile options do not fit the shared one
    target_precompile_headers(${name} PRIVATE <gtest/gtest.h>)
    return()
  endif()
  if(NOT TARGET ox_test_framework)
    file(WRITE ${PROJECT_BINARY_DIR}/test_framework.cpp "")
    add_library(ox_test_framework OBJECT ${PROJECT_BINARY_DIR}/test_framework.cpp)
    target_link_libraries(ox_test_framework PRIVATE ox_flags GTest::gtest)
    target_compile_options(ox_test_framework PRIVATE $<$<CONFIG:Debug>:-O0>)
    if(OX_SANITIZE)
      target_compile_options(ox_test_framework PRIVATE -fno-sanitize=undefined)
    endif()
    target_precompile_headers(ox_test_framework PRIVATE <gtest/gtest.h> <map> <functional> <optional>)
  endif()
  target_precompile_headers(${name} REUSE_FROM ox_test_framework)
endfunction()
