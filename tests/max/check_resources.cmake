# cmake -DLIBRARY=... -DWINDRES=... -P check_resources.cmake
# The plug-in must hold its texts, its version, the manifest for the look of its windows, and its dialog.
execute_process(COMMAND ${WINDRES} -J coff -O rc ${LIBRARY} OUTPUT_VARIABLE text RESULT_VARIABLE status)
if(NOT status EQUAL 0)
    message(FATAL_ERROR "the resources of ${LIBRARY} cannot be read")
endif()
foreach(part
    "101 DIALOG"
    "CAPTION L?\"Velinor Exporter\""
    "\n2 24 /\\* RT_MANIFEST"
    "Microsoft\\.Windows\\.Common-Controls\"\" version=\"\"6\\.0\\.0\\.0\""
    "FILEVERSION 1, 63, 0, 0[^0-9]"
    "PRODUCTVERSION 1, 63, 0, 0[^0-9]"
    "\"FileVersion\", \"1\\.63\""
    "\"ProductVersion\", \"1\\.63\""
    "1[ ,\t]+L?\"Velinor scene exporter\""
    "2[ ,\t]+L?\"Velinor\""
    "3[ ,\t]+L?\"Velinor scene exporter\"")
    if(NOT text MATCHES "${part}")
        message(FATAL_ERROR "the resources do not hold ${part}:\n${text}")
    endif()
endforeach()
