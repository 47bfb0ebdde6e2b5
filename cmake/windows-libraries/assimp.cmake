# Assimp with the importers that Debian's library has, and without exporters.
set(assimp ${TOLVEX_SOURCES}/assimp)

# Compressed meshes of glTF; only the decoders of the copy that comes with Assimp.
find_sources(draco_files assimp "(_test|encoder[a-z_]*|expert_encode|encode|draco_test[a-z_]*)\\.cc$"
    "contrib/draco/src/draco/attributes/*.cc" "contrib/draco/src/draco/compression/*.cc"
    "contrib/draco/src/draco/core/*.cc" "contrib/draco/src/draco/mesh/*.cc"
    "contrib/draco/src/draco/metadata/*.cc" "contrib/draco/src/draco/point_cloud/*.cc")
add_library_of(draco assimp ${draco_files})
set(draco_features "")
foreach(feature IN ITEMS MESH_COMPRESSION NORMAL_ENCODING STANDARD_EDGEBREAKER PREDICTIVE_EDGEBREAKER
        POINT_CLOUD_COMPRESSION BACKWARDS_COMPATIBILITY)
    string(APPEND draco_features "#define DRACO_${feature}_SUPPORTED\n")
endforeach()
file(WRITE ${PROJECT_BINARY_DIR}/draco/draco/draco_features.h "${draco_features}")
target_include_directories(draco PUBLIC ${assimp}/contrib/draco/src ${PROJECT_BINARY_DIR}/draco)

# Zipped formats.
set(minizip ${TOLVEX_SOURCES}/minizip)
add_library_of(minizip assimp ${minizip}/unzip.c ${minizip}/ioapi.c)
target_compile_definitions(minizip PRIVATE _FILE_OFFSET_BITS=64)
target_include_directories(minizip PUBLIC ${minizip})
target_link_libraries(minizip PUBLIC z)

find_sources(assimp_files assimp "/assimp/code/.*(/Exporter|Export[A-Za-z]*|Ass(xml|bin)FileWriter|C4DImporter|IFCReaderGen_4)\\.cpp$"
    "code/*.cpp" "contrib/openddlparser/code/*.cpp" "contrib/clipper/*.cpp" "contrib/Open3DGC/*.cpp"
    "contrib/poly2tri/poly2tri/*.cc")
set(ifc_files ${assimp_files})
list(FILTER ifc_files INCLUDE REGEX "/AssetLib/IFC/")
list(FILTER assimp_files EXCLUDE REGEX "/AssetLib/IFC/")
add_library(assimp_ifc OBJECT ${ifc_files})
add_library_of(assimp assimp ${assimp_files} $<TARGET_OBJECTS:assimp_ifc>)
set(GIT_COMMIT_HASH 0)
set(ASSIMP_VERSION_MAJOR 5)
set(ASSIMP_VERSION_MINOR 2)
set(ASSIMP_VERSION_PATCH 5)
set(ASSIMP_PACKAGE_VERSION 0)
configure_file(${assimp}/revision.h.in ${PROJECT_BINARY_DIR}/assimp/revision.h)
configure_file(${assimp}/include/assimp/config.h.in ${PROJECT_BINARY_DIR}/assimp/assimp/config.h)
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/utf8)
file(CREATE_LINK /usr/include/utf8cpp/utf8.h ${PROJECT_BINARY_DIR}/utf8/utf8.h SYMBOLIC)
file(CREATE_LINK /usr/include/utf8cpp/utf8 ${PROJECT_BINARY_DIR}/utf8/utf8 SYMBOLIC)
foreach(target IN ITEMS assimp assimp_ifc)
    target_include_directories(${target} PRIVATE
        ${PROJECT_BINARY_DIR}/assimp ${PROJECT_BINARY_DIR}/utf8 ${assimp} ${assimp}/code ${assimp}/include
        ${assimp}/contrib ${assimp}/contrib/openddlparser/include ${assimp}/contrib/rapidjson/include)
    target_compile_definitions(${target} PRIVATE
        WIN32_LEAN_AND_MEAN _FILE_OFFSET_BITS=64 OPENDDLPARSER_BUILD OPENDDL_STATIC_LIBARY
        ASSIMP_BUILD_NO_EXPORT ASSIMP_BUILD_NO_M3D_IMPORTER ASSIMP_BUILD_NO_M3D_EXPORTER ASSIMP_BUILD_NO_C4D_IMPORTER
        ASSIMP_BUILD_NO_OWN_ZLIB ASSIMP_ENABLE_DRACO ASSIMP_IMPORTER_GLTF_USE_OPEN3DGC=1
        RAPIDJSON_HAS_STDSTRING=1 RAPIDJSON_NOMEMBERITERATORCLASS)
    target_compile_options(${target} PRIVATE -Wa,-mbig-obj)
    # The pugixml of the exporter: two versions cannot stand in one program.
    target_link_libraries(${target} PRIVATE pugixml draco minizip)
endforeach()
# The tables of IFC are generated and huge. Each of their 20,000 inline functions would be a section of its own, and the linker
# needs time by the square of those: with -fno-weak there is none, and a program links in a second instead of 40. The
# type information is then the file's own, so the importer, which asks for types, has to be one file. Full optimisation would
# take minutes.
target_compile_options(assimp_ifc PRIVATE -O1 -fno-weak)
set_target_properties(assimp_ifc PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 0)
# The files of a folder, a format mostly, are compiled together: most of the time goes into headers. In the folders excepted the
# files get in each other's way.
set_target_properties(assimp PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
set(grouped_files ${assimp_files})
list(FILTER grouped_files EXCLUDE REGEX "/(Common|Irr|Blender|FBX)/[^/]*$")
foreach(file IN LISTS grouped_files)
    get_filename_component(group ${file} DIRECTORY)
    file(RELATIVE_PATH group ${assimp} ${group})
    string(MAKE_C_IDENTIFIER ${group} group)
    set_source_files_properties(${file} PROPERTIES UNITY_GROUP ${group})
endforeach()
install(DIRECTORY ${assimp}/include/assimp ${PROJECT_BINARY_DIR}/assimp/assimp DESTINATION assimp/include
    FILES_MATCHING PATTERN "*.h" PATTERN "*.hpp" PATTERN "*.inl")
