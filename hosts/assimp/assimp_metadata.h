// What the library keeps beside a node: user properties, the hidden flag and a few facts of single formats.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "hosts/assimp/assimp_format.h"

struct aiNode;

namespace velinor {

struct NodeMetadata {
    std::map<std::u16string, std::int32_t> userProperties;
    std::size_t otherProperties =
        0;                   // user properties that are no integers of 32 bits; a snapshot cannot hold them
    bool isTextCut = false;  // the library cut the text of the user properties; its last line is left out
    bool hidden = false;
    std::optional<bool> isNull;  // FBX: whether the node has no object of its own (an empty, a dummy)
};

NodeMetadata readNodeMetadata(const aiNode& node, const SourceFile& file);

// glTF: the number of the light that the node uses, as the file counts lights.
std::optional<std::uint64_t> gltfLightOf(const aiNode& node);

}  // namespace velinor
