# What every target of the project has in common: language, warnings, sanitizers, and the one way a folder
# becomes a library that may include only what it links.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()

find_program(OX_CCACHE ccache)
if(OX_CCACHE)
  # Also with a precompiled header, which names the folder of the build: in another folder what reads it is compiled anew.
  # The compiler tells what a source includes, so ccache need not read it first.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1 CCACHE_DEPEND=1
      CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${OX_CCACHE})
endif()
find_program(OX_LLD ld.lld)
if(OX_LLD AND NOT WIN32)
  add_link_options(-fuse-ld=lld)
endif()

include(${CMAKE_CURRENT_LIST_DIR}/quick_build.cmake)

add_library(ox_flags INTERFACE)
target_compile_options(ox_flags INTERFACE -Wall -Wextra -Wconversion -Wshadow)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 takes "literal" + text for overlapping memory when it optimises (its bug 105651).
  # Only there, since Clang's tools read the same command lines and do not know the option.
  target_compile_options(ox_flags INTERFACE $<$<CONFIG:Release>:-Wno-restrict>)
endif()
if(OX_WERROR)
  target_compile_options(ox_flags INTERFACE -Werror)
endif()
if(OX_SANITIZE)
  # With them the standard library checks indices and the like, where a sanitizer sees memory that is sound.
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(OX_FUZZ)
  # What a harness learns from: which code ran. Following every comparison as well would double the tests' time.
  add_compile_options(-fsanitize-coverage=inline-8bit-counters,pc-table)
endif()

# A library's headers are reached through an include root of its own, in the build tree: a source that does not link the
# library cannot include them. Only the headers of the folder itself are offered there, not those of folders below it.
function(ox_offer_headers name)
  set(root ${PROJECT_BINARY_DIR}/floors/${name})
  file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
  string(REGEX REPLACE "^src/" "" folder ${folder})
  file(GLOB headers CONFIGURE_DEPENDS *.h)
  file(REMOVE_RECURSE ${root})
  file(MAKE_DIRECTORY ${root}/${folder})
  foreach(header ${headers})
    get_filename_component(file ${header} NAME)
    file(CREATE_LINK ${header} ${root}/${folder}/${file} SYMBOLIC)
  endforeach()
  target_include_directories(${name} PUBLIC ${root})
endfunction()

# ox_tell_version(TARGET, TEMPLATE, FILE): FILE, made anew with every build of TARGET so that it tells the commit.
function(ox_tell_version target template file)
  add_custom_target(${target}
    COMMAND ${CMAKE_COMMAND} -DVERSION=${PROJECT_VERSION} -DSOURCE=${PROJECT_SOURCE_DIR}
            -DTEMPLATE=${template} -DFILE=${file} -P ${PROJECT_SOURCE_DIR}/cmake/version.cmake
    BYPRODUCTS ${file} VERBATIM)
endfunction()

# ox_version: the header version/version.h.
function(ox_add_version)
  set(root ${PROJECT_BINARY_DIR}/floors/ox_version)
  ox_tell_version(ox_version_header ${PROJECT_SOURCE_DIR}/cmake/version.h.in ${root}/version/version.h)
  add_library(ox_version INTERFACE)
  add_dependencies(ox_version ox_version_header)
  target_include_directories(ox_version INTERFACE ${root})
endfunction()

# ox_library(NAME SOURCES file... LINKS library...): one folder, one library. It may include the headers of its
# own folder and of what it links.
function(ox_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  ox_offer_headers(${name})
  target_link_libraries(${name} PUBLIC ox_flags ${ARG_LINKS})
  ox_precompile_headers(${name} ${ARG_LINKS})
endfunction()

# ox_find_headers(PACKAGE TARGET FOLDER): a package that has headers alone, all in FOLDER of /usr/include, as TARGET. A build
# for another system gets a link to that folder, since the rest of /usr/include belongs to this machine.
function(ox_find_headers package target folder)
  if(NOT CMAKE_CROSSCOMPILING)
    find_package(${package} REQUIRED)
    return()
  endif()
  set(headers /usr/include/${folder})
  if(NOT EXISTS ${headers})
    message(FATAL_ERROR "${headers} is missing")
  endif()
  set(root ${PROJECT_BINARY_DIR}/third_party/${package})
  file(MAKE_DIRECTORY ${root})
  file(CREATE_LINK ${headers} ${root}/${folder} SYMBOLIC)
  add_library(${target} INTERFACE IMPORTED)
  target_include_directories(${target} SYSTEM INTERFACE ${root})
endfunction()

# ox_stand_alone(NAME): a program for Windows needs no library but the system's own. One with the toolkit, which comes as
# libraries, shares the compiler's with it instead.
function(ox_stand_alone name)
  if(WIN32)
    target_link_options(${name} PRIVATE -static)
  endif()
endfunction()

# ox_test(NAME SOURCES file... LINKS library... [PROPERTIES name value...]): one GoogleTest program; every test
# in it is known to ctest, with these properties. A loop that never ends in virtual time is ended by ctest.
function(ox_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;PROPERTIES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ox_flags ${ARG_LINKS} GTest::gtest GTest::gtest_main)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_compile_definitions(${name} PRIVATE OX_DEMO_FOLDER="${OX_TEST_ROOT}${PROJECT_SOURCE_DIR}/demo")
  ox_stand_alone(${name})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # GCC takes {.name = value} for a mistake where other members are left to their defaults.
    target_compile_options(${name} PRIVATE -Wno-missing-field-initializers)
  endif()
  ox_compile_quickly(${name} ${ARG_LINKS})
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 180 ${ARG_PROPERTIES})
endfunction()

# ox_fuzzer(NAME LINKS library...): one libFuzzer harness, fuzz/NAME.cpp.
function(ox_fuzzer name)
  cmake_parse_arguments(ARG "" "" "LINKS" ${ARGN})
  add_executable(${name} ${name}.cpp)
  target_link_libraries(${name} PRIVATE ox_flags ${ARG_LINKS})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
endfunction()
