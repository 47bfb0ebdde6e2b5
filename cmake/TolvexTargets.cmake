# How this project declares its targets: one library a folder, one test program a folder.

# Compiler flags of every target of ours; never set globally, so that dependencies keep their own.
add_library(tolvex_flags INTERFACE)
target_compile_features(tolvex_flags INTERFACE cxx_std_20)
target_include_directories(tolvex_flags INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(tolvex_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wundef
    # GCC 12 takes "text" + std::string() for overlapping copies when it optimises (its bug 105651).
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
    # A fused multiply-add would change the last bits of what is written.
    -ffp-contract=off
    $<$<BOOL:${TOLVEX_WARNINGS_AS_ERRORS}>:-Werror>)
if(TOLVEX_SANITIZE)
    target_compile_options(tolvex_flags INTERFACE
        -fsanitize=${TOLVEX_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
        # The sanitizers' own code leads GCC's flow analysis astray (in <regex>, for one).
        $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    target_link_options(tolvex_flags INTERFACE -fsanitize=${TOLVEX_SANITIZE})
endif()
if(WIN32)
    # Without symbols and the time of the build, so that the same sources give the same bytes.
    target_link_options(tolvex_flags INTERFACE -s -Wl,--no-insert-timestamp)
endif()
if(TOLVEX_FUZZ)
    target_compile_options(tolvex_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# For builds of everything, as CI's. Names within anonymous namespaces must differ for that within a folder. The batches are
# small enough for two compilers at a time.
set(CMAKE_UNITY_BUILD_BATCH_SIZE 12)
if(TOLVEX_UNITY STREQUAL "all")
    set(CMAKE_UNITY_BUILD ON)
endif()

# Where the files of this machine are for the test programs: Wine shows them as a drive. Goes before absolute paths that are
# compiled into a test program.
set(TOLVEX_DRIVE "")
if(WIN32 AND CMAKE_CROSSCOMPILING)
    set(TOLVEX_DRIVE "Z:")
endif()

# tolvex_library(NAME SOURCES ... [PUBLIC targets...] [PRIVATE targets...])
# Declares the library tolvex::NAME of a folder. PUBLIC and PRIVATE are its arrows to other targets.
function(tolvex_library name)
    cmake_parse_arguments(arg "" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
    add_library(tolvex_${name} STATIC ${arg_SOURCES})
    add_library(tolvex::${name} ALIAS tolvex_${name})
    target_link_libraries(tolvex_${name} PUBLIC tolvex_flags ${arg_PUBLIC} PRIVATE ${arg_PRIVATE})
endfunction()

set(TOLVEX_TEST_PROGRAMS ${PROJECT_BINARY_DIR}/test-programs.txt)
file(WRITE ${TOLVEX_TEST_PROGRAMS} "")

# tolvex_tests(NAME SOURCES ... [LIBRARIES targets...] [SCREEN])
# Declares the test program of a folder and registers each of its tests with CTest. With SCREEN the tests open windows, and run
# one after the other: they would find each other's.
function(tolvex_tests name)
    if(NOT TOLVEX_TESTS)
        return()
    endif()
    cmake_parse_arguments(arg "SCREEN" "" "SOURCES;LIBRARIES" ${ARGN})
    add_executable(${name}_tests ${arg_SOURCES})
    target_link_libraries(${name}_tests PRIVATE tolvex_flags tolvex_test_main ${arg_LIBRARIES} GTest::gmock)
    # Tests run once; compiling them fast saves more than running them fast.
    target_compile_options(${name}_tests PRIVATE -O0)
    set(properties TIMEOUT 300)
    if(arg_SCREEN)
        list(APPEND properties RESOURCE_LOCK screen)
    endif()
    if(TOLVEX_UNITY)
        set_target_properties(${name}_tests PROPERTIES UNITY_BUILD ON)
    endif()
    if(WIN32)
        # One folder for all, so that the libraries which they load stand there once.
        set_target_properties(${name}_tests PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/test-programs)
    endif()
    # A program that lists no tests would pass unseen: scripts/lib/common.sh asks for some of each.
    file(APPEND ${TOLVEX_TEST_PROGRAMS} "${name}\n")
    gtest_discover_tests(${name}_tests
        DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 TEST_PREFIX "${name}/" PROPERTIES ${properties})
endfunction()
