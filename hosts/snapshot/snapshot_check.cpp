// Checks the rules that tie the lists of a snapshot together.
#include <algorithm>
#include <string>

#include "base/text.h"
#include "hosts/snapshot/document_value.h"
#include "hosts/snapshot/scene_error.h"
#include "hosts/snapshot/snapshot_io.h"
#include "hosts/snapshot/snapshot_names.h"

namespace velinor {
namespace {

constexpr std::size_t kLongestCycleShown = 8;

// Where a check stands in the document. Steps are joined only when a rule is broken: a mesh has millions of
// places.
class Place {
  public:
    explicit Place(std::string_view file) : file_(file) {}
    Place(const Place& parent, std::string_view name) : parent_(&parent), file_(parent.file_), name_(name) {}
    Place(const Place& parent, std::size_t index) : parent_(&parent), file_(parent.file_), index_(index) {}
    ~Place() = default;
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

    [[noreturn]] void fail(std::string_view problem) const {
        throw SceneError(placedMessage(file_, pointer(), problem));
    }

  private:
    std::string pointer() const {
        std::string pointer;
        for (const Place* place = this; place->parent_; place = place->parent_) {
            pointer.insert(
                0, place->name_.empty() ? '/' + std::to_string(place->index_) : pointerStep(place->name_));
        }
        return pointer;
    }

    const Place* parent_ = nullptr;
    std::string_view file_;
    std::string_view name_;
    std::size_t index_ = 0;
};

// "5 nodes", "1 node", "2 vertices".
std::string counted(std::size_t count, std::string_view item) {
    std::string text = std::to_string(count) + ' ';
    if (count == 1) return text.append(item);
    if (item == "mesh") return text + "meshes";
    if (item.ends_with("vertex")) return text.append(item.substr(0, item.size() - 2)) + "ices";
    return text.append(item) + 's';
}

void requireExists(std::size_t ref, std::size_t count, std::string_view item, const Place& place,
                   std::string_view advice = {}) {
    if (ref < count) return;
    std::string problem(item);
    problem += ' ' + std::to_string(ref) + " does not exist (" + counted(count, item) + ')';
    place.fail(problem.append(advice));
}

void requireExists(const std::optional<SnapshotRef>& ref, std::size_t count, std::string_view item,
                   const Place& place) {
    if (ref) requireExists(*ref, count, item, place, "; write null for none");
}

void requireAllExist(const std::vector<SnapshotRef>& refs, std::size_t count, std::string_view item,
                     const Place& place) {
    for (std::size_t i = 0; i < refs.size(); ++i) {
        if (refs[i] >= count) requireExists(refs[i], count, item, Place(place, i));
    }
}

// Lists that are empty are not in the document.
void requireCount(std::size_t found, std::size_t expected, std::string_view item, const Place& place) {
    if (found == 0 || found == expected) return;
    place.fail(std::to_string(found) + " entries where " + std::to_string(expected) + " are expected, 1 a " +
               std::string(item));
}

void requireCornersExist(const std::vector<FaceIndices>& faces, std::size_t count, std::string_view item,
                         const Place& place) {
    for (std::size_t f = 0; f < faces.size(); ++f) {
        for (std::size_t k = 0; k < 3; ++k) {
            if (faces[f][k] >= count) requireExists(faces[f][k], count, item, Place(place, 3 * f + k));
        }
    }
}

// A key "extras" would be passed over when the document is read.
template <class Items>
void requireNoExtras(const Items& items, const Place& place) {
    if (items.contains(u"extras")) place.fail("\"extras\" cannot be a key here: readers pass over it");
}

void checkObject(const SnapshotObject& object, const SceneSnapshot& scene, const Place& place) {
    if (object.type == host::IGameObject::IGAME_MESH && !object.mesh) {
        place.fail("the member \"mesh\" is missing: an object of type \"mesh\" needs it");
    }
    if (object.mesh) {
        const Place mesh(place, "mesh");
        if (object.type != host::IGameObject::IGAME_MESH)
            mesh.fail("only an object of type \"mesh\" has a mesh");
        requireExists(*object.mesh, scene.meshes.size(), "mesh", mesh);
    }
    if (object.light && object.type != host::IGameObject::IGAME_LIGHT) {
        Place(place, "light").fail("only an object of type \"light\" has a light");
    }
    requireNoExtras(object.parameters, Place(place, "parameters"));
}

class SceneCheck {
  public:
    SceneCheck(const SceneSnapshot& scene, std::string_view file) : scene_(scene), root_(file) {}

