#include "tools/ogre/mesh_binary.h"

#include <algorithm>
#include <cmath>
#include <cstring>

// The file, little-endian; a text ends with a line feed:
//
//     u16 0x1000, text "[MeshSerializer_v1.100]", then one chunk 0x3000
//
// A chunk is u16 id, u32 length with these six bytes counted, content:
//
//     3000 mesh         flag skeletal, chunks
//       5000 geometry     u32 vertex count, chunks
//         5100 layout       chunks 5110: u16 buffer, type, meaning, offset, index
//         5200 buffer       u16 number, u16 bytes a vertex, chunk 5210: the vertices
//       4000 submesh      text material, flag shared, u32 index count, flag 32-bit, indices, chunks
//         4010 operation    u16, 4 is a triangle list
//       9000 bounds       f32 minimum x y z, maximum x y z, radius
//       A000 names        chunks A100: u16 submesh, text name
namespace velinor {
namespace {

constexpr std::uint16_t kFileHeader = 0x1000;
constexpr std::string_view kVersion = "[MeshSerializer_v1.100]";

enum ChunkId : std::uint16_t {
    kMeshChunk = 0x3000,
    kSubmeshChunk = 0x4000,
    kOperationChunk = 0x4010,
    kGeometryChunk = 0x5000,
    kLayoutChunk = 0x5100,
    kElementChunk = 0x5110,
    kBufferChunk = 0x5200,
    kBufferDataChunk = 0x5210,
    kBoundsChunk = 0x9000,
    kNamesChunk = 0xA000,
    kNameChunk = 0xA100,
};

constexpr std::uint16_t kTriangleList = 4;
constexpr std::uint16_t kPositionMeaning = 1;
constexpr std::uint16_t kFloat3 = 2;

std::string hex(std::uint16_t id) {
    std::string text = "0x0000";
    for (std::size_t digit = 0; digit < 4; ++digit)
        text[5 - digit] = "0123456789ABCDEF"[(id >> (4 * digit)) & 0xFU];
    return text;
}

struct Chunk {
    std::uint16_t id = 0;
    ByteCursor content;
};

Chunk takeChunk(ByteCursor& cursor) {
    constexpr std::uint32_t kHeader = 6;
    const std::size_t at = cursor.offset();
    const auto id = cursor.number<std::uint16_t>("a chunk");
    const auto length = cursor.number<std::uint32_t>("a chunk");
    if (length < kHeader)
        throw ByteFault("the chunk " + hex(id) + " at byte " + std::to_string(at) +
                        " is shorter than its header");
    const std::size_t offset = cursor.offset();
    return {id, ByteCursor(cursor.take(length - kHeader, ("the chunk " + hex(id)).c_str()), offset)};
}

[[noreturn]] void failUnexpected(const Chunk& chunk, const char* place) {
    throw ByteFault("the chunk " + hex(chunk.id) + " before byte " + std::to_string(chunk.content.offset()) +
                    " has no place in " + place);
}

void expectEnd(const ByteCursor& cursor, const char* what) {
    if (cursor.left() == 0) return;
    throw ByteFault(std::string(what) + " has " + std::to_string(cursor.left()) + " bytes too many at byte " +
                    std::to_string(cursor.offset()));
}

// Bytes of a vertex element by its type: one to four floats, then whole colours.
std::uint32_t elementSize(std::uint16_t type) {
    if (type < 4) return 4U * (type + 1U);
    constexpr std::array<std::uint16_t, 5> kColours{4, 9, 10, 11, 30};
    if (std::ranges::find(kColours, type) != kColours.end()) return 4;
    throw ByteFault("a vertex element has the unknown type " + std::to_string(type));
}

struct Element {
    std::uint16_t buffer = 0;
    std::uint16_t type = 0;
    std::uint16_t meaning = 0;
    std::uint16_t offset = 0;
};

std::vector<Element> readLayout(ByteCursor layout) {
    std::vector<Element> elements;
    while (layout.left() > 0) {
        Chunk chunk = takeChunk(layout);
        if (chunk.id != kElementChunk) failUnexpected(chunk, "a vertex layout");
        Element element;
        element.buffer = chunk.content.number<std::uint16_t>("an element's buffer");
        element.type = chunk.content.number<std::uint16_t>("an element's type");
        element.meaning = chunk.content.number<std::uint16_t>("an element's meaning");
        element.offset = chunk.content.number<std::uint16_t>("an element's offset");
        chunk.content.number<std::uint16_t>("an element's index");
        expectEnd(chunk.content, "a vertex element");
        elements.push_back(element);
    }
    return elements;
}

void readBuffer(ByteCursor buffer, MeshBinary& mesh) {
    const auto number = buffer.number<std::uint16_t>("a buffer's number");
    if (number != 0 || mesh.stride != 0) throw ByteFault("the vertices stand in more than one buffer");
    mesh.stride = buffer.number<std::uint16_t>("a buffer's vertex size");
    const Chunk data = takeChunk(buffer);
    if (data.id != kBufferDataChunk) failUnexpected(data, "a vertex buffer");
    expectEnd(buffer, "a vertex buffer");
    const std::uint64_t expected = std::uint64_t{mesh.vertexCount} * mesh.stride;
    if (data.content.left() != expected) {
        throw ByteFault("the vertex buffer has " + std::to_string(data.content.left()) + " bytes, not " +
                        std::to_string(expected) + " for " + std::to_string(mesh.vertexCount) +
                        " vertices of " + std::to_string(mesh.stride) + " bytes");
    }
    mesh.vertices = ByteCursor(data.content).take(expected, "the vertices");
}

void placeElements(const std::vector<Element>& elements, MeshBinary& mesh) {
    for (const Element& element : elements) {
        if (element.buffer != 0 || element.offset + elementSize(element.type) > mesh.stride)
            throw ByteFault("a vertex element lies outside its vertex");
        if (element.meaning != kPositionMeaning) continue;
        if (element.type != kFloat3 || mesh.hasPositions)
            throw ByteFault("a vertex has no single position of 3 floats");
        mesh.hasPositions = true;
        mesh.positionOffset = element.offset;
    }
}

void readGeometry(ByteCursor geometry, MeshBinary& mesh) {
    mesh.vertexCount = geometry.number<std::uint32_t>("the vertex count");
    std::vector<Element> elements;
    while (geometry.left() > 0) {
        const Chunk chunk = takeChunk(geometry);
        if (chunk.id == kLayoutChunk) {
            elements = readLayout(chunk.content);
        } else if (chunk.id == kBufferChunk) {
            readBuffer(chunk.content, mesh);
        } else {
            failUnexpected(chunk, "the vertices");
        }
    }
    placeElements(elements, mesh);
}

MeshBinarySubmesh readSubmesh(ByteCursor content) {
    MeshBinarySubmesh submesh;
    submesh.material = content.line("a submesh's material");
    submesh.hasOwnVertices = !content.flag("a submesh's flag for shared vertices");
    if (submesh.hasOwnVertices) throw ByteFault("a submesh has vertices of its own");
    const auto count = content.number<std::uint32_t>("a submesh's index count");
    submesh.isWide = content.flag("a submesh's flag for wide indices");
    submesh.indices = content.take(std::uint64_t{count} * (submesh.isWide ? 4 : 2), "a submesh's indices");
    while (content.left() > 0) {
        Chunk chunk = takeChunk(content);
        if (chunk.id != kOperationChunk) failUnexpected(chunk, "a submesh");
        submesh.isTriangleList =
            chunk.content.number<std::uint16_t>("a submesh's operation") == kTriangleList;
        expectEnd(chunk.content, "a submesh's operation");
    }
    return submesh;
}

void readBounds(ByteCursor content, MeshBinary& mesh) {
    MeshBounds bounds;
    for (float& value : bounds.min)
        value = content.number<float>("the bounds");
    for (float& value : bounds.max)
        value = content.number<float>("the bounds");
    mesh.radius = content.number<float>("the bounds");
    expectEnd(content, "the chunk of the bounds");
    mesh.bounds = bounds;
}

// Names of submeshes lead nowhere in packages: their numbers are material IDs. Only their form is looked at.
void readNames(ByteCursor content) {
    while (content.left() > 0) {
        Chunk chunk = takeChunk(content);
        if (chunk.id != kNameChunk) failUnexpected(chunk, "the submesh names");
        chunk.content.number<std::uint16_t>("a submesh name's number");
        chunk.content.line("a submesh name");
        expectEnd(chunk.content, "a submesh name");
    }
}

void readMesh(ByteCursor content, MeshBinary& mesh) {
    if (content.flag("the flag for skeletons")) throw ByteFault("the mesh has a skeleton");
    bool hasGeometry = false;
    while (content.left() > 0) {
        const Chunk chunk = takeChunk(content);
        switch (chunk.id) {
            case kGeometryChunk:
                if (hasGeometry) throw ByteFault("the mesh has two lists of shared vertices");
                hasGeometry = true;
                readGeometry(chunk.content, mesh);
                break;
            case kSubmeshChunk:
                mesh.submeshes.push_back(readSubmesh(chunk.content));
                break;
            case kBoundsChunk:
                readBounds(chunk.content, mesh);
                break;
            case kNamesChunk:
                readNames(chunk.content);
                break;
            default:
                failUnexpected(chunk, "a mesh");
        }
    }
}

bool isFinite(const MeshBounds& bounds) {
    const auto finite = [](float value) { return std::isfinite(value); };
    return std::ranges::all_of(bounds.min, finite) && std::ranges::all_of(bounds.max, finite);
}

bool hasFinitePositions(const MeshBinary& mesh) {
    for (std::uint32_t vertex = 0; mesh.hasPositions && vertex < mesh.vertexCount; ++vertex) {
        if (!std::ranges::all_of(mesh.position(vertex), [](float value) { return std::isfinite(value); }))
            return false;
    }
    return true;
}

std::string textOf(const MeshBounds& bounds) {
    const auto point = [](const std::array<float, 3>& p) {
        return "(" + std::to_string(p[0]) + ", " + std::to_string(p[1]) + ", " + std::to_string(p[2]) + ")";
    };
    return point(bounds.min) + " to " + point(bounds.max);
}

// Why the stated bounds are wrong; nothing where they are not.
std::optional<std::string> boundsFault(const MeshBinary& mesh) {
    if (!mesh.bounds) return "the mesh has no bounds";
    if (!isFinite(*mesh.bounds) || !std::isfinite(mesh.radius)) return "the bounds are not finite";
    if (!hasFinitePositions(mesh)) return "a position is not finite";
    const auto actual = boundsOfPositions(mesh);
    if (!actual || *actual == *mesh.bounds) return std::nullopt;
    return "the bounds are stated as " + textOf(*mesh.bounds) + " but the positions reach from " +
           textOf(*actual);
}

void checkSubmesh(const MeshBinary& mesh, std::size_t number, std::vector<std::string>& faults) {
    const MeshBinarySubmesh& submesh = mesh.submeshes[number];
    const std::string name = "submesh " + std::to_string(number);
    if (submesh.material.empty()) faults.push_back(name + " has no material name");
    if (!submesh.isTriangleList || submesh.indexCount() % 3 != 0)
        faults.push_back(name + " is no list of triangles");
    if (submesh.indexCount() == 0) faults.push_back(name + " has no triangles");
    std::uint32_t highest = 0;
    for (std::uint64_t i = 0; i < submesh.indexCount(); ++i)
        highest = std::max(highest, submesh.index(i));
    if (submesh.indexCount() > 0 && highest >= mesh.vertexCount) {
        faults.push_back(name + " refers to vertex " + std::to_string(highest) + " of " +
                         std::to_string(mesh.vertexCount));
    }
}

}  // namespace

std::uint32_t MeshBinarySubmesh::index(std::uint64_t at) const {
    if (isWide) return ByteCursor(indices.substr(4 * at)).number<std::uint32_t>("an index");
    return ByteCursor(indices.substr(2 * at)).number<std::uint16_t>("an index");
}

std::array<float, 3> MeshBinary::position(std::uint32_t vertex) const {
    std::array<float, 3> position{};
    std::memcpy(position.data(), vertices.data() + std::size_t{vertex} * stride + positionOffset,
                sizeof position);
    return position;
}

MeshBinary readMeshBinary(std::string_view bytes) {
    if (bytes.empty()) throw ByteFault("the file is empty");
    ByteCursor cursor(bytes);
    if (cursor.number<std::uint16_t>("the header") != kFileHeader)
        throw ByteFault("the file is no binary mesh");
    const std::string_view version = cursor.line("the version");
    if (version != kVersion) {
        throw ByteFault("the version is \"" + std::string(version.substr(0, 80)) + "\", not \"" +
                        std::string(kVersion) + "\"");
    }
    const Chunk chunk = takeChunk(cursor);
    if (chunk.id != kMeshChunk) failUnexpected(chunk, "the file");
    expectEnd(cursor, "the file");
    MeshBinary mesh;
    readMesh(chunk.content, mesh);
    return mesh;
}

std::optional<MeshBounds> boundsOfPositions(const MeshBinary& mesh) {
    if (!mesh.hasPositions || mesh.vertexCount == 0) return std::nullopt;
    MeshBounds bounds{mesh.position(0), mesh.position(0)};
    for (std::uint32_t vertex = 0; vertex < mesh.vertexCount; ++vertex) {
        const auto position = mesh.position(vertex);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            bounds.min[axis] = std::min(bounds.min[axis], position[axis]);
            bounds.max[axis] = std::max(bounds.max[axis], position[axis]);
        }
    }
    return bounds;
}

std::vector<std::string> meshFaults(const MeshBinary& mesh) {
    std::vector<std::string> faults;
    if (mesh.vertexCount == 0) faults.emplace_back("the mesh has no vertices");
    if (mesh.vertexCount > 0 && !mesh.hasPositions) faults.emplace_back("the vertices have no positions");
    if (mesh.submeshes.empty()) faults.emplace_back("the mesh has no triangles");
    for (std::size_t i = 0; i < mesh.submeshes.size(); ++i)
        checkSubmesh(mesh, i, faults);
    if (const auto fault = boundsFault(mesh)) faults.push_back(*fault);
    return faults;
}

}  // namespace velinor
