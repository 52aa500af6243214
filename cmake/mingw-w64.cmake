# Cross-compiles on Linux with mingw-w64 for the triple in TANDRIL_TRIPLE; one file for each
# architecture sets it. The compiler with POSIX threads is the one that has <thread> and <mutex>.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_CXX_COMPILER ${TANDRIL_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${TANDRIL_TRIPLE}-windres)
set(TANDRIL_WIDL ${TANDRIL_TRIPLE}-widl)

set(CMAKE_FIND_ROOT_PATH /usr/${TANDRIL_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Nothing but the system's own DLLs may be needed where the programs run.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")

# Where its tests run.
set(CMAKE_CROSSCOMPILING_EMULATOR
    "${CMAKE_CURRENT_LIST_DIR}/../tests/windows/wine-run" "${CMAKE_BINARY_DIR}/wine")
