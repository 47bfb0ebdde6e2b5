// Files of any bytes as ASE files: reading must accept or refuse them, never fail otherwise.
#include <cstddef>
#include <cstdint>

#include "fuzz/ase_fuzz_body.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    velinor::fuzzAse({reinterpret_cast<const char*>(data), size});
    return 0;
}
