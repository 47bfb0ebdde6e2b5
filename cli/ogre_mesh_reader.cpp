#include "cli/ogre_mesh_reader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <map>
#include <optional>

// Numbers are little-endian, texts end with a line feed, flags are bytes. A chunk is u16 id, u32 length with
// these six bytes counted, content.
//
//   u16 0x1000, text version, then one chunk:
//   0x3000 mesh               flag skeletal
//     0x5000 geometry         u32 vertices; once, for the submeshes that share it
//       0x5100 declaration
//         0x5110 element      u16 buffer, type, meaning, offset in the vertex, index
//       0x5200 buffer         u16 number, u16 bytes a vertex
//         0x5210 data
//     0x4000 submesh          text material, flag shared, u32 indices, flag 32-bit, the indices
//       0x5000 geometry       where it shares none
//       0x4010 operation      u16, 4 for triangles
//     0x9000 bounds           float minimum[3], maximum[3], radius
//     0xA000 names
//       0xA100 name           u16 submesh, text

namespace velinor {
namespace {

enum Chunk : std::uint16_t {
    kFileHeader = 0x1000,
    kMesh = 0x3000,
    kSubmesh = 0x4000,
    kOperation = 0x4010,
    kGeometry = 0x5000,
    kDeclaration = 0x5100,
    kElement = 0x5110,
    kBuffer = 0x5200,
    kBufferData = 0x5210,
    kBounds = 0x9000,
    kNames = 0xA000,
    kName = 0xA100,
};

// Chunks that other converters write and that say nothing of the triangles: skeleton and bones, levels of
// detail, edge lists, poses, animations, extremes; and of a submesh: bones, texture aliases.
constexpr std::uint16_t kSkippedInMesh[] = {0x6000, 0x7000, 0x8000, 0xB000, 0xC000, 0xD000, 0xE000};
constexpr std::uint16_t kSkippedInSubmesh[] = {0x4100, 0x4200};

constexpr std::uint16_t kTriangleList = 4;
constexpr std::uint16_t kPosition = 1;
constexpr std::uint16_t kFloat3 = 2;

constexpr std::string_view kVersions[] = {"[MeshSerializer_v1.100]", "[MeshSerializer_v1.8]"};

struct TypeSize {
    std::uint16_t type;
    std::uint16_t bytes;
};
constexpr TypeSize kTypeSizes[] = {
    {0, 4}, {1, 8},  {2, 12}, {3, 16},  // 1 to 4 floats
    {4, 4}, {10, 4}, {11, 4},           // colours
    {6, 4}, {8, 8},  {9, 4},  {30, 4},  // 2 and 4 shorts, 4 bytes, 4 normalised bytes
};

std::string hex(std::uint16_t id) {
    char text[8];
    std::snprintf(text, sizeof(text), "0x%04X", static_cast<unsigned>(id));
    return text;
}

// A part of the file that is read from its start to its end.
class Cursor {
  public:
    Cursor(std::string_view bytes, std::size_t start) : bytes_(bytes), start_(start) {}

    bool isAtEnd() const { return at_ == bytes_.size(); }
    std::size_t left() const { return bytes_.size() - at_; }
    std::size_t offset() const { return start_ + at_; }  // in the file

    [[noreturn]] void fail(const std::string& text) const {
        throw OgreMeshError("at byte " + std::to_string(offset()) + ": " + text);
    }

    std::string_view take(std::uint64_t size, const char* what) {
        if (size > left()) {
            fail(std::string(what) + " needs " + std::to_string(size) + " bytes, " + std::to_string(left()) +
                 " are left");
        }
        const std::string_view taken = bytes_.substr(at_, static_cast<std::size_t>(size));
        at_ += taken.size();
        return taken;
    }

    std::uint32_t number(std::size_t size, const char* what) {
        return littleEndian(take(size, what), 0, size);
    }
    std::uint16_t u16(const char* what) { return static_cast<std::uint16_t>(number(2, what)); }
    std::uint32_t u32(const char* what) { return number(4, what); }

    bool flag(const char* what) {
        const std::uint32_t value = number(1, what);
        if (value > 1) fail(std::string(what) + " is " + std::to_string(value) + ", not 0 or 1");
        return value == 1;
    }

