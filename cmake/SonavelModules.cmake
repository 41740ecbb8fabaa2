# One static library per source folder, its dependencies declared, so that an
# include from a higher level does not link (see docs/architecture.md).

add_library(sonavel_flags INTERFACE)
target_compile_features(sonavel_flags INTERFACE cxx_std_20)
target_include_directories(sonavel_flags INTERFACE ${CMAKE_SOURCE_DIR}/src)
# Results must not depend on how a compiler fuses multiplications and additions. GCC 12 takes the
# concatenation of short strings for an overlapping copy when it optimises (its bug 105651), and other
# copies for too long or out of bounds.
target_compile_options(sonavel_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Werror -ffp-contract=off
  "$<$<CXX_COMPILER_ID:GNU>:-Wno-restrict;-Wno-array-bounds;-Wno-stringop-overflow;-Wno-stringop-overread>")

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

# What the widgets are compiled with beside them.
add_library(sonavel_widget_flags INTERFACE)
target_link_libraries(sonavel_widget_flags INTERFACE sonavel_flags)
target_compile_definitions(sonavel_widget_flags INTERFACE QT_NO_KEYWORDS)

# And the tests: they run once after each build, so compiling them fast is worth more than running them
# fast.
add_library(sonavel_test_flags INTERFACE)
target_link_libraries(sonavel_test_flags INTERFACE sonavel_flags)
target_include_directories(sonavel_test_flags INTERFACE ${CMAKE_SOURCE_DIR}/tests)
target_compile_options(sonavel_test_flags INTERFACE $<IF:$<CONFIG:Release>,-O1,-O0>)

# sonavel_module(NAME [FOLDERS folder...] [DEPENDS lib...] [PRIVATE lib...] [HEADERS target] [ALONE
# source...]): the sources of the current folder, and of those subfolders that are named, as a static
# library. Without HEADERS it reads the standard headers that were compiled once; NONE is for one whose
# flags differ from theirs. Where CMAKE_UNITY_BUILD is on they are compiled several at a time, but for
# those ALONE, which share a name with others of the folder.
function(sonavel_module name)
  cmake_parse_arguments(ARG "" "HEADERS" "FOLDERS;DEPENDS;PRIVATE;ALONE" ${ARGN})
  set(patterns ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  foreach(folder IN LISTS ARG_FOLDERS)
    list(APPEND patterns ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
  endforeach()
  file(GLOB sources CONFIGURE_DEPENDS ${patterns})
  if(NOT sources)  # a folder of headers alone
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE sonavel_flags ${ARG_DEPENDS})
    return()
  endif()
  add_library(${name} STATIC ${sources})
  target_link_libraries(${name} PUBLIC sonavel_flags ${ARG_DEPENDS} PRIVATE ${ARG_PRIVATE})
  sonavel_join_sources(${name} ALONE ${ARG_ALONE})
  sonavel_reuse_headers(${name} sonavel_standard_headers ${ARG_HEADERS})
endfunction()

# sonavel_ui_module(...): likewise for a folder of widgets.
function(sonavel_ui_module name)
  sonavel_module(${name} HEADERS sonavel_widget_headers ${ARGN})
  set_target_properties(${name} PROPERTIES AUTOMOC ON AUTORCC ON)
  target_link_libraries(${name} PUBLIC sonavel_widget_flags)
endfunction()

# sonavel_tests(NAME LINK lib... [HEADERS target] [LABELS label...] [ALONE source...]): the tests of the
# current folder as one program, each case known to ctest.
function(sonavel_tests name)
  cmake_parse_arguments(ARG "" "HEADERS" "LINK;LABELS;ALONE" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  if(NOT sources)
    return()
  endif()
  add_executable(${name} ${sources})
  target_link_libraries(${name} PRIVATE ${ARG_LINK} sonavel_test_flags GTest::gtest_main)
  sonavel_reuse_headers(${name} sonavel_test_headers ${ARG_HEADERS})
  sonavel_join_sources(${name} ALONE ${ARG_ALONE})
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES LABELS "${ARG_LABELS}")
endfunction()

# sonavel_reuse_headers(TARGET default [target|NONE])
function(sonavel_reuse_headers name default)
  set(headers ${default} ${ARGN})
  list(GET headers -1 chosen)
  if(NOT chosen STREQUAL NONE)
    target_precompile_headers(${name} REUSE_FROM ${chosen})
  endif()
endfunction()

# sonavel_join_sources(TARGET [ALONE source...]): compiles them several at a time where CMAKE_UNITY_BUILD
# is on.
function(sonavel_join_sources name)
  cmake_parse_arguments(ARG "" "" "ALONE" ${ARGN})
  set_target_properties(${name} PROPERTIES UNITY_BUILD "${CMAKE_UNITY_BUILD}" UNITY_BUILD_BATCH_SIZE 10)
  set_source_files_properties(${ARG_ALONE} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()
