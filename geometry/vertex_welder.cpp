// The weld key is a plain sum of the coordinates, so on a regular grid the vertices of one key are as many as
// the grid's side is long, and a walk over them is quadratic in effect. What is the same lies close together,
// though: space is divided into cells, and only the vertices of the cells within the tolerance are looked at.
//
// A cell is a cell of position and normal. Floats beyond 1/8 in magnitude lie further apart than the
// tolerance, so there "within the tolerance" means "equal" and the number itself is the cell; below, cells
// are much wider than the tolerance, so that nearly always one is enough. Texture coordinates must be equal,
// and join the hash.
//
// A corner that equals a vertex of the list exactly needs no further search. No other vertex can match it:
// one that came earlier would have taken that vertex in, and one that came later would have been taken in by
// it. That is the case for most corners of most meshes.
//
// Coordinates that are infinite or no numbers match by other rules, since a difference that is no number is
// not greater than the tolerance. They are rare and go through lists by weld key and texture coordinates.
#include "geometry/vertex_welder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <unordered_map>

#include "geometry/weld_rule.h"

namespace velinor {
namespace {

constexpr float kExactBeyond = 0.125F;
constexpr double kCellsPerUnit = 0x1p22;
// Keeps cell numbers positive, so that conversion to an integer rounds down, and below those of larger
// numbers. The fraction keeps round numbers, zero above all, off the borders of cells.
constexpr double kCellOffset = 0x1p20 + 0.37;
constexpr double kReach = 1.1 * kWeldTolerance;  // sums are rounded, so a little more than the tolerance
constexpr std::size_t kDimensions = 6;

using Cell = std::array<std::uint32_t, kDimensions>;
using Coordinates = std::array<float, kDimensions>;

Coordinates coordinatesOf(const MeshVertex& vertex) {
    return {vertex.position.x, vertex.position.y, vertex.position.z,
            vertex.normal.x,   vertex.normal.y,   vertex.normal.z};
}

std::uint32_t nearCell(double coordinate) {
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(coordinate * kCellsPerUnit + kCellOffset));
}

std::uint32_t cellOf(float coordinate) {
    return std::fabs(coordinate) > kExactBeyond ? std::bit_cast<std::uint32_t>(coordinate)
                                                : nearCell(coordinate);
}

__extension__ using Product = unsigned __int128;

// Both halves of the product are needed: coordinates are often whole numbers, whose floats differ in high
// bits only.
std::uint64_t mix(std::uint64_t hash, std::uint64_t value) {
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15;  // 2^64 divided by the golden ratio
    const Product product = Product{hash ^ value} * kFactor;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
}

std::uint64_t joined(std::uint32_t a, std::uint32_t b) {
    return std::uint64_t{a} << 32U | b;
}

std::uint32_t bitsOf(float coordinate) {
    return std::bit_cast<std::uint32_t>(coordinate + 0.0F);  // the two zeros are equal
}

std::uint64_t hashOf(std::span<const TexCoord> texCoords) {
    std::uint64_t hash = 0;
    for (const TexCoord& texCoord : texCoords)
        hash = mix(hash, joined(bitsOf(texCoord.u), bitsOf(texCoord.v)));
    return hash;
}

std::uint32_t hashOf(const Cell& cell, std::uint64_t texCoordHash) {
    const std::uint64_t hash = mix(mix(mix(texCoordHash, joined(cell[0], cell[1])), joined(cell[2], cell[3])),
                                   joined(cell[4], cell[5]));
    return static_cast<std::uint32_t>(hash);
}

bool isFinite(const MeshVertex& vertex) {
    float zero = 0;
    for (const float coordinate : coordinatesOf(vertex))
        zero += coordinate * 0;  // not a number for what is not finite
    return zero == 0;
}

// Such a vertex is the same as none, not even as itself.
bool hasTexCoordNotANumber(const MeshVertex& vertex) {
    return std::ranges::any_of(vertex.texCoords, [](const TexCoord& t) { return t.u != t.u || t.v != t.v; });
}

bool isEqual(const MeshVertex& a, const MeshVertex& b) {
    return a.position == b.position && a.normal == b.normal && std::ranges::equal(a.texCoords, b.texCoords);
}

}  // namespace

// The vertices by weld key and texture coordinates, each list in the order of insertion.
class VertexWelder::NotFinite {
  public:
    explicit NotFinite(const VertexList& vertexList) : vertexList_(vertexList) {
        for (std::uint32_t i = 0; i < vertexList.size(); ++i) {
            if (!hasTexCoordNotANumber(vertexList[i])) all_[keyOf(vertexList[i])].push_back(i);
        }
    }

    void add(std::uint32_t vertex, bool isVertexFinite) {
        const std::uint64_t key = keyOf(vertexList_[vertex]);
        all_[key].push_back(vertex);
        if (!isVertexFinite) notFinite_[key].push_back(vertex);
    }

    std::uint32_t firstSame(const MeshVertex& corner, bool isCornerFinite) const {
        const Lists& lists = isCornerFinite ? notFinite_ : all_;
        const auto list = lists.find(keyOf(corner));
        if (list == lists.end()) return kNone;
        const auto found = std::ranges::find_if(list->second, [&](std::uint32_t vertex) {
            const MeshVertex candidate = vertexList_[vertex];
            return weldKey(candidate.position) == weldKey(corner.position) && isSameVertex(candidate, corner);
        });
        return found == list->second.end() ? kNone : *found;
    }

