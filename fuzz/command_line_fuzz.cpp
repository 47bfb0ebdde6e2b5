// Arguments of any bytes, split at line ends: parsing must accept or refuse them, never fail otherwise.
#include <cstddef>
#include <cstdint>

#include "fuzz/command_line_fuzz_body.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    velinor::tryCommandLine({reinterpret_cast<const char*>(data), size});
    return 0;
}
