// The materials and texture maps of an ASE file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "hosts/ase/ase_lexer.h"
#include "hosts/ase/ase_text.h"
#include "hosts/import/import_notes.h"
#include "hosts/import/material_losses.h"
#include "hosts/import/texture_files.h"
#include "hosts/snapshot/scene_snapshot.h"

namespace velinor {

// Reads the list of materials into those of a scene: each material before its sub-materials, all in the order
// of the file. Bitmaps are named by the absolute paths of the files that they are found as, missing ones as
// the file names them, with a note.
class AseMaterials {
  public:
    AseMaterials(SceneSnapshot& scene, const AseText& text, const TextureFiles& files, ImportNotes& notes)
        : scene_(scene), text_(text), files_(files), notes_(notes) {}

    // Reads the block of the keyword MATERIAL_LIST that comes next.
    void read(AseLexer& lexer);

    // The material with that number in the file's list; absent: there is none.
    std::optional<SnapshotRef> material(std::int64_t number) const;
    std::size_t count() const { return byNumber_.size(); }

    // What the materials lose, about the file `shown`.
    void addNotes(const std::string& shown);

  private:
    // A block that is open: of a material, or of a map below a material or another map.
    struct Frame {
        bool isMap = false;
        SnapshotRef item = 0;                       // of the scene's materials or maps
        SnapshotRef material = 0;                   // the material that the map belongs to
        std::optional<SnapshotRef> parentMap = {};  // absent: the map is one of the material itself
        std::optional<std::int32_t> slot = {};      // by the keyword, or by the map's own number
    };

    // What a file says of a material, beside what its scene material holds already.
    struct Values {
        float shine = 0;
        float transparency = 0;
        bool isTwoSided = false;
        bool isLuminous = false;
    };

    // The same of a map.
    struct MapTraits {
        bool isNumbered = false;  // its keyword does not name its slot
        bool isMoved = false;     // on the surface
        bool isPartial = false;   // its amount is not 1
    };

    void openMaterial(AseLexer& lexer, std::string_view keyword);
    void openMap(AseLexer& lexer, std::string_view keyword);
    void readMaterialPart(AseLexer& lexer, std::string_view keyword);
    void readMapPart(AseLexer& lexer, std::string_view keyword);
    void closeFrame();
    void closeMaterial(SnapshotRef material);
    void closeMap(const Frame& frame);
    MapTraits finishMaps(const SnapshotMaterial& material);
    void noteLosses(const SnapshotMaterial& material, const Values& values, const MapTraits& maps);
    std::u16string bitmapName(const std::u16string& given, const SnapshotMaterial& material);

    SceneSnapshot& scene_;
    const AseText& text_;
    const TextureFiles& files_;
    ImportNotes& notes_;
    std::vector<Frame> frames_;
    std::vector<Values> values_;        // by material
    std::vector<MapTraits> mapTraits_;  // by map
    std::unordered_map<std::int64_t, SnapshotRef> byNumber_;
    std::map<std::u16string, std::u16string> bitmaps_;  // by the file's name for it
    MaterialLosses losses_;
};

}  // namespace velinor
