# The same by the compiler of Microsoft, which finds the base interfaces in the Windows SDK.
find_program(TANDRIL_MIDL midl REQUIRED)
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    set(architecture x64)
else()
    set(architecture win32)
endif()
add_custom_command(
    OUTPUT "${generated}/tandril.tlb" "${generated}/client20_interface.h"
    COMMAND ${TANDRIL_MIDL} /nologo /env ${architecture} /tlb tandril.tlb /h client20_interface.h
            /iid identifiers.c /proxy proxy.c /dlldata dlldata.c /out "${generated}"
            "${description}"
    DEPENDS tandril.idl)
