// What holds for every input of the snapshot readers, shared by the fuzz targets and the test over
// tests/corpus.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "hosts/snapshot/scene_error.h"
#include "hosts/snapshot/snapshot_io.h"

namespace velinor {

// Ends the program where `holds` is false, which both the fuzzer and a test notice.
inline void requireInFuzz(bool holds, const char* promise) {
    if (holds) return;
    std::fprintf(stderr, "broken: %s\n", promise);
    std::abort();
}

// Scenes are compared by their CBOR: numbers that are not finite compare equal there.
inline void requireSameScene(const std::string& cbor, const std::string& text, SnapshotEncoding encoding,
                             const char* promise) {
    requireInFuzz(writeSnapshot(readSnapshot(text, encoding, "again"), SnapshotEncoding::cbor) == cbor,
                  promise);
}

// Reading throws SceneError with a line of text or gives a scene that comes back from both encodings as it
// was; JSON may refuse numbers that are not finite. Answers whether the input is a scene.
inline bool checkSnapshotInput(std::string_view bytes, SnapshotEncoding encoding) {
    SceneSnapshot scene;
    try {
        scene = readSnapshot(bytes, encoding, "input");
    } catch (const SceneError& error) {
        const std::string_view message = error.what();
        requireInFuzz(message.starts_with("input: ") && message.find('\n') == std::string_view::npos,
                      "a message is one line that names the file");
        requireInFuzz(message.size() < 2000, "a message is short");
        return false;
    }
    const std::string cbor = writeSnapshot(scene, SnapshotEncoding::cbor);
    requireSameScene(cbor, cbor, SnapshotEncoding::cbor, "CBOR reads back as it was written");
    std::string json;
    try {
        json = writeSnapshot(scene, SnapshotEncoding::json);
    } catch (const SceneError&) {
        requireInFuzz(encoding == SnapshotEncoding::cbor, "what came from JSON can be written as JSON");
        return true;
    }
    requireSameScene(cbor, json, SnapshotEncoding::json, "JSON reads back as it was written");
    return true;
}

}  // namespace velinor
