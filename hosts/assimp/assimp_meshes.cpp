#include "hosts/assimp/assimp_meshes.h"

#include <assimp/scene.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <utility>

#include "base/text.h"
#include "hosts/assimp/assimp_text.h"
#include "hosts/snapshot/scene_error.h"

namespace velinor {
namespace {

constexpr std::uint32_t kUnused = 0xFFFFFFFFU;

bool isFinite(const aiVector3D& p) {
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

// What is left out of the library meshes of one list.
struct Dropped {
    std::uint64_t degenerate = 0;   // a corner twice
    std::uint64_t notFinite = 0;    // a coordinate that is infinite or no number
    std::uint64_t outOfRange = 0;   // a vertex that does not exist
    std::uint64_t linesPoints = 0;  // faces of one or two corners
    std::uint64_t materials = 0;    // more than there are IDs for
    bool hasColours = false;
    bool hasMorphTargets = false;
    bool hasBones = false;
};

// The triangles of one library mesh and the vertices they use.
struct Part {
    const aiMesh* mesh = nullptr;
    std::vector<FaceIndices> faces;       // indices of kept vertices
    std::vector<std::uint32_t> vertices;  // the kept vertices; empty: all
    std::size_t vertexCount = 0;          // number of kept vertices
    std::uint16_t materialId = 0;

    std::size_t source(std::size_t vertex) const { return vertices.empty() ? vertex : vertices[vertex]; }
};

// Whether the triangle is to be kept; counts it otherwise.
bool isKept(const aiMesh& mesh, const FaceIndices& face, Dropped& dropped) {
    if (std::ranges::any_of(face, [&mesh](std::uint32_t v) { return v >= mesh.mNumVertices; })) {
        ++dropped.outOfRange;
    } else if (face[0] == face[1] || face[1] == face[2] || face[2] == face[0]) {
        ++dropped.degenerate;
    } else if (!std::ranges::all_of(face, [&mesh](std::uint32_t v) { return isFinite(mesh.mVertices[v]); })) {
        ++dropped.notFinite;
    } else {
        return true;
    }
    return false;
}

// Leaves out the vertices that no triangle of `part` uses.
void dropUnusedVertices(Part& part) {
    std::vector<std::uint32_t> kept(part.mesh->mNumVertices, kUnused);
    for (const FaceIndices& face : part.faces) {
        for (const std::uint32_t vertex : face)
            kept[vertex] = 0;
    }
    for (std::uint32_t vertex = 0; vertex < kept.size(); ++vertex) {
        if (kept[vertex] == kUnused) continue;
        kept[vertex] = static_cast<std::uint32_t>(part.vertices.size());
        part.vertices.push_back(vertex);
    }
    for (FaceIndices& face : part.faces) {
        for (std::uint32_t& vertex : face)
            vertex = kept[vertex];
    }
    part.vertexCount = part.vertices.size();
}

bool hasVertices(const aiMesh& mesh) {
    return mesh.mNumVertices != 0 && mesh.mVertices != nullptr;
}

Part trianglesOf(const aiMesh& mesh, Dropped& dropped) {
    Part part;
    part.mesh = &mesh;
    if (!hasVertices(mesh) || mesh.mFaces == nullptr) return part;
    part.vertexCount = mesh.mNumVertices;
    part.faces.reserve(mesh.mNumFaces);
    for (unsigned i = 0; i < mesh.mNumFaces; ++i) {
        const aiFace& face = mesh.mFaces[i];
        if (face.mIndices == nullptr) {
            ++dropped.outOfRange;
            continue;
        }
        if (face.mNumIndices != 3) {
            ++dropped.linesPoints;
            continue;
        }
        const FaceIndices triangle{face.mIndices[0], face.mIndices[1], face.mIndices[2]};
        if (isKept(mesh, triangle, dropped)) part.faces.push_back(triangle);
    }
    const bool isAllFinite = std::all_of(mesh.mVertices, mesh.mVertices + mesh.mNumVertices, isFinite);
    if (part.faces.size() != mesh.mNumFaces || !isAllFinite) dropUnusedVertices(part);
    return part;
}

void noteBeyondTriangles(const aiMesh& mesh, Dropped& dropped) {
    dropped.hasColours = dropped.hasColours || mesh.mColors[0] != nullptr;
    dropped.hasMorphTargets = dropped.hasMorphTargets || mesh.mNumAnimMeshes != 0;
    dropped.hasBones = dropped.hasBones || mesh.mNumBones != 0;
}

void addLosses(const Dropped& dropped, bool hasTriangles, const std::string& node, SceneLosses& losses) {
    const std::pair<SceneLoss, std::uint64_t> amounts[] = {
        {SceneLoss::vertexColours, dropped.hasColours ? 1 : 0},
        {SceneLoss::morphTargets, dropped.hasMorphTargets ? 1 : 0},
        {SceneLoss::bones, dropped.hasBones ? 1 : 0},
        {SceneLoss::linesAndPoints, hasTriangles ? dropped.linesPoints : 0},
        {SceneLoss::degenerateTriangles, dropped.degenerate},
        {SceneLoss::infiniteTriangles, dropped.notFinite},
        {SceneLoss::badTriangles, dropped.outOfRange},
        {SceneLoss::manyMaterials, dropped.materials},
    };
    for (const auto& [loss, amount] : amounts) {
        if (amount != 0) losses.add(loss, node, amount);
    }
}

void appendVertices(const Part& part, const SpaceRule& rule, std::vector<host::Point3>& vertices) {
    for (std::size_t i = 0; i < part.vertexCount; ++i) {
        vertices.push_back(objectPoint(part.mesh->mVertices[part.source(i)], rule));
    }
}

void appendFaces(std::vector<FaceIndices> faces, std::uint32_t firstVertex, std::vector<FaceIndices>& all) {
    if (all.empty()) {
        all = std::move(faces);
        return;
    }
    all.reserve(all.size() + faces.size());
    for (const FaceIndices& face : faces) {
        all.push_back({face[0] + firstVertex, face[1] + firstVertex, face[2] + firstVertex});
    }
}

// A vector of length 1, or zero where there is none.
host::Point3 unit(const host::Point3& v) {
    const double length = std::sqrt(double{v.x} * v.x + double{v.y} * v.y + double{v.z} * v.z);
    if (!(length > 0) || !std::isfinite(length)) return {};
    return {static_cast<float>(v.x / length), static_cast<float>(v.y / length),
            static_cast<float>(v.z / length)};
}

host::Point3 faceNormal(const SnapshotMesh& mesh, const FaceIndices& face) {
    const auto& a = mesh.vertices[face[0]];
    const auto& b = mesh.vertices[face[1]];
    const auto& c = mesh.vertices[face[2]];
    const host::Point3 u{b.x - a.x, b.y - a.y, b.z - a.z};
    const host::Point3 v{c.x - b.x, c.y - b.y, c.z - b.z};
    return unit({u.y * v.z - u.z * v.y, u.z * v.x - u.x * v.z, u.x * v.y - u.y * v.x});
}

// Gives vertices without a usable normal that of their first triangle.
void fillZeroNormals(const SnapshotMesh& mesh, std::vector<host::Point3>& normals) {
    const host::Point3 zero;
    if (std::ranges::find(normals, zero) == normals.end()) return;
    for (const FaceIndices& face : mesh.faces) {
        for (const std::uint32_t vertex : face) {
            if (normals[vertex] == zero) normals[vertex] = faceNormal(mesh, face);
        }
    }
}

// Every vertex of the library has one normal. Where some parts have none, the others' stand in the render
// vertices, since specified normals are for all vertices of a mesh.
void addNormals(std::span<const Part> parts, const SpaceRule& rule, SnapshotMesh& mesh) {
    const auto hasNormals = [](const Part& part) { return part.mesh->mNormals != nullptr; };
    if (std::ranges::none_of(parts, hasNormals)) return;
    std::vector<host::Point3> normals;
    normals.reserve(mesh.vertices.size());
    for (const Part& part : parts) {
        for (std::size_t i = 0; i < part.vertexCount; ++i) {
            normals.push_back(hasNormals(part) ? unit(objectPoint(part.mesh->mNormals[part.source(i)], rule))
                                               : host::Point3());
        }
    }
    if (std::ranges::all_of(parts, hasNormals)) {
        fillZeroNormals(mesh, normals);
        mesh.specifiedNormals = std::move(normals);
        return;
    }
    mesh.renderVertices.resize(normals.size());
    for (std::size_t i = 0; i < normals.size(); ++i) {
        if (normals[i] != host::Point3()) mesh.renderVertices[i] = normals[i];
    }
}

// The map channel of UV set `set`: the number that 3ds Max has written into the set's name ("UVChannel_2"),
// otherwise the sets in order from channel 1.
int channelOf(const aiMesh& mesh, unsigned set) {
    const int usual = static_cast<int>(set) + 1;
    if (!mesh.HasTextureCoordsName(set)) return usual;
    constexpr std::string_view kPrefix = "UVChannel_";
    const std::string_view name = textOf(*mesh.GetTextureCoordsName(set));
    if (!name.starts_with(kPrefix) || name.size() > kPrefix.size() + 2) return usual;
    int channel = 0;
    for (const char c : name.substr(kPrefix.size())) {
        if (c < '0' || c > '9') return usual;
        channel = channel * 10 + (c - '0');
    }
    return channel > 0 ? channel : usual;
}

// The UV sets of a library mesh by channel; of two sets of one channel the first stays.
std::map<int, unsigned> channelsOf(const aiMesh& mesh) {
    std::map<int, unsigned> channels;
    for (unsigned set = 0; set < AI_MAX_NUMBER_OF_TEXTURECOORDS; ++set) {
        if (mesh.mTextureCoords[set] != nullptr) channels.try_emplace(channelOf(mesh, set), set);
    }
    return channels;
}

host::Point3 mapPoint(const aiVector3D& uv) {
    return isFinite(uv) ? host::Point3{uv.x, uv.y, uv.z} : host::Point3();
}

// Appends `part` to a channel; `set` is its UV set, or null where it has none of that channel.
void appendMap(const Part& part, const unsigned* set, std::span<const FaceIndices> faces,
               std::uint32_t firstVertex, SnapshotMapChannel& channel) {
    const auto first = static_cast<std::uint32_t>(channel.vertices.size());
    if (set == nullptr) {
        channel.vertices.push_back({});
        channel.faces.insert(channel.faces.end(), faces.size(), FaceIndices{first, first, first});
        return;
    }
    for (std::size_t i = 0; i < part.vertexCount; ++i) {
        channel.vertices.push_back(mapPoint(part.mesh->mTextureCoords[*set][part.source(i)]));
    }
    for (const FaceIndices& face : faces) {
        channel.faces.push_back(
            {face[0] - firstVertex + first, face[1] - firstVertex + first, face[2] - firstVertex + first});
    }
}

// Where the faces and vertices of a part lie in the whole mesh.
struct Extent {
    std::size_t firstFace = 0;
    std::size_t faceCount = 0;
    std::uint32_t firstVertex = 0;
};

void addMaps(std::span<const Part> parts, std::span<const Extent> extents, SnapshotMesh& mesh) {
    std::vector<std::map<int, unsigned>> sets;
    for (const Part& part : parts) {
        sets.push_back(channelsOf(*part.mesh));
        for (const auto& [channel, set] : sets.back())
            mesh.maps[channel];
    }
    for (auto& [number, channel] : mesh.maps) {
        channel.vertices.reserve(mesh.vertices.size());
        channel.faces.reserve(mesh.faces.size());
        for (std::size_t i = 0; i < parts.size(); ++i) {
            const auto found = sets[i].find(number);
            const auto faces = std::span(mesh.faces).subspan(extents[i].firstFace, extents[i].faceCount);
            appendMap(parts[i], found == sets[i].end() ? nullptr : &found->second, faces,
                      extents[i].firstVertex, channel);
        }
    }
}

// One host mesh of several library meshes, which is how the library holds a mesh of several materials.
SnapshotMesh joined(std::vector<Part>& parts, const SpaceRule& rule) {
    SnapshotMesh mesh;
    std::size_t vertexCount = 0;
    for (const Part& part : parts)
        vertexCount += part.vertexCount;
    mesh.vertices.reserve(vertexCount);
    std::vector<Extent> extents;
    for (Part& part : parts) {
        const Extent extent{mesh.faces.size(), part.faces.size(),
                            static_cast<std::uint32_t>(mesh.vertices.size())};
        appendVertices(part, rule, mesh.vertices);
        appendFaces(std::move(part.faces), extent.firstVertex, mesh.faces);
        extents.push_back(extent);
    }
    if (std::ranges::any_of(parts, [](const Part& part) { return part.materialId != 0; })) {
        mesh.materialIds.reserve(mesh.faces.size());
        for (std::size_t i = 0; i < parts.size(); ++i) {
            mesh.materialIds.insert(mesh.materialIds.end(), extents[i].faceCount, parts[i].materialId);
        }
    }
    addNormals(parts, rule, mesh);
    addMaps(parts, extents, mesh);
    return mesh;
}

void includeVertices(const aiMesh& mesh, const SpaceRule& rule, host::Box3& box) {
    for (unsigned i = 0; hasVertices(mesh) && i < mesh.mNumVertices; ++i) {
        if (isFinite(mesh.mVertices[i])) box.Include(objectPoint(mesh.mVertices[i], rule));
    }
}

// Turns lists of library meshes into host meshes, and frees what no further list needs.
class Converter {
  public:
    Converter(aiScene& scene, const SourceFile& file, const SpaceRule& rule, Progress& progress,
              SceneLosses& losses)
        : scene_(scene),
          file_(file),
          rule_(rule),
          progress_(progress),
          losses_(losses),
          uses_(scene.mMeshes == nullptr ? 0 : scene.mNumMeshes) {}

    ConvertedMeshes convert(std::span<const FileNode> nodes) {
        for (std::uint32_t i = 0; i < nodes.size(); ++i)
            findList(*nodes[i].node, i);
        progress_.beginPhase("Converting meshes", facesToConvert());
        for (std::size_t i = 0; i < meshesOf_.size(); ++i) {
            const FileNode& node = nodes[result_.lists[i].instances.front()];
            convertList(meshesOf_[i], toUtf8(nodeName(node, file_)), result_.lists[i]);
        }
        return std::move(result_);
    }

  private:
    void findList(const aiNode& node, std::uint32_t index) {
        result_.listOfNode.emplace_back();
        if (node.mNumMeshes == 0 || node.mMeshes == nullptr) return;
        std::vector<unsigned> meshes(node.mMeshes, node.mMeshes + node.mNumMeshes);
        const auto [found, isNew] =
            known_.try_emplace(std::move(meshes), static_cast<std::uint32_t>(result_.lists.size()));
        if (isNew) {
            result_.lists.emplace_back();
            meshesOf_.push_back(&found->first);
            countUses(found->first);
        }
        result_.listOfNode.back() = found->second;
        result_.lists[found->second].instances.push_back(index);
    }

    void countUses(const std::vector<unsigned>& meshes) {
        for (const unsigned mesh : meshes) {
            if (mesh >= uses_.size() || scene_.mMeshes[mesh] == nullptr) {
                throw SceneError(file_.shown + ": cannot be read: a node of it holds mesh " +
                                 std::to_string(mesh) + ", which does not exist");
            }
            ++uses_[mesh];
        }
    }

    std::uint64_t facesToConvert() const {
        std::uint64_t faces = 0;
        for (const auto* list : meshesOf_) {
            for (const unsigned mesh : *list)
                faces += scene_.mMeshes[mesh]->mNumFaces;
        }
        return faces;
    }

    void convertList(const std::vector<unsigned>* meshes, const std::string& node, MeshList& list) {
        std::vector<Part> parts;
        std::map<unsigned, std::uint16_t> ids;
        Dropped dropped;
        for (const unsigned index : *meshes) {
            const aiMesh& mesh = *scene_.mMeshes[index];
            noteBeyondTriangles(mesh, dropped);
            Part part = trianglesOf(mesh, dropped);
            progress_.advance(mesh.mNumFaces);
            if (part.faces.empty()) continue;
            part.materialId = materialId(mesh.mMaterialIndex, ids, list, dropped);
            parts.push_back(std::move(part));
        }
        addLosses(dropped, !parts.empty(), node, losses_);
        list.hasLinesOrPoints = dropped.linesPoints != 0;
        if (!parts.empty()) {
            list.mesh = static_cast<SnapshotRef>(result_.meshes.size());
            result_.meshes.push_back(joined(parts, rule_));
        } else {
            for (const unsigned index : *meshes)
                includeVertices(*scene_.mMeshes[index], rule_, list.linesBox);
        }
        for (const unsigned index : *meshes)
            release(index);
    }

    // The ID of a material, in order of first use; materials beyond the last ID share it.
    static std::uint16_t materialId(unsigned material, std::map<unsigned, std::uint16_t>& ids, MeshList& list,
                                    Dropped& dropped) {
        constexpr std::size_t kLastId = 0xFFFF;
        const auto [id, isNew] =
            ids.try_emplace(material, static_cast<std::uint16_t>(std::min(ids.size(), kLastId)));
        if (!isNew) return id->second;
        if (list.materials.size() > kLastId) {
            ++dropped.materials;
        } else {
            list.materials.push_back(material);
        }
        return id->second;
    }

    void release(unsigned index) {
        if (--uses_[index] != 0) return;
        delete scene_.mMeshes[index];
        scene_.mMeshes[index] = nullptr;
    }

    aiScene& scene_;
    const SourceFile& file_;
    const SpaceRule& rule_;
    Progress& progress_;
    SceneLosses& losses_;
    ConvertedMeshes result_;
    std::map<std::vector<unsigned>, std::uint32_t> known_;
    std::vector<const std::vector<unsigned>*>
        meshesOf_;                     // of each list; the keys of known_ stay where they are
    std::vector<std::uint64_t> uses_;  // of each library mesh, by lists not yet converted
};

}  // namespace

ConvertedMeshes convertMeshes(aiScene& scene, std::span<const FileNode> nodes, const SourceFile& file,
                              const SpaceRule& rule, Progress& progress, SceneLosses& losses) {
    return Converter(scene, file, rule, progress, losses).convert(nodes);
}

}  // namespace velinor
