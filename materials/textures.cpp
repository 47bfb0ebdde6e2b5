#include "materials/textures.h"

#include "base/text.h"
#include "materials/cube_map.h"
#include "materials/solid_color.h"
#include "materials/texture_placement.h"
#include "platform/path_text.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

void reportNotPlaced(const MaterialWriterContext& context, std::string_view materialName,
                     std::string_view key, const ChannelSlot& slot, const FileCopy& copy) {
    const std::string detail = std::string(key) + ": " + toUtf8(slot.hostPath);
    if (copy.outcome == FileCopy::Outcome::unreadable) {
        reportOnce(context, MessageId::textureUnreadable, materialName, detail + ": " + copy.reason);
    } else {
        reportOnce(context, MessageId::textureMissing, materialName, detail);
    }
}

// A path that 8 bits a character cannot hold names another file, or none.
bool isMangled(const ChannelSlot& slot, const fs::path& source) {
    return source.native() != toPath(slot.hostPath).native();
}

void placeBitmap(const MaterialWriterContext& context, std::string_view materialName, std::string_view key,
                 ChannelSlot& slot) {
    const fs::path source = pathOfNarrow(slot.sourcePath);
    const std::string name = sanitiseName(slot.textureFileName);
    const FileCopy copy = placeTexture(context, source, name);
    const bool isPlaced = copy.isPlaced();
    if (isMangled(slot, source)) {
        reportOnce(context, MessageId::texturePathMangled, materialName,
                   std::string(key) + ": " + toUtf8(slot.hostPath));
    } else if (!isPlaced) {
        reportNotPlaced(context, materialName, key, slot, copy);
    }
    if (!isPlaced || name == slot.textureFileName) return;
    slot.textureFileName = name;
    slot.sourcePath = narrowPath(context.folders.resourcesFolder / name);
}

}  // namespace

void prepareTextures(const MaterialWriterContext& context, std::string_view materialName,
                     ChannelTable& channels) {
    for (auto& [key, slot] : channels) {
        if (!slot.textureFileName.empty() && !slot.sourcePath.empty()) {
            placeBitmap(context, materialName, key, slot);
        } else if (key == "reflection") {
            placeCubeMap(context, "reflection map", context.settings.customReflectionMap,
                         slot.textureFileName);
        } else {
            if (!slot.sourcePath.empty())  // a path that ends in a separator names no file
                reportNotPlaced(context, materialName, key, slot, {FileCopy::Outcome::missing, {}, 0});
            slot.textureFileName = placeSolidColor(context, slot.color);
        }
    }
}

}  // namespace velinor