    void check() {
        const Place nodes(root_, "nodes");
        const InstanceList* latest = nullptr;
        for (std::size_t n = 0; n < scene_.nodes.size(); ++n) {
            const Place place(nodes, n);
            checkNode(scene_.nodes[n], place);
            checkInstances(scene_.nodes[n], latest, place);
        }
        checkTree(nodes);
        checkEach(scene_.meshes, Place(root_, "meshes"), &SceneCheck::checkMesh);
        checkEach(scene_.materials, Place(root_, "materials"), &SceneCheck::checkMaterial);
        checkEach(scene_.maps, Place(root_, "maps"), &SceneCheck::checkMap);
    }

  private:
    template <class Item>
    void checkEach(const std::vector<Item>& items, const Place& list,
                   void (SceneCheck::*checkItem)(const Item&, const Place&) const) const {
        for (std::size_t i = 0; i < items.size(); ++i)
            (this->*checkItem)(items[i], Place(list, i));
    }

    void checkNode(const SnapshotNode& node, const Place& place) const {
        requireAllExist(node.children, scene_.nodes.size(), "node", Place(place, "children"));
        requireExists(node.material, scene_.materials.size(), "material", Place(place, "material"));
        requireNoExtras(node.userProperties, Place(place, "userProperties"));
        for (int row = 0; row < 4; ++row) {
            if (node.worldTransform[row][3] == (row == 3 ? 1.0F : 0.0F)) continue;
            Place(place, "worldTransform").fail("the fourth column is not (0, 0, 0, 1)");
        }
        if (node.object) checkObject(*node.object, scene_, Place(place, "object"));
    }

    // A list that the node before shares is checked already: a group's list is as long as the group.
    void checkInstances(const SnapshotNode& node, const InstanceList*& latest, const Place& place) const {
        if (!node.instances) return;
        const bool isShared = latest && &latest->nodes() == &node.instances->nodes();
        if (!isShared) {
            requireAllExist(node.instances->nodes(), scene_.nodes.size(), "node", Place(place, "instances"));
        }
        latest = &*node.instances;
    }

    void checkTree(const Place& nodes) const;
    void noteParent(SnapshotRef node, std::size_t parent, std::vector<std::size_t>& parents,
                    const Place& nodes) const;
    [[noreturn]] void failCycle(std::size_t start, const std::vector<std::size_t>& parents,
                                const Place& nodes) const;

    void checkMesh(const SnapshotMesh& mesh, const Place& place) const {
        const std::size_t vertices = mesh.vertices.size();
        const std::size_t faces = mesh.faces.size();
        requireCornersExist(mesh.faces, vertices, "vertex", Place(place, "faces"));
        requireCount(mesh.smoothing.size(), faces, "face", Place(place, "smoothing"));
        requireCount(mesh.materialIds.size(), faces, "face", Place(place, "materialIds"));
        requireCount(mesh.specifiedNormals.size(), vertices, "vertex", Place(place, "specifiedNormals"));
        requireCount(mesh.renderVertices.size(), vertices, "vertex", Place(place, "renderVertices"));
        if (mesh.mapChannels && *mesh.mapChannels < 0) {
            Place(place, "mapChannels")
                .fail(std::to_string(*mesh.mapChannels) + " is out of range (0 to 2147483647)");
        }
        const Place maps(place, "maps");
        for (const auto& [number, channel] : mesh.maps) {
            const std::string name = std::to_string(number);
            checkChannel(number, channel, faces, Place(maps, name));
        }
        checkRenderVertices(mesh, Place(place, "renderVertices"));
    }

    static void checkChannel(std::int32_t number, const SnapshotMapChannel& channel, std::size_t faces,
                             const Place& place) {
        if (number < 0 || number == std::numeric_limits<std::int32_t>::max()) {
            place.fail('"' + std::to_string(number) +
                       "\" is not a channel number; write it like \"0\" or \"12\"");
        }
        const Place facesPlace(place, "faces");
        requireCount(channel.faces.size(), faces, "face of the mesh", facesPlace);
        requireCornersExist(channel.faces, channel.vertices.size(), "map vertex", facesPlace);
    }

    static void checkRenderVertices(const SnapshotMesh& mesh, const Place& place) {
        for (std::size_t v = 0; v < mesh.renderVertices.size(); ++v) {
            const auto& vertex = mesh.renderVertices[v];
            const auto* normals = vertex ? std::get_if<std::vector<host::RNormal>>(&*vertex) : nullptr;
            if (!normals || normals->size() <= kMostRenderNormals) continue;
            const Place vertexPlace(place, v);
            Place(vertexPlace, "normals")
                .fail(std::to_string(normals->size()) + " normals; a host holds at most 255");
        }
    }

