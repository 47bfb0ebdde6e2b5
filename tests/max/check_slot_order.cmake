# cmake -DCLANG=... -DROOT=... -P check_slot_order.cmake
# The tables of virtual operations, as the compiler family of 3ds Max lays them out, must be those of the expected file.
execute_process(
    COMMAND ${CLANG} --target=x86_64-pc-windows-msvc -ffreestanding -std=c++20 -I${ROOT} -S -emit-llvm -o /dev/null
            -Xclang -fdump-vtable-layouts ${ROOT}/tests/max/slot_order.cpp
    OUTPUT_VARIABLE tables ERROR_VARIABLE errors RESULT_VARIABLE status)
if(NOT status EQUAL 0)
    message(FATAL_ERROR "${errors}")
endif()
file(READ ${ROOT}/tests/max/slot_order_expected.txt expected)
string(STRIP "${expected}" expected)
string(REPLACE "\n\n" ";" expected "${expected}")
list(LENGTH expected count)
if(NOT count EQUAL 2)
    message(FATAL_ERROR "the expected file holds ${count} tables, not 2")
endif()
foreach(table IN LISTS expected)
    string(FIND "${tables}" "${table}\n" place)
    if(place EQUAL -1)
        message(FATAL_ERROR "this table is not among those of the compiler:\n${table}\n\nThe compiler's:\n${tables}")
    endif()
endforeach()
