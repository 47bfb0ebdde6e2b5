// Texts of any bytes as the text files of a package's meshes and materials: reading must accept or refuse
// them, never fail otherwise.
#include <cstddef>
#include <cstdint>

#include "fuzz/package_text_fuzz_body.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    velinor::fuzzPackageText({reinterpret_cast<const char*>(data), size});
    return 0;
}
