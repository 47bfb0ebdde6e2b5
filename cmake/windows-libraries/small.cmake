# Libraries of a few files each.
set(sources ${TOLVEX_SOURCES})

add_library_of(pugixml pugixml ${sources}/pugixml/src/pugixml.cpp)
target_include_directories(pugixml PUBLIC ${sources}/pugixml/src)
install(FILES ${sources}/pugixml/src/pugixml.hpp ${sources}/pugixml/src/pugiconfig.hpp DESTINATION pugixml/include)

set(expat ${sources}/expat/expat/lib)
add_library_of(expat expat ${expat}/xmlparse.c ${expat}/xmlrole.c ${expat}/xmltok.c)
file(WRITE ${PROJECT_BINARY_DIR}/expat/expat_config.h
    "#define BYTEORDER 1234\n#define HAVE_STDINT_H 1\n#define HAVE_STDLIB_H 1\n#define HAVE_STRING_H 1\n"
    "#define XML_CONTEXT_BYTES 1024\n#define XML_DTD 1\n#define XML_GE 1\n#define XML_NS 1\n")
target_include_directories(expat PRIVATE ${PROJECT_BINARY_DIR}/expat)
target_compile_definitions(expat PUBLIC XML_STATIC)
install(FILES ${expat}/expat.h ${expat}/expat_external.h DESTINATION expat/include)

find_sources(re2_files re2 "/(testing|fuzzing)/" "re2/*.cc")
add_library_of(re2 re2 ${re2_files} ${sources}/re2/util/rune.cc ${sources}/re2/util/strutil.cc)
target_include_directories(re2 PRIVATE ${sources}/re2)
target_compile_definitions(re2 PRIVATE NDEBUG)
foreach(header IN ITEMS filtered_re2 re2 set stringpiece)
    install(FILES ${sources}/re2/re2/${header}.h DESTINATION re2/include/re2)
endforeach()

set(cbor ${sources}/libcbor/src)
find_sources(cbor_files libcbor "" "src/*.c")
add_library_of(cbor libcbor ${cbor_files})
set(CBOR_VERSION_MAJOR 0)
set(CBOR_VERSION_MINOR 10)
set(CBOR_VERSION_PATCH 2)
set(CBOR_BUFFER_GROWTH 2)
set(CBOR_MAX_STACK_SIZE 2048)
set(CBOR_RESTRICT_SPECIFIER restrict)
configure_file(${cbor}/cbor/configuration.h.in ${PROJECT_BINARY_DIR}/cbor/cbor/configuration.h)
file(WRITE ${PROJECT_BINARY_DIR}/cbor/cbor/cbor_export.h "#define CBOR_EXPORT\n#define CBOR_DEPRECATED\n")
target_include_directories(cbor PRIVATE ${cbor} ${PROJECT_BINARY_DIR}/cbor)
target_compile_definitions(cbor PRIVATE NDEBUG EIGHT_BYTE_SIZE_T)
install(DIRECTORY ${cbor}/ ${PROJECT_BINARY_DIR}/cbor/ DESTINATION libcbor/include FILES_MATCHING PATTERN "*.h")

find_sources(meshoptimizer_files meshoptimizer "" "src/*.cpp")
add_library_of(meshoptimizer meshoptimizer ${meshoptimizer_files})
target_compile_definitions(meshoptimizer PRIVATE NDEBUG)
install(FILES ${sources}/meshoptimizer/src/meshoptimizer.h DESTINATION meshoptimizer/include)

# Of Bullet the convex hulls, of its extras the convex decomposition.
add_library_of(LinearMath bullet ${sources}/bullet/src/btLinearMathAll.cpp)
target_include_directories(LinearMath PRIVATE ${sources}/bullet/src)
target_compile_definitions(LinearMath PRIVATE NDEBUG)
install(DIRECTORY ${sources}/bullet/src/LinearMath DESTINATION bullet/include FILES_MATCHING PATTERN "*.h")
find_sources(hacd_files bullet "" "Extras/HACD/*.cpp")
add_library_of(HACD hacd ${hacd_files})
install(DIRECTORY ${sources}/bullet/Extras/HACD/ DESTINATION hacd/include FILES_MATCHING PATTERN "*.h" PATTERN "*.inl")