  private:
    using Lists =
        std::unordered_map<std::uint64_t, std::vector<std::uint32_t>>;  // only looked up, never walked

    static std::uint64_t keyOf(const MeshVertex& vertex) {
        return mix(hashOf(vertex.texCoords), static_cast<std::uint32_t>(weldKey(vertex.position)));
    }

    const VertexList& vertexList_;
    Lists all_;
    Lists notFinite_;
};

VertexWelder::VertexWelder(std::size_t texCoordsPerVertex, std::size_t expectedVertices)
    : vertexList_(texCoordsPerVertex),
      slots_(std::bit_ceil(std::max<std::size_t>(16, 2 * expectedVertices))) {}

VertexWelder::~VertexWelder() = default;

std::uint32_t VertexWelder::weld(const MeshVertex& corner) {
    if (hasTexCoordNotANumber(corner)) return vertexList_.append(corner);
    return isFinite(corner) ? weldFinite(corner) : weldNotFinite(corner);
}

std::uint32_t VertexWelder::weldFinite(const MeshVertex& corner) {
    const std::uint64_t texCoordHash = hashOf(corner.texCoords);
    const Coordinates coordinates = coordinatesOf(corner);
    Cell cell{};
    for (std::size_t i = 0; i < kDimensions; ++i)
        cell[i] = cellOf(coordinates[i]);
    const std::uint32_t hash = hashOf(cell, texCoordHash);

    std::uint32_t found = firstSameInCell(corner, hash);
    if (found != kNone && isEqual(vertexList_[found], corner)) return found;
    found = std::min(found, findInNeighbours(corner, texCoordHash));
    if (notFinite_) found = std::min(found, notFinite_->firstSame(corner, true));
    if (found != kNone) return found;

    const std::uint32_t vertex = vertexList_.append(corner);
    insert(hash, vertex);
    if (notFinite_) notFinite_->add(vertex, true);
    return vertex;
}

std::uint32_t VertexWelder::weldNotFinite(const MeshVertex& corner) {
    if (!notFinite_) notFinite_ = std::make_unique<NotFinite>(vertexList_);
    const std::uint32_t found = notFinite_->firstSame(corner, false);
    if (found != kNone) return found;
    const std::uint32_t vertex = vertexList_.append(corner);
    notFinite_->add(vertex, false);
    return vertex;
}

// Looks into the cells that the tolerance reaches besides the corner's own: at most one in each dimension.
std::uint32_t VertexWelder::findInNeighbours(const MeshVertex& corner, std::uint64_t texCoordHash) const {
    const Coordinates coordinates = coordinatesOf(corner);
    Cell own{};
    Cell other{};
    unsigned reached = 0;  // one bit a dimension
    for (std::size_t i = 0; i < kDimensions; ++i) {
        own[i] = cellOf(coordinates[i]);
        if (std::fabs(coordinates[i]) > kExactBeyond) continue;
        const std::uint32_t below = nearCell(coordinates[i] - kReach);
        const std::uint32_t above = nearCell(coordinates[i] + kReach);
        if (below == above) continue;
        other[i] = below == own[i] ? above : below;
        reached |= 1U << i;
    }
    std::uint32_t found = kNone;
    for (unsigned chosen = reached; chosen != 0; chosen = (chosen - 1) & reached) {
        Cell cell = own;
        for (std::size_t i = 0; i < kDimensions; ++i) {
            if ((chosen >> i & 1U) != 0) cell[i] = other[i];
        }
        found = std::min(found, firstSameInCell(corner, hashOf(cell, texCoordHash)));
    }
    return found;
}

// Vertices that share a hash without sharing the cell do no harm: they are compared like the others.
std::uint32_t VertexWelder::firstSameInCell(const MeshVertex& corner, std::uint32_t hash) const {
    const std::size_t mask = slots_.size() - 1;
    std::uint32_t found = kNone;
    for (std::size_t i = hash & mask; slots_[i].vertex != kNone; i = (i + 1) & mask) {
        if (slots_[i].hash != hash) continue;
        const std::uint32_t vertex = slots_[i].vertex;
        const MeshVertex candidate = vertexList_[vertex];
        if (isEqual(candidate, corner)) return vertex;
        if (vertex < found && isSameVertex(candidate, corner) &&
            weldKey(candidate.position) == weldKey(corner.position)) {
            found = vertex;
        }
    }
    return found;
}

void VertexWelder::insert(std::uint32_t hash, std::uint32_t vertex) {
    if (2 * ++used_ > slots_.size()) grow();
    const std::size_t mask = slots_.size() - 1;
    std::size_t i = hash & mask;
    while (slots_[i].vertex != kNone)
        i = (i + 1) & mask;
    slots_[i] = {hash, vertex};
}

void VertexWelder::grow() {
    std::vector<Slot> old(2 * slots_.size());
    old.swap(slots_);
    const std::size_t mask = slots_.size() - 1;
    for (const Slot& slot : old) {
        if (slot.vertex == kNone) continue;
        std::size_t i = slot.hash & mask;
        while (slots_[i].vertex != kNone)
            i = (i + 1) & mask;
        slots_[i] = slot;
    }
}

}  // namespace velinor
