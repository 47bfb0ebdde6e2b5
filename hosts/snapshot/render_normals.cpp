#include "hosts/snapshot/render_normals.h"

#include <array>
#include <cmath>

namespace velinor {
namespace {

using host::Point3;
using host::RNormal;

struct Vector {
    double x = 0;
    double y = 0;
    double z = 0;
};

Vector toVector(const Point3& p) {
    return {p.x, p.y, p.z};
}
Vector operator+(const Vector& a, const Vector& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
Vector operator-(const Vector& a, const Vector& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
Vector operator*(const Vector& a, double f) {
    return {a.x * f, a.y * f, a.z * f};
}
double dot(const Vector& a, const Vector& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
double length(const Vector& a) {
    return std::sqrt(dot(a, a));
}

Vector cross(const Vector& a, const Vector& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

bool isZero(const Vector& a) {
    return a.x == 0 && a.y == 0 && a.z == 0;
}

// A length can be zero where the vector is not: squares of very short ones vanish.
Vector normalized(const Vector& a) {
    const double size = length(a);
    if (size > 0) return a * (1 / size);
    if (isZero(a)) return a;
    const Vector larger = a * 0x1p600;
    return larger * (1 / length(larger));
}

Point3 toPoint(const Vector& a) {
    return {static_cast<float>(a.x), static_cast<float>(a.y), static_cast<float>(a.z)};
}

std::array<Vector, 3> corners(const SnapshotMesh& mesh, std::size_t face) {
    const FaceIndices& v = mesh.faces[face];
    return {toVector(mesh.vertices[v[0]]), toVector(mesh.vertices[v[1]]), toVector(mesh.vertices[v[2]])};
}

Vector crossOf(const std::array<Vector, 3>& v) {
    return cross(v[1] - v[0], v[2] - v[1]);
}

// The angle between the two edges that meet in corner k.
double cornerAngle(const std::array<Vector, 3>& v, std::size_t k) {
    const Vector a = v[(k + 1) % 3] - v[k];
    const Vector b = v[(k + 2) % 3] - v[k];
    return std::atan2(length(cross(a, b)), dot(a, b));
}

// Collects each vertex's list of (sum, mask), all lists in one array.
class CornerSums {
  public:
    explicit CornerSums(std::size_t vertices) : first_(vertices, kNone) {}

    void addFaces(const SnapshotMesh& mesh) {
        for (std::size_t f = 0; f < mesh.smoothing.size(); ++f) {
            const std::uint32_t mask = mesh.smoothing[f];
            if (mask == 0) continue;
            const auto v = corners(mesh, f);
            const Vector product = crossOf(v);
            if (isZero(product)) continue;
            const Vector normal = normalized(product);
            for (std::size_t k = 0; k < 3; ++k)
                add(mesh.faces[f][k], normal * cornerAngle(v, k), mask);
        }
    }

    void appendNormals(std::size_t vertex, std::vector<RNormal>& normals) {
        std::array<Entry, kMostEntries> entries;  // filled below
        std::size_t count = 0;
        for (std::size_t e = first_[vertex]; e != kNone; e = entries_[e].next)
            entries[count++] = entries_[e];
        while (mergeOnePair(entries, count))
            --count;
        for (std::size_t i = 0; i < count; ++i) {
            normals.push_back({toPoint(normalized(entries[i].sum)), entries[i].mask});
        }
    }

  private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    static constexpr std::size_t kMostEntries = 32;  // each brings a bit that none before it has

    struct Entry {
        Vector sum;
        std::uint32_t mask = 0;
        std::size_t next = kNone;
    };

    void add(std::uint32_t vertex, const Vector& contribution, std::uint32_t mask) {
        std::size_t latest = kNone;
        for (std::size_t e = first_[vertex]; e != kNone; e = entries_[e].next) {
            if ((entries_[e].mask & mask) != 0) {
                entries_[e].sum = entries_[e].sum + contribution;
                entries_[e].mask |= mask;
                return;
            }
            latest = e;
        }
        (latest == kNone ? first_[vertex] : entries_[latest].next) = entries_.size();
        entries_.push_back({contribution, mask, kNone});
    }

    // Adds the later of the first two entries that share a bit to the earlier and removes it.
    static bool mergeOnePair(std::array<Entry, kMostEntries>& entries, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            for (std::size_t j = i + 1; j < count; ++j) {
                if ((entries[i].mask & entries[j].mask) == 0) continue;
                entries[i].sum = entries[i].sum + entries[j].sum;
                entries[i].mask |= entries[j].mask;
                for (std::size_t k = j + 1; k < count; ++k)
                    entries[k - 1] = entries[k];
                return true;
            }
        }
        return false;
    }

    std::vector<std::size_t> first_;
    std::vector<Entry> entries_;
};

// Where every vertex has its normals given, none is built.
bool needsCornerSums(const SnapshotMesh& mesh) {
    if (!mesh.specifiedNormals.empty()) return false;
    if (mesh.renderVertices.empty()) return true;
    for (const auto& vertex : mesh.renderVertices) {
        if (!vertex) return true;
    }
    return false;
}

}  // namespace

Point3 faceNormal(const SnapshotMesh& mesh, std::uint32_t face) {
    return toPoint(normalized(crossOf(corners(mesh, face))));
}

RenderNormals::RenderNormals(const SnapshotMesh& mesh) : isSpecified_(mesh.vertices.size()) {
    CornerSums sums(mesh.vertices.size());
    if (needsCornerSums(mesh)) sums.addFaces(mesh);
    starts_.reserve(mesh.vertices.size() + 1);
    for (std::size_t v = 0; v < mesh.vertices.size(); ++v) {
        starts_.push_back(normals_.size());
        const auto* given =
            mesh.renderVertices.empty() || !mesh.renderVertices[v] ? nullptr : &*mesh.renderVertices[v];
        if (given && std::holds_alternative<std::vector<RNormal>>(*given)) {
            const auto& normals = std::get<std::vector<RNormal>>(*given);
            normals_.insert(normals_.end(), normals.begin(), normals.end());
        } else if (given || !mesh.specifiedNormals.empty()) {
            normals_.push_back({given ? std::get<Point3>(*given) : mesh.specifiedNormals[v], 0});
            isSpecified_[v] = true;
        } else {
            sums.appendNormals(v, normals_);
        }
    }
    starts_.push_back(normals_.size());
}

}  // namespace velinor
