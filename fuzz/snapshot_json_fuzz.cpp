// Feeds scene snapshots in JSON to the reader.
#include <cstddef>
#include <cstdint>

#include "fuzz/snapshot_fuzz_body.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    velinor::checkSnapshotInput({reinterpret_cast<const char*>(data), size}, velinor::SnapshotEncoding::json);
    return 0;
}