    std::string_view text(const char* what) {
        const std::size_t end = bytes_.find('\n', at_);
        if (end == std::string_view::npos) fail(std::string(what) + " has no end");
        const std::string_view found = bytes_.substr(at_, end - at_);
        at_ = end + 1;
        return found;
    }

    // The content of the next chunk, and its id.
    Cursor chunk(std::uint16_t& id) {
        id = u16("a chunk");
        const std::uint32_t size = u32("a chunk");
        if (size < 6) fail("chunk " + hex(id) + " says it has " + std::to_string(size) + " bytes");
        const std::size_t start = offset();
        return {take(size - 6, ("chunk " + hex(id)).c_str()), start};
    }

    void expectEnd(const char* what) const {
        if (!isAtEnd()) fail(std::to_string(left()) + " bytes too many in " + what);
    }

    static std::uint32_t littleEndian(std::string_view bytes, std::size_t at, std::size_t size) {
        std::uint32_t value = 0;
        for (std::size_t i = size; i-- > 0;)
            value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
        return value;
    }
    static float floatAt(std::string_view bytes, std::size_t at) {
        return std::bit_cast<float>(littleEndian(bytes, at, 4));
    }

  private:
    std::string_view bytes_;
    std::size_t start_;  // of bytes_ in the file
    std::size_t at_ = 0;
};

struct Bounds {
    std::array<float, 3> minimum;
    std::array<float, 3> maximum;

    void include(const Bounds& other) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            minimum[axis] = std::min(minimum[axis], other.minimum[axis]);
            maximum[axis] = std::max(maximum[axis], other.maximum[axis]);
        }
    }
};

struct Element {
    std::uint16_t buffer = 0;
    std::uint16_t type = 0;
    std::uint16_t meaning = 0;
    std::uint16_t offset = 0;
    std::uint16_t size = 0;
};

struct Geometry {
    std::uint32_t vertices = 0;
    std::optional<Bounds> bounds;  // none without vertices
};

Element readElement(Cursor& cursor) {
    Element element;
    element.buffer = cursor.u16("a vertex element");
    element.type = cursor.u16("a vertex element");
    element.meaning = cursor.u16("a vertex element");
    element.offset = cursor.u16("a vertex element");
    cursor.u16("a vertex element");  // which of several texture coordinates
    cursor.expectEnd("a vertex element");
    const auto* type = std::ranges::find(kTypeSizes, element.type, &TypeSize::type);
    if (type == std::end(kTypeSizes)) {
        cursor.fail("a vertex element has the unknown type " + std::to_string(element.type));
    }
    element.size = type->bytes;
    return element;
}

// Reads one geometry.
class GeometryReader {
  public:
    Geometry read(Cursor& cursor) {
        geometry_.vertices = cursor.u32("the number of vertices");
        while (!cursor.isAtEnd()) {
            std::uint16_t id = 0;
            Cursor content = cursor.chunk(id);
            if (id == kDeclaration) {
                readDeclaration(content);
            } else if (id == kBuffer) {
                readBuffer(content);
            } else {
                cursor.fail("chunk " + hex(id) + " has no place in a geometry");
            }
        }
        for (const Element& element : elements_)
            useElement(element, cursor);
        if (geometry_.vertices > 0 && !geometry_.bounds) cursor.fail("the vertices have no positions");
        return geometry_;
    }

  private:
    struct Buffer {
        std::size_t stride;
        std::string_view data;
    };

    void readDeclaration(Cursor& cursor) {
        while (!cursor.isAtEnd()) {
            std::uint16_t id = 0;
            Cursor content = cursor.chunk(id);
            if (id != kElement) cursor.fail("chunk " + hex(id) + " has no place in a vertex declaration");
            elements_.push_back(readElement(content));
        }
    }

    void readBuffer(Cursor& cursor) {
        const std::uint16_t number = cursor.u16("a vertex buffer");
        const std::uint16_t stride = cursor.u16("a vertex buffer");
        std::uint16_t id = 0;
        Cursor data = cursor.chunk(id);
        if (id != kBufferData) cursor.fail("chunk " + hex(id) + " has no place in a vertex buffer");
        cursor.expectEnd("a vertex buffer");
        if (data.left() != std::uint64_t{geometry_.vertices} * stride) {
            data.fail("a vertex buffer has " + std::to_string(data.left()) + " bytes for " +
                      std::to_string(geometry_.vertices) + " vertices of " + std::to_string(stride));
        }
        const auto [at, isNew] = buffers_.insert({number, {stride, data.take(data.left(), "the vertices")}});
        if (!isNew) cursor.fail("there are two vertex buffers " + std::to_string(number));
    }