    void checkMaterial(const SnapshotMaterial& material, const Place& place) const {
        const Place subs(place, "subMaterials");
        for (std::size_t i = 0; i < material.subMaterials.size(); ++i) {
            const Place sub(subs, i);
            requireExists(material.subMaterials[i].material, scene_.materials.size(), "material",
                          Place(sub, "material"));
        }
        const Place properties(place, "properties");
        for (std::size_t i = 0; i < material.properties.size(); ++i) {
            const Place property(properties, i);
            const auto* map = std::get_if<SnapshotMapProperty>(&material.properties[i].value);
            if (map) requireExists(map->map, scene_.maps.size(), "map", Place(property, "map"));
        }
        const Place textures(place, "textureMaps");
        for (std::size_t i = 0; i < material.textureMaps.size(); ++i) {
            const Place texture(textures, i);
            requireExists(material.textureMaps[i].map, scene_.maps.size(), "map", Place(texture, "map"));
        }
    }

    void checkMap(const SnapshotMap& map, const Place& place) const {
        const Place subs(place, "subMaps");
        for (std::size_t i = 0; i < map.subMaps.size(); ++i) {
            requireExists(map.subMaps[i], scene_.maps.size(), "map", Place(subs, i));
        }
    }

    const SceneSnapshot& scene_;
    Place root_;
};

constexpr std::size_t kNoParent = static_cast<std::size_t>(-1);
constexpr std::size_t kRootsParent = static_cast<std::size_t>(-2);

void SceneCheck::noteParent(SnapshotRef node, std::size_t parent, std::vector<std::size_t>& parents,
                            const Place& nodes) const {
    std::size_t& known = parents[node];
    if (known == kNoParent) {
        known = parent;
        return;
    }
    const Place place(nodes, node);
    if (known == kRootsParent && parent == kRootsParent) place.fail("the node is in \"roots\" twice");
    if (known == kRootsParent) {
        place.fail("the node is in \"roots\" and a child of node " + std::to_string(parent) + ", too");
    }
    if (known == parent) place.fail("the node is twice among the children of node " + std::to_string(parent));
    place.fail("the node is the child of two nodes (" + std::to_string(known) + " and " +
               std::to_string(parent) + ")");
}

// Every node has one parent or is a root; those that no root leads to hang from a cycle.
void SceneCheck::checkTree(const Place& nodes) const {
    const std::size_t count = scene_.nodes.size();
    requireAllExist(scene_.roots, count, "node", Place(root_, "roots"));
    std::vector<std::size_t> parents(count, kNoParent);
    for (const SnapshotRef node : scene_.roots)
        noteParent(node, kRootsParent, parents, nodes);
    for (std::size_t n = 0; n < count; ++n) {
        for (const SnapshotRef child : scene_.nodes[n].children)
            noteParent(child, n, parents, nodes);
    }
    for (std::size_t n = 0; n < count; ++n) {
        if (parents[n] == kNoParent)
            Place(nodes, n).fail("the node is neither in \"roots\" nor the child of a node");
    }
    std::vector<bool> isReached(count);
    std::vector<SnapshotRef> pending = scene_.roots;
    while (!pending.empty()) {
        const SnapshotRef node = pending.back();
        pending.pop_back();
        isReached[node] = true;
        const auto& children = scene_.nodes[node].children;
        pending.insert(pending.end(), children.begin(), children.end());
    }
    const auto lost = std::find(isReached.begin(), isReached.end(), false);
    if (lost != isReached.end())
        failCycle(static_cast<std::size_t>(lost - isReached.begin()), parents, nodes);
}

// Upwards from a node that no root leads to, the first node met again is in the cycle.
void SceneCheck::failCycle(std::size_t start, const std::vector<std::size_t>& parents,
                           const Place& nodes) const {
    std::vector<bool> isSeen(parents.size());
    while (!isSeen[start]) {
        isSeen[start] = true;
        start = parents[start];
    }
    std::string cycle = std::to_string(start);
    std::size_t shown = 0;
    std::size_t node = parents[start];
    for (; node != start && ++shown < kLongestCycleShown; node = parents[node])
        cycle += ", " + std::to_string(node);
    Place(nodes, start)
        .fail("the node is its own ancestor: upwards from it come " + cycle + (node == start ? "" : ", …") +
              ", " + std::to_string(start));
}

}  // namespace

void checkSnapshot(const SceneSnapshot& scene, std::string_view file) {
    SceneCheck(scene, file).check();
}

}  // namespace velinor
