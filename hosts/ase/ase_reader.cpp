#include "hosts/ase/ase_reader.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <set>
#include <string_view>
#include <utility>

#include "base/text.h"
#include "hosts/ase/ase_hierarchy.h"
#include "hosts/ase/ase_lexer.h"
#include "hosts/ase/ase_materials.h"
#include "hosts/ase/ase_object.h"
#include "hosts/ase/ase_text.h"
#include "hosts/import/import_text.h"
#include "hosts/import/scene_losses.h"
#include "hosts/snapshot/scene_error.h"

namespace velinor {
namespace {

// Assembles the scene of one file.
class Assembly {
  public:
    Assembly(std::string bytes, const std::filesystem::path& file, const AseOptions& options,
             Progress& progress, ImportNotes& notes)
        : shown_(printable(utf8Path(file))),
          text_(std::move(bytes)),
          lexer_(text_.text(), shown_, text_.encoding()),
          receiver_(progress),
          progress_(progress, lexer_),
          notes_(notes),
          files_(file, TextureNames::paths, options.assetFolders),
          materials_(scene_, text_, files_, notes) {}

    SceneSnapshot assemble() {
        receiver_.beginPhase("Reading the scene file", text_.text().size());
        readHeader();
        while (const auto keyword = nextAtTop())
            readTop(*keyword);
        progress_.tell();
        if (scene_.nodes.empty())
            throw SceneError(shown_ + ": holds nothing: no mesh, shape, light, camera or helper");
        linkMaterials();
        linkNodes();
        addNotes();
        return std::move(scene_);
    }

  private:
    void readHeader() {
        const auto keyword = lexer_.next();
        if (keyword == "3DSMAX_ASCIIEXPORT") return;
        lexer_.refuse(lexer_.place(),
                      "an ASE file begins with *3DSMAX_ASCIIEXPORT, and this one does not; export it again");
    }

    // Objects within groups stand in the blocks of these, which hold nothing else.
    std::optional<std::string_view> nextAtTop() {
        for (;;) {
            const std::size_t depth = lexer_.depth();
            const auto keyword = lexer_.next();
            if (keyword || depth == 0) return keyword;
        }
    }

    void readTop(std::string_view keyword) {
        if (isAseObject(keyword)) {
            addNode(readAseObject(lexer_, keyword, progress_));
        } else if (keyword == "GROUP") {
            if (lexer_.isAtText()) lexer_.text();
            lexer_.enter("GROUP");
        } else if (keyword == "MATERIAL_LIST") {
            materials_.read(lexer_);
        } else if (keyword == "SCENE") {
            readScene();
        } else if (lexer_.isAtBlock() && unknown_.size() < kShownUnknown) {
            unknown_.insert(text_.show(keyword.substr(0, kShownKeyword)));
        }
        progress_.tell();
    }

    void readScene() {
        constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
        std::int64_t frame = 0;
        std::int64_t ticks = 0;
        lexer_.enter("SCENE");
        while (const auto keyword = lexer_.next()) {
            if (*keyword == "SCENE_FIRSTFRAME") frame = lexer_.integer(-kMost, kMost);
            if (*keyword == "SCENE_TICKSPERFRAME") ticks = lexer_.integer(0, kMost);
        }
        scene_.animationStart = static_cast<std::int32_t>(std::clamp(frame * ticks, -kMost, kMost));
    }

    void addNode(AseObject object) {
        SnapshotNode& node = scene_.nodes.emplace_back();
        node.name = text_.decode(object.name);
        hierarchy_.add(object.name, object.parent);
        if (object.objectToWorld) {
            node.worldTransform = *object.objectToWorld;
        } else {
            losses_.add(SceneLoss::noTransform, nameOf(node));
        }
        if (object.material) materialNumbers_.push_back({scene_.nodes.size() - 1, *object.material});
        node.object.emplace();
        node.object->type = object.type;
        node.object->className = text_.decode(object.helperClass);
        node.object->light = object.light;
        if (object.hasUnknownLight) losses_.add(SceneLoss::unknownLight, nameOf(node));
        if (object.mesh) addMesh(*std::move(object.mesh), node);
        isAnimated_ = isAnimated_ || object.isAnimated;
    }

