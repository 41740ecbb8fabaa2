# One static library per source folder, its dependencies declared, so that an
# include from a higher level does not link (see docs/architecture.md).

add_library(sonavel_flags INTERFACE)
target_compile_features(sonavel_flags INTERFACE cxx_std_20)
target_include_directories(sonavel_flags INTERFACE ${CMAKE_SOURCE_DIR}/src)
# Results must not depend on how a compiler fuses multiplications and additions. GCC 12 takes the
# concatenation of short strings for an overlapping copy when it optimises (its bug 105651).
target_compile_options(sonavel_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Werror -ffp-contract=off
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-restrict>)

# Release builds check at run time what can be checked cheaply: copies against the size of their
# target (to the third level where compiler and C library know it), the stack's return addresses, and
# tables of functions that nobody can overwrite once the program has started.
include(CheckCXXSourceCompiles)
set(CMAKE_REQUIRED_FLAGS "-O2 -Werror -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3")
check_cxx_source_compiles("#include <cstdio>\nint main() {}" SONAVEL_HAS_FORTIFY_3)
unset(CMAKE_REQUIRED_FLAGS)
set(SONAVEL_FORTIFY_LEVEL 2)
if(SONAVEL_HAS_FORTIFY_3)
  set(SONAVEL_FORTIFY_LEVEL 3)
endif()
set(hardening -fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=${SONAVEL_FORTIFY_LEVEL})
target_compile_options(sonavel_flags INTERFACE "$<$<CONFIG:Release>:${hardening}>")
target_link_options(sonavel_flags INTERFACE $<$<CONFIG:Release>:LINKER:-z,relro,-z,now>)

# sonavel_module(NAME [DEPENDS lib...] [PRIVATE lib...]): the sources of the
# current folder, without its subfolders, as a static library.
function(sonavel_module name)
  cmake_parse_arguments(ARG "" "" "DEPENDS;PRIVATE" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  if(NOT sources)  # a folder of headers alone
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE sonavel_flags ${ARG_DEPENDS})
    return()
  endif()
  add_library(${name} STATIC ${sources})
  target_link_libraries(${name} PUBLIC sonavel_flags ${ARG_DEPENDS} PRIVATE ${ARG_PRIVATE})
endfunction()

# sonavel_ui_module(...): likewise for a folder of widgets.
function(sonavel_ui_module name)
  sonavel_module(${name} ${ARGN})
  set_target_properties(${name} PROPERTIES AUTOMOC ON AUTORCC ON)
  target_link_libraries(${name} PUBLIC Qt6::Widgets)
  target_compile_definitions(${name} PUBLIC QT_NO_KEYWORDS)
  target_precompile_headers(${name} PRIVATE <QtWidgets>)
endfunction()

# sonavel_tests(NAME LINK lib...): the tests of the current folder as one
# program, each case known to ctest.
function(sonavel_tests name)
  cmake_parse_arguments(ARG "" "" "LINK;LABELS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  if(NOT sources)
    return()
  endif()
  add_executable(${name} ${sources})
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${ARG_LINK} GTest::gtest_main GTest::gmock)
  target_precompile_headers(${name} PRIVATE <gtest/gtest.h>)
  # Tests run once after each build: compiling them fast is worth more than running them fast. GCC 12
  # also takes long strings that tests make for out of bounds.
  target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-O1 -Wno-array-bounds>)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES LABELS "${ARG_LABELS}")
endfunction()
