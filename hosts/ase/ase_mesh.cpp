#include "hosts/ase/ase_mesh.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

namespace velinor {
namespace {

using host::Point3;

// Things of a mesh by number, each of which has to be given once. The file says how many there are before it
// lists them.
template <class T>
class NumberedList {
  public:
    NumberedList(const char* what, const char* plural) : what_(what), plural_(plural) {}

    // Takes the number of items. One that the rest of the file has no room for, beside the `due` items of
    // other lists, is refused, so that damaged numbers do not cost memory.
    void promise(AseLexer& lexer, std::size_t& due) {
        constexpr std::size_t kBytesAnItem = 16;
        const std::size_t places = lexer.rest() / kBytesAnItem;
        const std::size_t room = places - std::min(places, due);
        count_ = static_cast<std::size_t>(lexer.integer(0, UINT32_MAX));
        place_ = lexer.place();
        if (isPromised_) lexer.refuse(place_, std::string("the number of ") + plural_ + " is there twice");
        isPromised_ = true;
        if (count_ > room) {
            lexer.refuse(place_, "the file promises " + std::to_string(count_) + " " + plural_ +
                                     " and has room for " + std::to_string(room) +
                                     " at most; it is damaged or cut off, so export it again");
        }
        due += count_;
    }

    // Takes the number of an item, which is then current(), and must not have been there before.
    void begin(AseLexer& lexer, std::size_t& due) {
        if (items_.size() != count_) {
            items_.resize(count_);
            isGiven_.resize(count_);
        }
        current_ = lexer.index(count_, what_);
        if (isGiven_[current_])
            lexer.refuse(lexer.place(),
                         std::string(what_) + " " + std::to_string(current_) + " is there twice");
        isGiven_[current_] = true;
        ++given_;
        --due;
    }

    T& current() { return items_[current_]; }
    bool hasCurrent() const { return given_ > 0; }
    std::size_t count() const { return count_; }
    std::size_t place() const { return place_; }
    std::vector<T> take() { return std::move(items_); }

    // All that was promised must have come.
    void finish(const AseLexer& lexer) const {
        if (given_ == count_) return;
        std::size_t missing = 0;
        while (missing < isGiven_.size() && isGiven_[missing])
            ++missing;
        lexer.refuse(place_, "the file promises " + std::to_string(count_) + " " + plural_ + " and lists " +
                                 std::to_string(given_) + "; " + what_ + " " + std::to_string(missing) +
                                 " is missing, so export the file again");
    }

