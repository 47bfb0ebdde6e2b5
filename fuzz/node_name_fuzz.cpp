#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/node_name_fuzz_body.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    velinor::fuzzNodeName(std::string_view(reinterpret_cast<const char*>(data), size));
    return 0;
}
