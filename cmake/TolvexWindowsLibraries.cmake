# The libraries of the cross build for Windows, under the target names that they have on Linux. Headers without a library come
# from Debian's packages, everything else from the folder that scripts/windows-dependencies fills.

# tolvex_headers(TARGET NAME...)
# Declares the header-only library TARGET of the files or folders NAME below /usr/include. They are linked into the build
# tree: with /usr/include itself on the search path, the cross compiler would read the headers of this system's C library.
function(tolvex_headers target)
    string(MAKE_C_IDENTIFIER ${target} folder)
    set(folder ${PROJECT_BINARY_DIR}/headers/${folder})
    file(MAKE_DIRECTORY ${folder})
    foreach(header IN LISTS ARGN)
        if(NOT EXISTS /usr/include/${header})
            message(FATAL_ERROR "/usr/include/${header} is missing; scripts/install-dependencies build installs it")
        endif()
        get_filename_component(name ${header} NAME)
        file(CREATE_LINK /usr/include/${header} ${folder}/${name} SYMBOLIC)
    endforeach()
    add_library(${target} INTERFACE IMPORTED GLOBAL)
    target_include_directories(${target} SYSTEM INTERFACE ${folder})
endfunction()

tolvex_headers(Eigen3::Eigen eigen3/Eigen eigen3/unsupported)
tolvex_headers(nlohmann_json::nlohmann_json nlohmann)
tolvex_headers(CLI11::CLI11 CLI)
tolvex_headers(utf8cpp utf8cpp/utf8 utf8cpp/utf8.h)

set(TOLVEX_WINDOWS_LIBRARIES "" CACHE PATH "The folder that scripts/windows-dependencies has filled; empty: finds it")
set(TOLVEX_WINDOWS_FOLDER ${TOLVEX_WINDOWS_LIBRARIES})
if(NOT TOLVEX_WINDOWS_FOLDER)
    execute_process(
        COMMAND ${PROJECT_SOURCE_DIR}/scripts/windows-dependencies --folder
        OUTPUT_VARIABLE TOLVEX_WINDOWS_FOLDER OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
endif()
if(NOT EXISTS ${TOLVEX_WINDOWS_FOLDER}/complete)
    message(FATAL_ERROR
        "The libraries for Windows are not in ${TOLVEX_WINDOWS_FOLDER}; scripts/windows-dependencies builds them.")
endif()

# tolvex_windows_library(TARGET FOLDER FILE...)
# Declares the static library TARGET, whose FILEs lie in FOLDER/lib below the libraries' folder and its headers in
# FOLDER/include. The first FILE uses those after it.
function(tolvex_windows_library target folder)
    set(folder ${TOLVEX_WINDOWS_FOLDER}/${folder})
    list(TRANSFORM ARGN PREPEND ${folder}/lib/ OUTPUT_VARIABLE files)
    list(POP_FRONT files first)
    add_library(${target} STATIC IMPORTED GLOBAL)
    set_target_properties(${target} PROPERTIES IMPORTED_LOCATION ${first})
    target_link_libraries(${target} INTERFACE ${files})
    if(EXISTS ${folder}/include)
        target_include_directories(${target} SYSTEM INTERFACE ${folder}/include)
    endif()
endfunction()

tolvex_windows_library(pugixml::pugixml pugixml libpugixml.a)
tolvex_windows_library(EXPAT::EXPAT expat libexpat.a)
target_compile_definitions(EXPAT::EXPAT INTERFACE XML_STATIC)
tolvex_windows_library(PkgConfig::re2 re2 libre2.a)
tolvex_windows_library(PkgConfig::libcbor libcbor libcbor.a)
tolvex_windows_library(meshoptimizer::meshoptimizer meshoptimizer libmeshoptimizer.a)
tolvex_windows_library(PkgConfig::bullet bullet libLinearMath.a)
tolvex_windows_library(assimp::assimp assimp libassimp.a libdraco.a libminizip.a)
target_link_libraries(assimp::assimp INTERFACE pugixml::pugixml z)
# libvips is loaded when it is first used, so that the plug-in can load it from its own folder before. Programs find it beside
# themselves.
tolvex_windows_library(PkgConfig::vips vips libvips-delay.a)
target_link_libraries(PkgConfig::vips INTERFACE delayimp)
set(TOLVEX_VIPS_LIBRARY ${TOLVEX_WINDOWS_FOLDER}/vips/bin/libvips-42.dll)
set(TOLVEX_HACD ${TOLVEX_WINDOWS_FOLDER}/hacd/lib/libHACD.a)
set(TOLVEX_HACD_HEADERS ${TOLVEX_WINDOWS_FOLDER}/hacd/include)
set(TOLVEX_OGRE_XML_CONVERTER ${TOLVEX_WINDOWS_FOLDER}/ogre/bin/OgreXMLConverter.exe)

if(TOLVEX_TESTS)
    # The package of GoogleTest's sources has no version file; its series is that of the Linux build.
    set(BUILD_GMOCK ON CACHE INTERNAL "")
    set(INSTALL_GTEST OFF CACHE INTERNAL "")
    add_subdirectory(/usr/src/googletest ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
endif()
