# What every target shares: the language level, warnings, sanitizers and where built things lie.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

# Programs, KvTM10 and the other tools lie together, the sample suite beside that folder: the console finds both from
# its own place.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees overlaps in std::string's operator+ that are not there, and, when it optimises, texts that move beyond
  # their own end
  add_compile_options(-Wno-restrict $<$<CONFIG:Release>:-Wno-array-bounds> $<$<CONFIG:Release>:-Wno-stringop-overflow>)
endif()
if(KVTM_WARNINGS_AS_ERRORS)
  add_compile_options(-Werror)
endif()
if(KVTM_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

# The allocator of a host that fills lists, menus and toolbars with thousands of small items: it takes two thirds of the
# time that the C library's takes. The sanitizers bring one of their own.
function(kvtm_use_fast_allocator name)
  if(NOT KVTM_SANITIZE)
    find_package(mimalloc REQUIRED)
    # nothing calls it by name
    target_link_libraries(${name} PRIVATE
      "-Wl,--push-state,--no-as-needed,$<TARGET_FILE:mimalloc>,--pop-state")
  endif()
endfunction()

# What the tests are made of themselves goes without the checks of every single pointer: they double the time to compile
# it. A null pointer still ends the program, and what is tested keeps all checks.
function(kvtm_sanitize_tests name)
  if(KVTM_SANITIZE)
    target_compile_options(${name} PRIVATE -fno-sanitize=null,alignment)
  endif()
endfunction()

# Compiles a program's files eight at a time, where it is to be built once: most of the time goes into what they all
# include. Names that files keep to themselves must differ in the whole folder then.
function(kvtm_join_sources name)
  if(KVTM_PRECOMPILE)
    set_target_properties(${name} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 8)
    # a test's class lies outside of the unnamed namespace of its fixture
    target_compile_options(${name} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
  endif()
endfunction()

# A program of tests: kvtm_add_tests(NAME SOURCES ... LIBRARIES ... LABELS ...)
#
# The test library's headers cost more to read than a test: they are read once for all programs.
function(kvtm_add_tests name)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES;LABELS" ${ARGN})
  find_package(GTest REQUIRED)
  include(GoogleTest)
  if(NOT TARGET kvtm_test_headers)
    # a program, not an object library: position independent in the same way as those that use it
    file(CONFIGURE OUTPUT "${PROJECT_BINARY_DIR}/test-headers.cpp" CONTENT "int main() {}\n")
    add_executable(kvtm_test_headers EXCLUDE_FROM_ALL "${PROJECT_BINARY_DIR}/test-headers.cpp")
    target_link_libraries(kvtm_test_headers PRIVATE GTest::gtest GTest::gmock)
    target_precompile_headers(kvtm_test_headers PRIVATE <gmock/gmock.h> <gtest/gtest.h>)
    kvtm_sanitize_tests(kvtm_test_headers)
  endif()
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} GTest::gtest GTest::gmock GTest::gtest_main)
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}")
  target_precompile_headers(${name} REUSE_FROM kvtm_test_headers)
  kvtm_sanitize_tests(${name})
  kvtm_join_sources(${name})
  if(KVTM_SANITIZE)
    # a sanitized program takes a second or more to start: one run for all its tests
    add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
    set_tests_properties(${name} PROPERTIES TIMEOUT 900 LABELS "${arg_LABELS}")
  else()
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120 LABELS "${arg_LABELS}")
  endif()
endfunction()

# Runs a program of tests on a display of its own, all its tests at once: starting it costs more than a test.
# kvtm_run_on_display(NAME TIMEOUT seconds ENVIRONMENT ...)
function(kvtm_run_on_display name)
  cmake_parse_arguments(arg "" "TIMEOUT" "ENVIRONMENT" ${ARGN})
  find_program(KVTM_XVFB_RUN xvfb-run)
  if(KVTM_XVFB_RUN)
    add_test(NAME ${name} COMMAND "${KVTM_XVFB_RUN}" -a -s "-screen 0 1280x900x24" $<TARGET_FILE:${name}>)
    set_tests_properties(${name} PROPERTIES
      LABELS stories TIMEOUT ${arg_TIMEOUT} ENVIRONMENT "${arg_ENVIRONMENT}")
  else()
    message(STATUS "xvfb-run is missing: ${name} is built, but not run")
  endif()
endfunction()
