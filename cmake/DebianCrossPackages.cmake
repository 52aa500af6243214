# The libraries of a cross build on Debian, under the names that find_package() gives them elsewhere.
# Libraries of headers alone are taken from the machine's own packages, the others are compiled from
# the source packages.

# debian_headers(TARGET FOLDER): the headers of /usr/include/FOLDER, and no others: the folder above
# holds those of the machine's C library.
function(debian_headers target folder)
    find_path(TANDRIL_HOST_${folder} ${folder} PATHS /usr/include
              NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
    set(alone "${CMAKE_BINARY_DIR}/headers/${folder}")
    file(MAKE_DIRECTORY "${alone}")
    file(CREATE_LINK "${TANDRIL_HOST_${folder}}/${folder}" "${alone}/${folder}" SYMBOLIC)
    add_library(${target} INTERFACE IMPORTED GLOBAL)
    target_include_directories(${target} INTERFACE "${alone}")
endfunction()

# debian_source(PACKAGE RESULT): sets RESULT to the folder with the unpacked source package.
function(debian_source package result)
    set(folder "${CMAKE_BINARY_DIR}/debian-source/${package}")
    if(NOT EXISTS "${folder}")
        message(STATUS "Fetching the source package ${package}")
        execute_process(
            COMMAND "${PROJECT_SOURCE_DIR}/tools/fetch-debian-source" ${package} "${folder}"
            COMMAND_ERROR_IS_FATAL ANY)
    endif()
    set(${result} "${folder}" PARENT_SCOPE)
endfunction()

debian_headers(nlohmann_json::nlohmann_json nlohmann)
debian_headers(CLI11::CLI11 CLI)

# find_package(ODBC) would find this as well, and end the static linking of all that follows it.
add_library(ODBC::ODBC INTERFACE IMPORTED GLOBAL)
target_link_libraries(ODBC::ODBC INTERFACE odbc32)

debian_source(pugixml pugixml)
add_library(debian_pugixml STATIC "${pugixml}/src/pugixml.cpp")
target_include_directories(debian_pugixml SYSTEM PUBLIC "${pugixml}/src")
add_library(pugixml::pugixml ALIAS debian_pugixml)

# The server of its package is a library for this machine, but the source is one header. It looks 100
# times a second whether it is to stop, unless it is told to take more time.
debian_source(cpp-httplib httplib)
add_library(CppHttplib::CppHttplib INTERFACE IMPORTED GLOBAL)
target_include_directories(CppHttplib::CppHttplib INTERFACE "${httplib}")
target_compile_definitions(CppHttplib::CppHttplib INTERFACE CPPHTTPLIB_IDLE_INTERVAL_USECOND=100000)
target_link_libraries(CppHttplib::CppHttplib INTERFACE ws2_32)

# The package googletest has its sources in place.
if(TANDRIL_TESTS)
    set(googletest /usr/src/googletest)
    add_library(debian_gtest STATIC
        ${googletest}/googletest/src/gtest-all.cc
        ${googletest}/googlemock/src/gmock-all.cc)
    target_include_directories(debian_gtest SYSTEM
        PUBLIC ${googletest}/googletest/include ${googletest}/googlemock/include
        PRIVATE ${googletest}/googletest ${googletest}/googlemock)
    add_library(debian_gtest_main STATIC ${googletest}/googlemock/src/gmock_main.cc)
    target_link_libraries(debian_gtest_main PUBLIC debian_gtest)
    add_library(GTest::gmock ALIAS debian_gtest)
    add_library(GTest::gtest ALIAS debian_gtest)
    add_library(GTest::gtest_main ALIAS debian_gtest_main)
endif()