  private:
    const char* what_;
    const char* plural_;
    std::size_t count_ = 0;
    std::size_t given_ = 0;
    std::size_t current_ = 0;
    bool isPromised_ = false;
    std::size_t place_ = 0;  // where the number of items stands
    std::vector<T> items_;
    std::vector<bool> isGiven_;
};

struct Face {
    FaceIndices vertices = {};
    std::uint32_t smoothing = 0;
    std::uint16_t materialId = 0;
};

struct MapChannel {
    NumberedList<Point3> vertices{"map vertex", "map vertices"};
    NumberedList<FaceIndices> faces{"map face", "map faces"};
};

bool isFinite(const Point3& p) {
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

Point3 anyPoint(AseLexer& lexer) {
    const float x = lexer.anyNumber();
    const float y = lexer.anyNumber();
    return {x, y, lexer.anyNumber()};
}

class MeshReader {
  public:
    MeshReader(AseLexer& lexer, AseNormals normals, AseProgress& progress)
        : lexer_(lexer), normals_(normals), progress_(progress) {}

    AseMesh read() {
        lexer_.enter("MESH");
        while (const auto keyword = lexer_.next())
            readPart(*keyword);
        finishLists();
        takeFaces();
        result_.mesh.vertices = vertices_.take();
        return std::move(result_);
    }

  private:
    void readPart(std::string_view keyword) {
        if (keyword == "MESH_NUMVERTEX") return vertices_.promise(lexer_, due_);
        if (keyword == "MESH_NUMFACES") return faces_.promise(lexer_, due_);
        if (keyword == "MESH_VERTEX_LIST") return readVertices();
        if (keyword == "MESH_FACE_LIST") return readFaces();
        if (keyword == "MESH_MAPPINGCHANNEL") return readChannel();
        if (keyword == "MESH_CVERTLIST") result_.hasVertexColours = true;
        if (keyword == "MESH_NORMALS" && normals_ == AseNormals::kept) return readFaceNormals();
        readChannelPart(keyword, channels_[1]);
    }

    // Reads the list of a block whose items all have the keyword `item`; `readItem` takes what follows the
    // number of the item.
    template <class T, class ReadItem>
    void readList(std::string_view block, std::string_view item, NumberedList<T>& list, ReadItem readItem) {
        lexer_.enter(block);
        while (const auto keyword = lexer_.next()) {
            if (*keyword != item) continue;
            list.begin(lexer_, due_);
            readItem(list.current());
            progress_.step();
        }
    }

    void readVertices() {
        readList("MESH_VERTEX_LIST", "MESH_VERTEX", vertices_,
                 [this](Point3& vertex) { vertex = anyPoint(lexer_); });
    }

    // What belongs to a face stands on its line, in keywords of its own.
    void readFaces() {
        lexer_.enter("MESH_FACE_LIST");
        while (const auto keyword = lexer_.next()) {
            if (*keyword == "MESH_FACE") {
                faces_.begin(lexer_, due_);
                readCorners(faces_.current().vertices);
                progress_.step();
            } else if (*keyword == "MESH_SMOOTHING" && faces_.hasCurrent()) {
                faces_.current().smoothing = lexer_.smoothingGroups();
            } else if (*keyword == "MESH_MTLID" && faces_.hasCurrent()) {
                faces_.current().materialId = static_cast<std::uint16_t>(lexer_.integer(0, UINT16_MAX));
            }
        }
    }

    void readCorners(FaceIndices& face) {
        for (std::size_t k = 0; k < 3; ++k) {
            lexer_.label("ABC"[k]);
            face[k] = lexer_.index(vertices_.count(), "vertex");
        }
    }

    void readChannel() {
        constexpr std::int64_t kLastChannel = 99;
        const auto number = static_cast<std::int32_t>(lexer_.integer(1, kLastChannel));
        if (number != 1 && channels_.contains(number))
            lexer_.refuse(lexer_.place(), "map channel " + std::to_string(number) + " is there twice");
        MapChannel& channel = channels_[number];
        lexer_.enter("MESH_MAPPINGCHANNEL");
        while (const auto keyword = lexer_.next())
            readChannelPart(*keyword, channel);
    }

    void readChannelPart(std::string_view keyword, MapChannel& channel) {
        if (keyword == "MESH_NUMTVERTEX") return channel.vertices.promise(lexer_, due_);
        if (keyword == "MESH_NUMTVFACES") return channel.faces.promise(lexer_, due_);
        if (keyword == "MESH_TVERTLIST") {
            return readList(keyword, "MESH_TVERT", channel.vertices,
                            [this](Point3& vertex) { vertex = anyPoint(lexer_); });
        }
        if (keyword != "MESH_TFACELIST") return;
        readList(keyword, "MESH_TFACE", channel.faces, [&](FaceIndices& face) {
            for (std::uint32_t& corner : face)
                corner = lexer_.index(channel.vertices.count(), "map vertex");
        });
    }

    // They are in the space of the node. Numbers of faces that there are not are passed over: nothing depends
    // on one face alone.
    void readFaceNormals() {
        lexer_.enter("MESH_NORMALS");
        result_.faceNormals.resize(faces_.count());
        while (const auto keyword = lexer_.next()) {
            if (*keyword != "MESH_FACENORMAL") continue;
            const auto face = static_cast<std::size_t>(lexer_.integer(0, UINT32_MAX));
            const Point3 normal = anyPoint(lexer_);
            if (face < result_.faceNormals.size()) result_.faceNormals[face] = normal;
        }
    }

    void finishLists() {
        vertices_.finish(lexer_);
        faces_.finish(lexer_);
        for (const auto& [number, channel] : channels_) {
            channel.vertices.finish(lexer_);
            channel.faces.finish(lexer_);
            const std::size_t count = channel.faces.count();
            if (count == 0 || count == faces_.count()) continue;
            lexer_.refuse(channel.faces.place(), "map channel " + std::to_string(number) + " has " +
                                                     std::to_string(count) + " faces, and the mesh has " +
                                                     std::to_string(faces_.count()));
        }
    }

    void takeFaces() {
        const std::vector<Face> faces = faces_.take();
        SnapshotMesh& mesh = result_.mesh;
        mesh.faces.reserve(faces.size());
        mesh.smoothing.reserve(faces.size());
        mesh.materialIds.reserve(faces.size());
        for (const Face& face : faces) {
            mesh.faces.push_back(face.vertices);
            mesh.smoothing.push_back(face.smoothing);
            mesh.materialIds.push_back(face.materialId);
        }
        for (auto& [number, channel] : channels_) {
            if (channel.vertices.count() == 0) continue;
            SnapshotMapChannel& map = mesh.maps[number];
            map.vertices = channel.vertices.take();
            map.faces = channel.faces.take();
            for (Point3& vertex : map.vertices) {
                if (isFinite(vertex)) continue;
                vertex = {};
                ++result_.badMapVertices;
            }
        }
    }

    AseLexer& lexer_;
    AseNormals normals_;
    AseProgress& progress_;
    std::size_t due_ = 0;  // items that the lists promise and have not given yet
    NumberedList<Point3> vertices_{"vertex", "vertices"};
    NumberedList<Face> faces_{"face", "faces"};
    std::map<std::int32_t, MapChannel> channels_;
    AseMesh result_;
};

// In double precision, so that what the file's few digits hold is not lost once more.
void leaveWorld(std::vector<Point3>& vertices, const host::GMatrix& objectToWorld) {
    host::GMatrix turn = objectToWorld;
    turn[3] = {0, 0, 0, 1};
    const host::GMatrix back = turn.Inverse();
    const host::GMatrix::Row& origin = objectToWorld[3];
    for (Point3& vertex : vertices) {
        const double x = static_cast<double>(vertex.x) - origin[0];
        const double y = static_cast<double>(vertex.y) - origin[1];
        const double z = static_cast<double>(vertex.z) - origin[2];
        const auto along = [&](std::size_t axis) {
            return static_cast<float>(x * back[0][axis] + y * back[1][axis] + z * back[2][axis]);
        };
        vertex = {along(0), along(1), along(2)};
    }
}

// Twice the area of a face, along its normal, times `normal`.
double agreement(const SnapshotMesh& mesh, const FaceIndices& face, const Point3& normal) {
    const Point3& a = mesh.vertices[face[0]];
    const Point3& b = mesh.vertices[face[1]];
    const Point3& c = mesh.vertices[face[2]];
    const double u[3] = {double{b.x} - a.x, double{b.y} - a.y, double{b.z} - a.z};
    const double v[3] = {double{c.x} - b.x, double{c.y} - b.y, double{c.z} - b.z};
    return (u[1] * v[2] - u[2] * v[1]) * normal.x + (u[2] * v[0] - u[0] * v[2]) * normal.y +
           (u[0] * v[1] - u[1] * v[0]) * normal.z;
}

// Whether the faces oppose the normals: they have the say of their areas.
bool opposesNormals(const AseMesh& read) {
    double sum = 0;
    for (std::size_t f = 0; f < read.faceNormals.size(); ++f) {
        const double part = agreement(read.mesh, read.mesh.faces[f], read.faceNormals[f]);
        if (std::isfinite(part)) sum += part;
    }
    return sum < 0;
}

void turnFaces(SnapshotMesh& mesh) {
    const auto turn = [](std::vector<FaceIndices>& faces) {
        for (FaceIndices& face : faces)
            std::swap(face[1], face[2]);
    };
    turn(mesh.faces);
    for (auto& [number, channel] : mesh.maps)
        turn(channel.faces);
}

template <class T>
void keep(std::vector<T>& values, const std::vector<bool>& isKept) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (isKept[i]) values[kept++] = values[i];
    }
    values.resize(kept);
}

// Vertices that are no finite points become the node's origin, and the faces that use them go.
void dropBadFaces(AseMesh& read) {
    SnapshotMesh& mesh = read.mesh;
    std::vector<bool> isBad(mesh.vertices.size());
    for (std::size_t v = 0; v < mesh.vertices.size(); ++v) {
        isBad[v] = !isFinite(mesh.vertices[v]);
        if (!isBad[v]) continue;
        mesh.vertices[v] = {};
        ++read.badVertices;
    }
    if (read.badVertices == 0) return;
    std::vector<bool> isKept(mesh.faces.size());
    for (std::size_t f = 0; f < mesh.faces.size(); ++f) {
        const FaceIndices& face = mesh.faces[f];
        isKept[f] = !isBad[face[0]] && !isBad[face[1]] && !isBad[face[2]];
        read.lostFaces += isKept[f] ? 0U : 1U;
    }
    keep(mesh.faces, isKept);
    keep(mesh.smoothing, isKept);
    keep(mesh.materialIds, isKept);
    for (auto& [number, channel] : mesh.maps) {
        if (!channel.faces.empty()) keep(channel.faces, isKept);
    }
}

}  // namespace

AseMesh readAseMesh(AseLexer& lexer, AseNormals normals, AseProgress& progress) {
    return MeshReader(lexer, normals, progress).read();
}

void bringIntoNode(AseMesh& read, const host::GMatrix& objectToWorld) {
    leaveWorld(read.mesh.vertices, objectToWorld);
    // Writers differ in whether the corners of a mirrored node stand as in its object or as they are seen in
    // the world. The normals tell which.
    if (objectToWorld.IsMirrored() && opposesNormals(read)) {
        turnFaces(read.mesh);
        read.isTurned = true;
    }
    dropBadFaces(read);
}

}  // namespace velinor
