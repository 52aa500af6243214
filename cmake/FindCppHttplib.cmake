# Finds cpp-httplib as Debian packages it, a header and a shared library without a CMake package of
# its own, or for Windows as vcpkg does, a header alone. Defines the target CppHttplib::CppHttplib.
#
# The library was compiled with these three features on, and they change the layout of its classes,
# so its users have to see the same header.
find_path(CppHttplib_INCLUDE_DIR httplib.h)
set(required CppHttplib_INCLUDE_DIR)
if(NOT WIN32)
    find_library(CppHttplib_LIBRARY cpp-httplib)
    list(PREPEND required CppHttplib_LIBRARY)
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(CppHttplib
    REQUIRED_VARS ${required})

if(CppHttplib_FOUND AND WIN32 AND NOT TARGET CppHttplib::CppHttplib)
    add_library(CppHttplib::CppHttplib INTERFACE IMPORTED)
    target_include_directories(CppHttplib::CppHttplib INTERFACE "${CppHttplib_INCLUDE_DIR}")
    target_link_libraries(CppHttplib::CppHttplib INTERFACE ws2_32)
elseif(CppHttplib_FOUND AND NOT TARGET CppHttplib::CppHttplib)
    find_package(Threads REQUIRED)
    find_package(OpenSSL REQUIRED)
    add_library(CppHttplib::CppHttplib UNKNOWN IMPORTED)
    set_target_properties(CppHttplib::CppHttplib PROPERTIES
        IMPORTED_LOCATION "${CppHttplib_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${CppHttplib_INCLUDE_DIR}"
        INTERFACE_COMPILE_DEFINITIONS
            "CPPHTTPLIB_OPENSSL_SUPPORT;CPPHTTPLIB_ZLIB_SUPPORT;CPPHTTPLIB_BROTLI_SUPPORT"
        INTERFACE_LINK_LIBRARIES "OpenSSL::SSL;OpenSSL::Crypto;Threads::Threads")
endif()
mark_as_advanced(CppHttplib_INCLUDE_DIR CppHttplib_LIBRARY)
