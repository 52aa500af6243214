# The type library and the declaration by the compiler for interfaces of mingw-w64 or Wine.
find_program(TANDRIL_WIDL NAMES ${TANDRIL_WIDL} REQUIRED)
# The base interfaces and types that the description builds on.
find_path(TANDRIL_IDL_INCLUDE oaidl.idl PATHS /usr/include/wine/wine/windows
          NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
find_path(TANDRIL_STDOLE2 stdole2.tlb
          PATHS /usr/lib/x86_64-linux-gnu/wine/x86_64-windows
          NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    set(architecture --win64)
else()
    set(architecture --win32)
endif()
set(widl ${TANDRIL_WIDL} ${architecture} -I "${TANDRIL_IDL_INCLUDE}" -L "${TANDRIL_STDOLE2}")
add_custom_command(
    OUTPUT "${generated}/tandril.tlb" "${generated}/client20_interface.h"
    COMMAND ${widl} -t -o "${generated}/tandril.tlb" "${description}"
    COMMAND ${widl} -h -H "${generated}/client20_interface.h" "${description}"
    DEPENDS tandril.idl)
