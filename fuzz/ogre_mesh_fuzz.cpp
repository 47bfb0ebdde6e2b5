// Files of any bytes as meshes: reading must accept or refuse them, never fail otherwise.
#include <cstddef>
#include <cstdint>

#include "fuzz/ogre_mesh_fuzz_body.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    velinor::fuzzOgreMesh({reinterpret_cast<const char*>(data), size});
    return 0;
}
