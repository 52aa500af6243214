# Compiler settings that every target of the project shares, and the two functions that make
# libraries and test programs from explicit source lists.

add_library(tandril_options INTERFACE)
target_include_directories(tandril_options INTERFACE "${PROJECT_SOURCE_DIR}/src")
if(MSVC)
    # Sources are UTF-8, as they are to the other compilers.
    target_compile_options(tandril_options INTERFACE /W4 /utf-8 /permissive- /Zc:__cplusplus)
else()
    target_compile_options(tandril_options INTERFACE
        -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # This GCC sees overlapping copies in the inlined operator+ of std::string (GCC bug 105651).
    target_compile_options(tandril_options INTERFACE -Wno-restrict)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    # Its -Wconversion asks more than that of GCC does.
    target_compile_options(tandril_options INTERFACE -Wno-sign-conversion)
endif()
if(WIN32)
    target_compile_definitions(tandril_options INTERFACE
        UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN WINVER=0x0601 _WIN32_WINNT=0x0601)
endif()
if(TANDRIL_SANITIZE)
    # -g1: line numbers for the reports; more only makes the build longer, as optimising does: the
    # tests wait more than they compute.
    target_compile_options(tandril_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -O0 -g1)
    target_link_options(tandril_options INTERFACE -fsanitize=address,undefined)
endif()
if(TANDRIL_FUZZ)
    target_compile_options(tandril_options INTERFACE -fsanitize=fuzzer-no-link,address,undefined
        -fno-sanitize-recover=all -fno-omit-frame-pointer -O1 -g1)
    target_link_options(tandril_options INTERFACE -fsanitize=address,undefined)
endif()

# For the code of the tests, which runs once: it compiles faster than it would pay to optimise it. Of
# undefined behaviour only what is tested is watched. Linked behind tandril_options, so that the last
# word is its own.
add_library(tandril_test_code INTERFACE)
target_compile_options(tandril_test_code INTERFACE -O0)
if(TANDRIL_SANITIZE)
    target_compile_options(tandril_test_code INTERFACE -fno-sanitize=undefined)
endif()

# tandril_library(NAME SOURCES... LINK targets...): a static library tandril_NAME.
function(tandril_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
    add_library(tandril_${name} STATIC ${ARG_SOURCES})
    target_link_libraries(tandril_${name} PUBLIC tandril_options ${ARG_LINK})
endfunction()

# The headers of GoogleTest, which cost more to read than most tests, are read once for all test
# programs; but a compiler cache does better without.
function(tandril_read_test_headers_once target)
    if(CMAKE_CXX_COMPILER_LAUNCHER OR NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        return()
    endif()
    if(NOT TARGET tandril_test_headers)
        set(source "${PROJECT_BINARY_DIR}/test_headers.cpp")
        file(CONFIGURE OUTPUT "${source}" CONTENT "")
        add_library(tandril_test_headers OBJECT "${source}")
        target_link_libraries(tandril_test_headers
            PRIVATE tandril_options tandril_test_code GTest::gmock)
        target_precompile_headers(tandril_test_headers
            PRIVATE <gmock/gmock.h> <gtest/gtest.h> <functional> <map> <string> <vector>)
    endif()
    target_precompile_headers(${target} REUSE_FROM tandril_test_headers)
endfunction()

# tandril_test(NAME SOURCES... LINK targets...): a GoogleTest program that CTest runs as NAME.
function(tandril_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
    add_executable(${name}_test ${ARG_SOURCES})
    target_include_directories(${name}_test PRIVATE "${PROJECT_SOURCE_DIR}/tests")
    target_link_libraries(${name}_test PRIVATE tandril_options tandril_test_code ${ARG_LINK} GTest::gmock GTest::gtest_main)
    # Each source of a test may name its helpers as it likes.
    set_target_properties(${name}_test PROPERTIES UNITY_BUILD OFF)
    tandril_read_test_headers_once(${name}_test)
    add_test(NAME ${name} COMMAND ${name}_test)
    if(WIN32)
        set_tests_properties(${name} PROPERTIES FIXTURES_REQUIRED windows_machine)
    endif()
endfunction()
