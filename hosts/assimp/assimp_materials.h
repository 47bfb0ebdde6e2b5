// The materials of a scene file, as a host would hold them.
#pragma once

#include <map>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "base/progress.h"
#include "hosts/assimp/assimp_format.h"
#include "hosts/assimp/bitmap_table.h"
#include "hosts/import/import_notes.h"
#include "hosts/snapshot/scene_snapshot.h"

struct aiScene;

namespace velinor {

// Makes host materials of the file's: one for each, in the order of the file, and after them the
// multi-materials that meshes of several materials need. What the library calls a material where the file has
// none is no material.
class MaterialTable {
  public:
    // Their maps go to `bitmaps`. Throws SceneError where an image of the file cannot be written.
    MaterialTable(const aiScene& scene, const SourceFile& file, BitmapTable& bitmaps, Progress& progress,
                  ImportNotes& notes);

    // The material of a node whose mesh uses the library materials `byId`, one for each material ID; absent:
    // none. A multi-material, which the file has no name for, takes `nodeName`, that of its first node.
    std::optional<SnapshotRef> materialOf(std::span<const unsigned> byId, std::u16string_view nodeName);

    // Hands the materials over.
    std::vector<SnapshotMaterial> take() { return std::move(materials_); }

  private:
    std::optional<SnapshotRef> single(unsigned material) const;

    std::vector<SnapshotMaterial> materials_;
    std::vector<std::optional<SnapshotRef>> ofLibrary_;
    std::map<std::vector<unsigned>, SnapshotRef> multis_;
};

}  // namespace velinor
