#include "tools/meshprocessor/surface.h"

#include <Eigen/Geometry>
#include <algorithm>
#include <limits>
#include <unsupported/Eigen/BVH>

#include "tools/meshprocessor/point_vector.h"

namespace velinor {
namespace {

using Vector = Eigen::Vector3f;
using Box = Eigen::AlignedBox3f;

struct Triangle {
    Vector a, b, c;

    Box box() const {
        Box box(a);
        box.extend(b);
        box.extend(c);
        return box;
    }
};

float squaredDistanceToSegment(const Vector& p, const Vector& a, const Vector& b) {
    const Vector ab = b - a;
    const float length = ab.squaredNorm();
    const float t = length > 0 ? std::clamp((p - a).dot(ab) / length, 0.0F, 1.0F) : 0.0F;
    return (p - (a + t * ab)).squaredNorm();
}

// The nearest point of a triangle is in its inside or on one of its sides.
float squaredDistance(const Vector& p, const Triangle& t) {
    const Vector normal = (t.b - t.a).cross(t.c - t.a);
    const float sides =
        std::min({squaredDistanceToSegment(p, t.a, t.b), squaredDistanceToSegment(p, t.b, t.c),
                  squaredDistanceToSegment(p, t.c, t.a)});
    const bool isAbove = normal.dot((t.b - t.a).cross(p - t.a)) > 0 &&
                         normal.dot((t.c - t.b).cross(p - t.b)) > 0 &&
                         normal.dot((t.a - t.c).cross(p - t.c)) > 0;
    if (!isAbove) return sides;
    const float height = normal.dot(p - t.a);
    return std::min(sides, height * height / normal.squaredNorm());
}

// A direction that no model is aligned with.
const Vector& rayDirection() {
    static const Vector direction = Vector(0.537742F, 0.291167F, 0.791264F).normalized();
    return direction;
}

// How a ray from `p` passes the triangle: 1 out of the front, -1 into it, 0 not at all.
int crossing(const Vector& p, const Triangle& t) {
    const Eigen::Vector3d d = rayDirection().cast<double>();
    const Eigen::Vector3d a = (t.a - p).cast<double>();
    const Eigen::Vector3d b = (t.b - p).cast<double>();
    const Eigen::Vector3d c = (t.c - p).cast<double>();
    const double ab = d.dot(a.cross(b));
    const double bc = d.dot(b.cross(c));
    const double ca = d.dot(c.cross(a));
    const bool isFront = ab >= 0 && bc >= 0 && ca >= 0;
    const bool isBack = ab <= 0 && bc <= 0 && ca <= 0;
    if (isFront == isBack) return 0;
    const Eigen::Vector3d normal = (b - a).cross(c - a);
    const double along = a.dot(normal) / d.dot(normal);
    if (!(along > 0)) return 0;
    return isFront ? 1 : -1;
}

bool isHitByRay(const Vector& p, const Box& box) {
    const Vector& d = rayDirection();  // all positive
    const Vector in = (box.min() - p).cwiseQuotient(d);
    const Vector out = (box.max() - p).cwiseQuotient(d);
    constexpr float kSlack = 1e-5F;
    return std::max(in.maxCoeff(), 0.0F) <= out.minCoeff() + kSlack;
}

}  // namespace

struct Surface::Tree {
    using Bvh = Eigen::KdBVH<float, 3, std::uint32_t>;

    std::span<const Point> points;
    Faces faces;
    Bvh bvh;

    Triangle triangle(std::uint32_t face) const {
        const auto& [a, b, c] = faces[face];
        return {vectorOf(points[a]), vectorOf(points[b]), vectorOf(points[c])};
    }

    struct Nearest {
        using Scalar = float;
        const Tree& tree;
        Vector point;
        float minimumOnVolume(const Box& box) const { return box.squaredExteriorDistance(point); }
        float minimumOnObject(std::uint32_t face) const {
            return squaredDistance(point, tree.triangle(face));
        }
    };
    struct Within {
        const Tree& tree;
        Vector point;
        float limit;  // squared
        bool isFound = false;
        bool intersectVolume(const Box& box) const { return box.squaredExteriorDistance(point) <= limit; }
        bool intersectObject(std::uint32_t face) {
            isFound = squaredDistance(point, tree.triangle(face)) <= limit;
            return isFound;
        }
    };
    struct Crossings {
        const Tree& tree;
        Vector point;
        int sum = 0;
        bool intersectVolume(const Box& box) const { return isHitByRay(point, box); }
        bool intersectObject(std::uint32_t face) {
            sum += crossing(point, tree.triangle(face));
            return false;
        }
    };
};

Surface::Surface(std::span<const Point> points, const Faces& faces) {
    auto tree = std::make_unique<Tree>();
    tree->points = points;
    tree->faces = faces;
    std::vector<std::uint32_t> numbers;
    std::vector<Box> boxes;
    numbers.reserve(faces.size());
    boxes.reserve(faces.size());
    for (std::uint32_t i = 0; i < faces.size(); ++i) {
        numbers.push_back(i);
        boxes.push_back(tree->triangle(i).box());
    }
    tree->bvh.init(numbers.begin(), numbers.end(), boxes.begin(), boxes.end());
    tree_ = std::move(tree);
}

Surface::~Surface() = default;

float Surface::distance(const Point& point) const {
    if (tree_->faces.empty()) return std::numeric_limits<float>::infinity();
    Tree::Nearest nearest{*tree_, vectorOf(point)};
    return std::sqrt(Eigen::BVMinimize(tree_->bvh, nearest));
}

bool Surface::isWithin(const Point& point, float limit) const {
    Tree::Within within{*tree_, vectorOf(point), limit * limit};
    Eigen::BVIntersect(tree_->bvh, within);
    return within.isFound;
}

bool Surface::contains(const Point& point) const {
    Tree::Crossings crossings{*tree_, vectorOf(point)};
    Eigen::BVIntersect(tree_->bvh, crossings);
    return crossings.sum > 0;
}

}  // namespace velinor
