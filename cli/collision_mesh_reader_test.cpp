#include "cli/collision_mesh_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace velinor {
namespace {

using testing::HasSubstr;

std::string collisionMeshFault(const std::string& text) {
    try {
        readCollisionMesh(text);
        return "";
    } catch (const CollisionMeshError& error) {
        return error.what();
    }
}

constexpr const char* kPoints = "v 0 0 0\nv 1 0 0\nv 0 -1.5e-3 0\n";

TEST(CollisionMeshReader, CountsPointsAndFaces) {
    const CollisionMesh mesh =
        readCollisionMesh("# made by hand\no part_1\n" + std::string(kPoints) +
                          "f 1 2 3\r\n\no part_2\nv 1 1 1\nvn 0 0 1\nf 2/1/1 3//1 4 1\nf -1 -2 -3");
    EXPECT_EQ(mesh.points, 4U);
    EXPECT_EQ(mesh.faces, 3U);
}

TEST(CollisionMeshReader, SaysWhatIsWrongAndWhere) {
    struct Case {
        const char* lines;
        const char* fault;
    };
    const Case cases[] = {
        {"f 1 2 4\n", "line 4: a face names the point 4, there are 3 above it"},
        {"f 1 2 0\n", "names the point 0"},
        {"f 1 2 -4\n", "names the point -4"},
        {"f 1 2 x\n", "names the point x"},
        {"f 1 2 99999999999999999999\n", "names the point 9999"},
        {"f 1 2\n", "line 4: a face needs three corners"},
        {"v 1 2\n", "line 4: a point needs three finite numbers"},
        {"v 1 2 nan\n", "three finite numbers"},
        {"v 1 2 inf\n", "three finite numbers"},
        {"v 1 2 1e99\n", "three finite numbers"},
        {"v 1 2 3,5\n", "three finite numbers"},
        {"v 1 2 3 4\n", "a point has more than three numbers"},
        {"l 1 2\n", "line 4: \"l\" is not known"},
        {"", "has no faces"},
    };
    for (const auto& [lines, fault] : cases)
        EXPECT_THAT(collisionMeshFault(std::string(kPoints) + lines), HasSubstr(fault)) << lines;
    EXPECT_EQ(collisionMeshFault(""), "is empty");
}

}  // namespace
}  // namespace velinor