    void useElement(const Element& element, const Cursor& cursor) {
        const auto buffer = buffers_.find(element.buffer);
        if (buffer == buffers_.end()) {
            cursor.fail("there is no vertex buffer " + std::to_string(element.buffer));
        }
        if (std::size_t{element.offset} + element.size > buffer->second.stride) {
            cursor.fail("a vertex element lies outside of its vertex");
        }
        if (element.meaning != kPosition) return;
        if (element.type != kFloat3) cursor.fail("positions are not three floats");
        if (geometry_.bounds || hasPositions_) cursor.fail("the vertices have two positions");
        hasPositions_ = true;
        for (std::uint32_t vertex = 0; vertex < geometry_.vertices; ++vertex)
            includePosition(buffer->second, vertex, element.offset, cursor);
    }

    void includePosition(const Buffer& buffer, std::uint32_t vertex, std::size_t offset,
                         const Cursor& cursor) {
        std::array<float, 3> position{};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            position[axis] = Cursor::floatAt(buffer.data, vertex * buffer.stride + offset + 4 * axis);
            if (!std::isfinite(position[axis])) {
                cursor.fail("the position of vertex " + std::to_string(vertex) + " is not finite");
            }
        }
        const Bounds point{position, position};
        if (geometry_.bounds) {
            geometry_.bounds->include(point);
        } else {
            geometry_.bounds = point;
        }
    }

    Geometry geometry_;
    std::vector<Element> elements_;
    std::map<std::uint16_t, Buffer> buffers_;
    bool hasPositions_ = false;
};

// A submesh as read, before it is known what it refers to.
struct SubmeshRecord {
    OgreSubmesh submesh;
    bool isShared = false;
    std::uint32_t highestIndex = 0;
    std::optional<Geometry> geometry;
};

std::uint32_t highestIndex(std::string_view indices, std::size_t size) {
    std::uint32_t highest = 0;
    for (std::size_t at = 0; at < indices.size(); at += size)
        highest = std::max(highest, Cursor::littleEndian(indices, at, size));
    return highest;
}

// Reads the chunks of one mesh and, at its end, holds them against each other.
class MeshReader {
  public:
    OgreMesh read(Cursor& cursor) {
        cursor.flag("the flag for a skeleton");
        while (!cursor.isAtEnd())
            readChunk(cursor);
        for (std::size_t number = 0; number < submeshes_.size(); ++number)
            checkSubmesh(number, cursor);
        if (submeshes_.empty()) cursor.fail("the mesh has no submesh: it draws nothing");
        checkBounds(cursor);
        return finish();
    }

  private:
    void readChunk(Cursor& cursor) {
        std::uint16_t id = 0;
        Cursor content = cursor.chunk(id);
        switch (id) {
            case kGeometry:
                if (shared_) cursor.fail("there are two shared geometries");
                shared_ = GeometryReader().read(content);
                include(*shared_);
                break;
            case kSubmesh:
                readSubmesh(content);
                break;
            case kBounds:
                readBounds(content);
                break;
            case kNames:
                readNames(content);
                break;
            default:
                if (std::ranges::find(kSkippedInMesh, id) == std::end(kSkippedInMesh)) {
                    cursor.fail("chunk " + hex(id) + " has no place in a mesh");
                }
        }
    }

    void readSubmesh(Cursor& cursor) {
        SubmeshRecord record;
        record.submesh.material = cursor.text("the material of a submesh");
        record.isShared = cursor.flag("the flag for shared vertices");
        const std::uint32_t count = cursor.u32("the number of indices");
        const std::size_t size = cursor.flag("the flag for 32-bit indices") ? 4 : 2;
        if (count == 0 || count % 3 != 0) {
            cursor.fail("a submesh has " + std::to_string(count) +
                        " indices, three for each triangle are expected");
        }
        record.submesh.triangles = count / 3;
        record.highestIndex =
            highestIndex(cursor.take(std::uint64_t{count} * size, "the list of indices"), size);
        while (!cursor.isAtEnd())
            readSubmeshChunk(record, cursor);
        submeshes_.push_back(std::move(record));
    }

