// Meshes for tests, and what tests ask of shapes.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <string>
#include <vector>

#include "tools/meshprocessor/surface.h"
#include "tools/meshprocessor/triangle_mesh.h"

namespace velinor {

// What the rounding of the hull library leaves.
inline constexpr double kHullRounding = 3e-4;

// A box between two corners, twelve faces that look outward.
inline TriangleMesh boxMesh(Point low = {-0.5F, -0.5F, -0.5F}, Point high = {0.5F, 0.5F, 0.5F}) {
    TriangleMesh mesh;
    for (const float x : {low[0], high[0]}) {
        for (const float y : {low[1], high[1]}) {
            for (const float z : {low[2], high[2]})
                mesh.points.push_back({x, y, z});
        }
    }
    mesh.faces = {{0, 1, 3}, {0, 3, 2}, {4, 6, 7}, {4, 7, 5}, {0, 4, 5}, {0, 5, 1},
                  {2, 3, 7}, {2, 7, 6}, {0, 2, 6}, {0, 6, 4}, {1, 5, 7}, {1, 7, 3}};
    return mesh;
}

// A prism over the L of three unit squares.
inline TriangleMesh lShapeMesh() {
    TriangleMesh mesh;
    for (const float z : {0.0F, 1.0F}) {
        for (const auto& [x, y] : {std::pair{0, 0}, {2, 0}, {2, 1}, {1, 1}, {1, 2}, {0, 2}})
            mesh.points.push_back({static_cast<float>(x), static_cast<float>(y), z});
    }
    for (const Face& face : {Face{0, 1, 2}, {0, 2, 3}, {0, 3, 4}, {0, 4, 5}}) {
        mesh.faces.push_back({face[0], face[2], face[1]});
        mesh.faces.push_back({face[0] + 6, face[1] + 6, face[2] + 6});
    }
    for (std::uint32_t i = 0; i < 6; ++i) {
        const std::uint32_t next = (i + 1) % 6;
        mesh.faces.push_back({i, next, next + 6});
        mesh.faces.push_back({i, next + 6, i + 6});
    }
    return mesh;
}

// A grid of n by n squares over the unit square; `height(x, y)` lifts it.
template <class Height>
TriangleMesh gridMesh(std::uint32_t n, const Height& height) {
    TriangleMesh mesh;
    for (std::uint32_t i = 0; i <= n; ++i) {
        for (std::uint32_t k = 0; k <= n; ++k) {
            const float x = static_cast<float>(i) / static_cast<float>(n);
            const float y = static_cast<float>(k) / static_cast<float>(n);
            mesh.points.push_back({x, y, height(x, y)});
        }
    }
    for (std::uint32_t i = 0; i < n; ++i) {
        for (std::uint32_t k = 0; k < n; ++k) {
            const std::uint32_t a = i * (n + 1) + k;
            const std::uint32_t b = a + n + 1;
            mesh.faces.push_back({a, b, b + 1});
            mesh.faces.push_back({a, b + 1, a + 1});
        }
    }
    return mesh;
}

// A closed ring of n by 2n squares around the z axis.
inline TriangleMesh torusMesh(std::uint32_t n, float body = 0.3F) {
    constexpr float kTurn = 2 * std::numbers::pi_v<float>;
    TriangleMesh mesh;
    const std::uint32_t m = 2 * n;
    for (std::uint32_t i = 0; i < n; ++i) {
        for (std::uint32_t k = 0; k < m; ++k) {
            const float a = kTurn * static_cast<float>(i) / static_cast<float>(n);
            const float b = kTurn * static_cast<float>(k) / static_cast<float>(m);
            const float r = 1 + body * std::cos(a);
            mesh.points.push_back({r * std::cos(b), r * std::sin(b), body * std::sin(a)});
        }
    }
    for (std::uint32_t i = 0; i < n; ++i) {
        for (std::uint32_t k = 0; k < m; ++k) {
            const std::uint32_t next = (i + 1) % n;
            const std::uint32_t right = (k + 1) % m;
            mesh.faces.push_back({i * m + k, i * m + right, next * m + right});
            mesh.faces.push_back({i * m + k, next * m + right, next * m + k});
        }
    }
    return mesh;
}

// A sphere of radius 1: rings between two poles.
inline TriangleMesh sphereMesh(std::uint32_t rings) {
    constexpr float kPi = std::numbers::pi_v<float>;
    const std::uint32_t m = 2 * rings;
    TriangleMesh mesh;
    mesh.points.push_back({0, 0, 1});
    for (std::uint32_t i = 1; i < rings; ++i) {
        for (std::uint32_t k = 0; k < m; ++k) {
            const float a = kPi * static_cast<float>(i) / static_cast<float>(rings);
            const float b = 2 * kPi * static_cast<float>(k) / static_cast<float>(m);
            mesh.points.push_back({std::sin(a) * std::cos(b), std::sin(a) * std::sin(b), std::cos(a)});
        }
    }
    const auto south = static_cast<std::uint32_t>(mesh.points.size());
    mesh.points.push_back({0, 0, -1});
    const auto at = [m](std::uint32_t ring, std::uint32_t k) { return 1 + (ring - 1) * m + k % m; };
    for (std::uint32_t k = 0; k < m; ++k) {
        mesh.faces.push_back({0, at(1, k), at(1, k + 1)});
        for (std::uint32_t i = 1; i + 1 < rings; ++i) {
            mesh.faces.push_back({at(i, k), at(i + 1, k), at(i + 1, k + 1)});
            mesh.faces.push_back({at(i, k), at(i + 1, k + 1), at(i, k + 1)});
        }
        mesh.faces.push_back({south, at(rings - 1, k + 1), at(rings - 1, k)});
    }
    return mesh;
}

// Both meshes in one.
inline TriangleMesh together(TriangleMesh mesh, const TriangleMesh& other) {
    const auto before = static_cast<std::uint32_t>(mesh.points.size());
    mesh.points.insert(mesh.points.end(), other.points.begin(), other.points.end());
    for (const Face& face : other.faces)
        mesh.faces.push_back({face[0] + before, face[1] + before, face[2] + before});
    return mesh;
}

inline TriangleMesh insideOut(TriangleMesh mesh) {
    for (Face& face : mesh.faces)
        std::swap(face[1], face[2]);
    return mesh;
}

// The farthest that a corner of `faces` stands out of the plane of one of the faces, as a fraction of the
// largest distance of two corners along an axis: 0 for a convex body that faces outward.
inline double unevenness(const std::vector<Point>& points, const Faces& faces) {
    const std::vector<std::uint32_t> corners = cornersOf(faces);
    double most = 0;
    double size = 0;
    for (const std::uint32_t a : corners) {
        for (std::size_t axis = 0; axis < 3; ++axis)
            size = std::max(size, std::abs(double{points[a][axis]} - double{points[corners.front()][axis]}));
    }
    for (const Face& face : faces) {
        const Point& o = points[face[0]];
        double u[3];
        double v[3];
        for (std::size_t axis = 0; axis < 3; ++axis) {
            u[axis] = double{points[face[1]][axis]} - double{o[axis]};
            v[axis] = double{points[face[2]][axis]} - double{o[axis]};
        }
        const double n[3] = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
        const double length = std::hypot(n[0], n[1], n[2]);
        // The plane of a sliver is anybody's guess.
        if (length < 1e-6 * size * size) continue;
        for (const std::uint32_t corner : corners) {
            double height = 0;
            for (std::size_t axis = 0; axis < 3; ++axis)
                height += n[axis] * (double{points[corner][axis]} - double{o[axis]});
            most = std::max(most, height / length);
        }
    }
    return most / size;
}

// The largest distance from a point of `mesh` to the surface of `faces` over the same points.
inline float farthestPoint(const TriangleMesh& mesh, const Faces& faces) {
    const Surface surface(mesh.points, faces);
    float most = 0;
    for (const std::uint32_t corner : cornersOf(mesh.faces))
        most = std::max(most, surface.distance(mesh.points[corner]));
    return most;
}

// The mesh as the exporter writes it.
inline std::string ogreXmlOf(const TriangleMesh& mesh) {
    std::string text = "<?xml version=\"1.0\"?>\n<mesh>\n\t<sharedgeometry vertexcount=\"" +
                       std::to_string(mesh.points.size()) +
                       "\">\n\t\t<vertexbuffer normals=\"true\" positions=\"true\">\n";
    char line[256];
    for (const auto& [x, y, z] : mesh.points) {
        std::snprintf(line, sizeof(line), "\t\t\t<vertex>\n\t\t\t\t<position x=\"%f\" y=\"%f\" z=\"%f\" />\n",
                      double{x}, double{y}, double{z});
        text += line;
        text += "\t\t\t\t<normal x=\"0.000000\" y=\"0.000000\" z=\"1.000000\" />\n\t\t\t</vertex>\n";
    }
    text +=
        "\t\t</vertexbuffer>\n\t</sharedgeometry>\n\t<submeshes>\n\t\t<submesh material=\"default\" "
        "operationtype=\"triangle_list\" use32bitindexes=\"True\" usesharedvertices=\"true\">\n\t\t\t<faces "
        "count=\"" +
        std::to_string(mesh.faces.size()) + "\">\n";
    for (const auto& [a, b, c] : mesh.faces) {
        std::snprintf(line, sizeof(line), "\t\t\t\t<face v1=\"%u\" v2=\"%u\" v3=\"%u\" />\n", a, b, c);
        text += line;
    }
    return text +
           "\t\t\t</faces>\n\t\t</submesh>\n\t</submeshes>\n\t<submeshnames>\n\t\t<submeshname index=\"0\" "
           "name=\"default\" />\n\t</submeshnames>\n</mesh>\n\n";
}

}  // namespace velinor
