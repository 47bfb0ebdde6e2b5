// Scenes of the import library made of any bytes: converting them must give a snapshot or a message, never
// fail.
#include <cstddef>
#include <cstdint>

#include "fuzz/assimp_scene_fuzz_body.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    velinor::fuzzAssimpScene({reinterpret_cast<const char*>(data), size});
    return 0;
}
