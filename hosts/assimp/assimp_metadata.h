// What the library keeps beside a node: user properties, the hidden flag and a few facts of single formats.
#pragma once

#include <assimp/scene.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/assimp/assimp_format.h"
#include "hosts/assimp/assimp_text.h"

namespace velinor {

// The value of the first entry of that key; absent: there is none, or it is not of that very type.
template <typename Value>
std::optional<Value> metadataValue(const aiMetadata* data, std::string_view key) {
    for (unsigned i = 0; data != nullptr && i < data->mNumProperties; ++i) {
        if (textOf(data->mKeys[i]) != key) continue;
        const aiMetadataEntry& entry = data->mValues[i];
        if (entry.mData == nullptr || entry.mType != GetAiType(Value())) return std::nullopt;
        return *static_cast<const Value*>(entry.mData);
    }
    return std::nullopt;
}

struct NodeMetadata {
    std::map<std::u16string, std::int32_t> userProperties;
    // User properties that are no integers of 32 bits; a snapshot cannot hold them.
    std::size_t otherProperties = 0;
    bool hasReservedProperty = false;  // one is called "extras", which readers of snapshots pass over
    bool isTextCut = false;  // the library cut the text of the user properties; its last line is left out
    bool hidden = false;
    std::optional<bool> isNull;  // FBX: whether the node has no object of its own (an empty, a dummy)
};

NodeMetadata readNodeMetadata(const aiNode& node, const SourceFile& file);

// glTF: the number of the light that the node uses, as the file counts lights.
std::optional<std::uint64_t> gltfLightOf(const aiNode& node);

}  // namespace velinor
