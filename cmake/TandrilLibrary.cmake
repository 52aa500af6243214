# Compiler settings that every target of the project shares, and the two functions that make
# libraries and test programs from explicit source lists.

add_library(tandril_options INTERFACE)
target_include_directories(tandril_options INTERFACE "${PROJECT_SOURCE_DIR}/src")
target_compile_options(tandril_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
if(TANDRIL_SANITIZE)
    target_compile_options(tandril_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -O1)
    target_link_options(tandril_options INTERFACE -fsanitize=address,undefined)
endif()

# tandril_library(NAME SOURCES... LINK targets...): a static library tandril_NAME.
function(tandril_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
    add_library(tandril_${name} STATIC ${ARG_SOURCES})
    target_link_libraries(tandril_${name} PUBLIC tandril_options ${ARG_LINK})
endfunction()

# tandril_test(NAME SOURCES... LINK targets...): a GoogleTest program that CTest runs as NAME.
function(tandril_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
    add_executable(${name}_test ${ARG_SOURCES})
    target_include_directories(${name}_test PRIVATE "${PROJECT_SOURCE_DIR}/tests")
    target_link_libraries(${name}_test PRIVATE tandril_options ${ARG_LINK} GTest::gmock GTest::gtest_main)
    add_test(NAME ${name} COMMAND ${name}_test)
endfunction()
