# cmake -DLIBRARY=... -DOBJDUMP=... -P check_imports.cmake
# The plug-in must need nothing that is not on every Windows or in its host: the compiler's own libraries are part of it, and
# the image library is only loaded when it is used.
execute_process(COMMAND ${OBJDUMP} -p ${LIBRARY} OUTPUT_VARIABLE text RESULT_VARIABLE status)
string(REGEX MATCHALL "DLL Name: [^\n]*" imports "${text}")
list(TRANSFORM imports REPLACE "DLL Name: " "")
list(TRANSFORM imports STRIP)
list(TRANSFORM imports TOLOWER)
if(NOT status EQUAL 0 OR NOT imports)
    message(FATAL_ERROR "${LIBRARY} cannot be read")
endif()
set(known advapi32.dll comctl32.dll comdlg32.dll kernel32.dll max_sdk_standin.dll msvcrt.dll ole32.dll user32.dll)
set(foreign ${imports})
list(REMOVE_ITEM foreign ${known})
if(foreign)
    message(FATAL_ERROR "the plug-in imports ${foreign}")
endif()
