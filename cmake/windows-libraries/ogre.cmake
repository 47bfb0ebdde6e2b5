# OGRE's converter of mesh files, with the part of OGRE's core that it uses.
set(ogre ${TOLVEX_SOURCES}/ogre-1.12)
set(ogre_main ${ogre}/OgreMain)

# The codecs, archives and threads of the core are left out; the settings that change what is written are those of Debian's
# library.
set(OGRE_VERSION_MAJOR 1)
set(OGRE_VERSION_MINOR 12)
set(OGRE_VERSION_PATCH 10)
set(OGRE_VERSION_NAME "Rhagorthua")
set(OGRE_STATIC_LIB 1)
set(OGRE_RESOURCEMANAGER_STRICT 2)
set(OGRE_NODELESS_POSITIONING 1)
set(OGRE_CONFIG_LITTLE_ENDIAN 1)
set(OGRE_SET_ASSERT_MODE 1)
set(OGRE_SET_THREADS 0)
set(OGRE_SET_THREAD_PROVIDER 0)
foreach(left_out IN ITEMS DDS_CODEC PVRTC_CODEC ETC_CODEC ASTC_CODEC ZIP_ARCHIVE VIEWPORT_ORIENTATIONMODE TBB_SCHEDULER
        QUAD_BUFFER_STEREO LOCALE_STRCONVERT)
    set(OGRE_NO_${left_out} 1)
endforeach()
configure_file(${ogre}/CMake/Templates/OgreBuildSettings.h.in ${PROJECT_BINARY_DIR}/ogre/OgreBuildSettings.h)
file(WRITE ${PROJECT_BINARY_DIR}/ogre/OgreComponents.h "// None.\n")
file(WRITE ${PROJECT_BINARY_DIR}/ogre/OgreExports.h
    "#define _OgreExport\n#define _OgrePrivate\n#define OGRE_DEPRECATED __attribute__((__deprecated__))\n"
    "#define OGRE_DEPRECATED_EXPORT OGRE_DEPRECATED\n")

find_sources(ogre_files ogre-1.12
    "/(OgreFileSystemLayerNoOp|OgreDDSCodec|OgrePVRTCCodec|OgreETCCodec|OgreASTCCodec|OgreZip|OgreSearchOps)\\.cpp$|/src/(Android|GLX|OSX|iOS|Threading)/"
    "OgreMain/src/*.cpp")
add_library(ogre_main STATIC ${ogre_files} ${ogre_main}/src/Threading/OgreDefaultWorkQueueStandard.cpp)
target_include_directories(ogre_main PUBLIC ${ogre_main}/include ${PROJECT_BINARY_DIR}/ogre
    PRIVATE ${ogre_main}/src ${ogre_main}/include/Threading)
target_compile_definitions(ogre_main PUBLIC NDEBUG)
target_compile_features(ogre_main PUBLIC cxx_std_11)
target_precompile_headers(ogre_main PRIVATE ${ogre_main}/src/OgreStableHeaders.h)
set_target_properties(ogre_main PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 12)

find_sources(converter_files ogre-1.12 "" "Tools/XMLConverter/src/*.cpp")
add_executable(OgreXMLConverter ${converter_files})
target_include_directories(OgreXMLConverter PRIVATE ${ogre}/Tools/XMLConverter/include)
target_link_libraries(OgreXMLConverter PRIVATE ogre_main pugixml)
target_link_options(OgreXMLConverter PRIVATE -s -Wl,--no-insert-timestamp)
install(TARGETS OgreXMLConverter RUNTIME DESTINATION ogre/bin)