    void readSubmeshChunk(SubmeshRecord& record, Cursor& cursor) {
        std::uint16_t id = 0;
        Cursor content = cursor.chunk(id);
        if (id == kOperation) {
            const std::uint16_t operation = content.u16("the operation");
            content.expectEnd("the operation");
            if (operation != kTriangleList) {
                content.fail("the operation of a submesh is " + std::to_string(operation) +
                             ", not 4 for triangles");
            }
        } else if (id == kGeometry && !record.isShared && !record.geometry) {
            record.geometry = GeometryReader().read(content);
            include(*record.geometry);
        } else if (std::ranges::find(kSkippedInSubmesh, id) == std::end(kSkippedInSubmesh)) {
            cursor.fail("chunk " + hex(id) + " has no place in a submesh");
        }
    }

    void readBounds(Cursor& cursor) {
        if (bounds_) cursor.fail("there are two bounds");
        const std::string_view numbers = cursor.take(28, "the bounds");
        cursor.expectEnd("the bounds");
        std::array<float, 7> values{};
        for (std::size_t i = 0; i < values.size(); ++i) {
            values[i] = Cursor::floatAt(numbers, 4 * i);
            if (!std::isfinite(values[i])) cursor.fail("the bounds are not finite");
        }
        bounds_ = Bounds{{values[0], values[1], values[2]}, {values[3], values[4], values[5]}};
    }

    // Names may stand for any number: they count material IDs, which need no submesh.
    void readNames(Cursor& cursor) {
        while (!cursor.isAtEnd()) {
            std::uint16_t id = 0;
            Cursor content = cursor.chunk(id);
            if (id != kName) cursor.fail("chunk " + hex(id) + " has no place among the submesh names");
            content.u16("the number of a submesh name");
            content.text("a submesh name");
            content.expectEnd("a submesh name");
        }
    }

    void include(const Geometry& geometry) {
        vertices_ += geometry.vertices;
        if (!geometry.bounds) return;
        if (positions_) {
            positions_->include(*geometry.bounds);
        } else {
            positions_ = geometry.bounds;
        }
    }

    void checkSubmesh(std::size_t number, const Cursor& cursor) const {
        const SubmeshRecord& record = submeshes_[number];
        const std::string place = "submesh " + std::to_string(number);
        const std::optional<Geometry>& geometry = record.isShared ? shared_ : record.geometry;
        if (!geometry) cursor.fail(place + " has no vertices");
        if (record.highestIndex >= geometry->vertices) {
            cursor.fail(place + " has the index " + std::to_string(record.highestIndex) + ", there are " +
                        std::to_string(geometry->vertices) + " vertices");
        }
        if (record.submesh.material.empty()) cursor.fail(place + " has no material");
    }

    void checkBounds(const Cursor& cursor) const {
        if (!bounds_) cursor.fail("the mesh has no bounds");
        if (bounds_->minimum != positions_->minimum || bounds_->maximum != positions_->maximum) {
            cursor.fail("the bounds are not those of the positions");
        }
    }

    OgreMesh finish() {
        OgreMesh mesh{vertices_, {}, bounds_->minimum, bounds_->maximum};
        for (SubmeshRecord& record : submeshes_)
            mesh.submeshes.push_back(std::move(record.submesh));
        return mesh;
    }

    std::uint64_t vertices_ = 0;
    std::optional<Geometry> shared_;
    std::vector<SubmeshRecord> submeshes_;
    std::optional<Bounds> bounds_;     // as the file has them
    std::optional<Bounds> positions_;  // as they are
};

}  // namespace

OgreMesh readOgreMesh(std::string_view bytes) {
    if (bytes.empty())
        throw OgreMeshError("is empty: the converter makes such files of meshes without faces");
    Cursor file(bytes, 0);
    if (file.u16("the header") != kFileHeader) throw OgreMeshError("is no binary OGRE mesh");
    const std::string_view version = file.text("the version");
    if (std::ranges::find(kVersions, version) == std::end(kVersions)) {
        file.fail("the version is \"" + std::string(version.substr(0, 100)) + "\", \"" +
                  std::string(kVersions[0]) + "\" is expected");
    }
    std::uint16_t id = 0;
    Cursor content = file.chunk(id);
    if (id != kMesh) file.fail("chunk " + hex(id) + " where the mesh is expected");
    file.expectEnd("the file");
    return MeshReader().read(content);
}

}  // namespace velinor
