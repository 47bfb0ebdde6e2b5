// A whole scene as one value: everything that an export asks of its host, as the host would answer, nothing
// interpreted. Every file reader produces one, tests write one in code, and SnapshotHost makes a host of one.
//
// Host space is Z-up and right-handed, vectors are rows, lengths are scene units, colours are linear.
// References are zero-based indices into the lists of the scene. The member names of the file format stand as
// trailing comments where they differ from the field's name. docs/scene-snapshot.md describes the format.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "host/geometry.h"
#include "host/gmatrix.h"
#include "host/object.h"

namespace velinor {

// A reference to an item of one of the scene's lists.
using SnapshotRef = std::uint32_t;

// The list of a node's instances, the master last. The members of a group usually hold equal lists, so the
// list is shared: a group of 10,000 instances has one list, not 10,000. Compares by content.
class InstanceList {
  public:
    explicit InstanceList(std::vector<SnapshotRef> nodes)
        : nodes_(std::make_shared<const std::vector<SnapshotRef>>(std::move(nodes))) {}

    const std::vector<SnapshotRef>& nodes() const { return *nodes_; }
    bool operator==(const InstanceList& other) const {
        return nodes_ == other.nodes_ || *nodes_ == *other.nodes_;
    }

  private:
    std::shared_ptr<const std::vector<SnapshotRef>> nodes_;
};

struct SnapshotObject {
    // The host's type code: 1 light, 2 mesh, 3 spline, 4 camera, 5 helper, 6 bone, any other.
    std::int32_t type = 0;
    std::u16string className = {};
    std::optional<host::Box3> boundingBox = {};  // absent: of the mesh's vertices, else all zero
    std::optional<SnapshotRef> mesh = {};        // present exactly for type 2
    std::optional<std::int32_t> faceCount = {};  // absent: the mesh's number of faces
    std::optional<host::LightState> light = {};  // for type 1 only; absent: white, intensity 1, type 0
    std::map<std::u16string, float> parameters = {};

    bool operator==(const SnapshotObject&) const = default;
};

struct SnapshotNode {
    std::u16string name = {};
    std::vector<SnapshotRef> children = {};
    host::GMatrix worldTransform = {};  // object to world; the fourth column is (0, 0, 0, 1)
    bool hidden = false;
    bool layerHidden = false;
    bool selected = false;
    std::optional<InstanceList> instances = {};  // absent: the node itself
    std::map<std::u16string, std::int32_t> userProperties = {};
    std::optional<SnapshotRef> material = {};
    std::optional<SnapshotObject> object = {};

    bool operator==(const SnapshotNode&) const = default;
};

using FaceIndices = std::array<std::uint32_t, 3>;

// Texture coordinates of one map channel. `faces` may be empty: the channel then has vertices and no faces.
struct SnapshotMapChannel {
    std::vector<host::Point3> vertices = {};
    std::vector<FaceIndices> faces = {};

    bool operator==(const SnapshotMapChannel&) const = default;
};

// What the host answers for a render vertex: its one specified normal, or normals for each smoothing group.
using SnapshotRenderVertex = std::variant<host::Point3, std::vector<host::RNormal>>;

struct SnapshotMesh {
    std::vector<host::Point3> vertices = {};
    std::vector<FaceIndices> faces = {};
    std::vector<std::uint32_t> smoothing = {};               // 1 a face, or empty: all 0
    std::vector<std::uint16_t> materialIds = {};             // 1 a face, or empty: all 0
    std::optional<std::vector<int>> activeMaterialIds = {};  // absent: the distinct materialIds, ascending
    std::optional<std::int32_t> mapChannels = {};  // absent: the larger of 2 and the highest channel plus 1
    std::map<std::int32_t, SnapshotMapChannel> maps = {};  // by channel number
    std::vector<host::Point3> specifiedNormals = {};       // 1 a vertex, or empty: none
    // 1 a vertex, or empty: all built from the faces.
    std::vector<std::optional<SnapshotRenderVertex>> renderVertices = {};

    bool operator==(const SnapshotMesh&) const = default;
};

struct SnapshotSubMaterial {
    std::int32_t id = 0;
    std::optional<SnapshotRef> material = {};

    bool operator==(const SnapshotSubMaterial&) const = default;
};

// A property that holds a texture map, or none.
struct SnapshotMapProperty {
    std::optional<SnapshotRef> map = {};

    bool operator==(const SnapshotMapProperty&) const = default;
};

struct SnapshotProperty {
    std::u16string name = {};
    // Member value, or map for a SnapshotMapProperty.
    std::variant<float, host::Point3, host::Point4, std::u16string, SnapshotMapProperty> value = {};

    bool operator==(const SnapshotProperty&) const = default;
};

struct SnapshotTextureMap {
    std::int32_t slot = 0;
    SnapshotRef map = 0;

    bool operator==(const SnapshotTextureMap&) const = default;
};

struct SnapshotMaterial {
    std::u16string className = {};  // class
    std::u16string name = {};
    std::vector<SnapshotSubMaterial> subMaterials = {};
    std::vector<SnapshotProperty> properties = {};
    host::Point3 diffuse = {};
    float opacity = 0;
    float glossiness = 0;
    std::variant<std::monostate, float, host::Point3> specular = {};  // only a float can be read as one float
    std::vector<SnapshotTextureMap> textureMaps = {};

    bool operator==(const SnapshotMaterial&) const = default;
};

struct SnapshotMap {
    std::u16string className = {};  // class
    std::u16string bitmap = {};
    std::vector<std::optional<SnapshotRef>> subMaps = {};

    bool operator==(const SnapshotMap&) const = default;
};

struct SceneSnapshot {
    std::int32_t animationStart = 0;  // ticks
    std::vector<std::u16string> assetFolders = {};
    std::vector<SnapshotNode> nodes = {};
    std::vector<SnapshotRef> roots = {};
    std::vector<SnapshotMesh> meshes = {};
    std::vector<SnapshotMaterial> materials = {};
    std::vector<SnapshotMap> maps = {};

    bool operator==(const SceneSnapshot&) const = default;
};

}  // namespace velinor
