// The texture channels of a material: what the host's material says about each.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>

#include "host/core.h"
#include "host/material.h"
#include "materials/material_map.h"
#include "materials/material_writer_context.h"

namespace velinor {

// A colour, nominally 0 to 1.
struct Color {
    float red = 0;
    float green = 0;
    float blue = 0;
    float alpha = 0;

    bool operator==(const Color&) const = default;
};

// One channel of one material.
struct ChannelSlot {
    Color color = {};
    std::string sourcePath = {};  // 8 bits: the full path of the bitmap that feeds the channel; empty: none
    std::string textureFileName = {};  // 8 bits: the name that the script gives; empty until it is known
    std::u16string hostPath = {};      // what sourcePath was before its characters were cut to 8 bits

    bool operator==(const ChannelSlot&) const = default;
};

// The seven channels by their keys: "ao", "diffuse", "light", "metallic", "normal", "reflection",
// "roughness".
using ChannelTable = std::map<std::string, ChannelSlot, std::less<>>;

// The channels of `material`, which may be null. Nothing where its class is neither "Physical Material" nor
// "Standard". What the material holds and no channel takes is told in the report.
std::optional<ChannelTable> collectChannels(const MaterialWriterContext& context,
                                            host::IGameMaterial* material, const MaterialVariant& variant);

// The full path of the file that a map names: the name itself where it is one and the file exists, otherwise
// what the host finds for it, otherwise the name as it stands.
std::u16string resolveMapFile(host::Host& host, host::HostText fileName);

// The name under which messages speak of `material`, UTF-8; a missing one is called "default".
std::string shownMaterialName(const host::IGameMaterial* material);

}  // namespace velinor
