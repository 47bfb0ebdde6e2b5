# Cross compiles for 64-bit Windows with Debian's MinGW-w64; the programs run under Wine (scripts/wine).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(TOLVEX_TRIPLE x86_64-w64-mingw32)
# The -posix form has std::thread and std::mutex.
set(CMAKE_C_COMPILER ${TOLVEX_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${TOLVEX_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${TOLVEX_TRIPLE}-windres)
set(CMAKE_RC_FLAGS_INIT "--codepage=65001")
set(CMAKE_FIND_ROOT_PATH /usr/${TOLVEX_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# The compiler's own libraries go into each file, so that nothing of MinGW has to be installed beside it.
foreach(kind EXE SHARED MODULE)
    set(CMAKE_${kind}_LINKER_FLAGS_INIT "-static")
endforeach()
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/wine/wine-run)