    void addMesh(AseMesh read, SnapshotNode& node) {
        node.object->mesh = static_cast<SnapshotRef>(scene_.meshes.size());
        scene_.meshes.push_back(std::move(read.mesh));
        if (read.hasVertexColours) losses_.add(SceneLoss::vertexColours, nameOf(node));
        if (read.lostFaces > 0) losses_.add(SceneLoss::infiniteTriangles, nameOf(node), read.lostFaces);
        if (read.badMapVertices > 0)
            losses_.add(SceneLoss::infiniteMapVertices, nameOf(node), read.badMapVertices);
        if (read.isTurned) losses_.add(SceneLoss::turnedFaces, nameOf(node));
    }

    void linkMaterials() {
        for (const auto& [node, material] : materialNumbers_) {
            scene_.nodes[node].material = materials_.material(material.number);
            if (scene_.nodes[node].material) continue;
            lexer_.refuse(material.place, "material " + std::to_string(material.number) +
                                              " does not exist; the file has " +
                                              std::to_string(materials_.count()));
        }
    }

    void linkNodes() {
        std::vector<std::uint32_t> lost;
        const auto parents = hierarchy_.parents(lost);
        for (SnapshotRef node = 0; node < parents.size(); ++node)
            (parents[node] ? scene_.nodes[*parents[node]].children : scene_.roots).push_back(node);
        for (const std::uint32_t node : lost)
            losses_.add(SceneLoss::lostParent, nameOf(scene_.nodes[node]));
    }

    void addNotes() {
        materials_.addNotes(shown_);
        losses_.writeTo(notes_, shown_);
        if (isAnimated_)
            notes_.add(shown_, "animations are left out: the scene stands as at its first frame");
        if (text_.isCodePage()) {
            notes_.addHint(
                shown_,
                "the file does not tell its code page; names are read as Windows-1252. If they look "
                "wrong, save the file as UTF-8");
        }
        if (!unknown_.empty()) {
            std::string names;
            for (const std::string& name : unknown_)
                names += (names.empty() ? "*" : ", *") + name;
            notes_.add(shown_, "blocks of these kinds are not known and left out: " + names);
        }
        notes_.addHint(shown_,
                       "ASE files do not hold user properties, layers, instances, and what is hidden or "
                       "selected; export from 3ds Max itself where these matter");
    }

    static std::string nameOf(const SnapshotNode& node) { return oneLine(toUtf8(node.name)); }

    static constexpr std::size_t kShownKeyword = 40;
    static constexpr std::size_t kShownUnknown = 8;

    struct NumberOfNode {
        std::size_t node = 0;
        AseMaterialNumber material;
    };

    std::string shown_;
    AseText text_;
    AseLexer lexer_;
    Progress& receiver_;
    AseProgress progress_;
    ImportNotes& notes_;
    TextureFiles files_;
    SceneSnapshot scene_;
    AseMaterials materials_;
    AseHierarchy hierarchy_;
    std::vector<NumberOfNode> materialNumbers_;
    std::set<std::string> unknown_;
    SceneLosses losses_;
    bool isAnimated_ = false;
};

}  // namespace

bool isAseFile(const std::filesystem::path& file) {
    const std::string ending = utf8Path(file.extension());
    return std::ranges::any_of(aseFormat().endings,
                               [&](const std::string& known) { return isSameButCase(ending, "." + known); });
}

SceneSnapshot readAse(std::string bytes, const std::filesystem::path& file, const AseOptions& options,
                      Progress& progress, ImportNotes& notes) {
    return Assembly(std::move(bytes), file, options, progress, notes).assemble();
}

}  // namespace velinor
