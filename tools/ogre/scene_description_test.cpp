#include "tools/ogre/scene_description.h"

#include <gmock/gmock.h>

namespace velinor {
namespace {

constexpr const char* kRoom =
    "<root>\n"
    "\t<node\n"
    "\t\tcolor=\"red\"\n"
    "\t\torientation={{ w: -1.000000, x: 0.000000, y: 0.000000, z: 0.000000 }}\n"
    "\t\tposition={{ x: 1.000000, y: 3.000000, z: -2.000000 }}\n"
    "\t\tscale={{ x: 2.000000, y: 2.000000, z: 2.000000 }}>\n"
    "\t\t<mesh\n"
    "\t\t\t{...{ url: 'Tom's Chair.mesh' }}>\n"
    "\t\t</mesh>\n"
    "\t\t<node\n"
    "\t\t\torientation={{ w: -0.707107, x: 0.707107, y: 0.000000, z: 0.000000 }}\n"
    "\t\t\tposition={{ x: 0.000000, y: 2.500000, z: 0.000000 }}>\n"
    "\t\t\t<light\n"
    "\t\t\t\t{...{ lighttype: \"spot\" }}\n"
    "\t\t\t\tdiffuse={{ r: 0.500000, g: 0.450000, b: 0.400000 }}>\n"
    "\t\t\t</light>\n"
    "\t\t</node>\n"
    "\t</node>\n"
    "</root>\n\n";

TEST(SceneDescription, HasNodesMeshesAndLights) {
    const SceneDescription scene = readSceneDescription(kRoom);
    ASSERT_EQ(scene.nodes.size(), 2U);
    EXPECT_EQ(scene.nodes[0].parent, std::nullopt);
    EXPECT_EQ(scene.nodes[0].position, (std::array<double, 3>{1, 3, -2}));
    EXPECT_EQ(scene.nodes[0].scale, (std::array<double, 3>{2, 2, 2}));
    EXPECT_EQ(scene.nodes[1].parent, 0U);
    EXPECT_EQ(scene.nodes[1].orientation, (std::array<double, 4>{-0.707107, 0.707107, 0, 0}));
    EXPECT_EQ(scene.nodes[1].scale, (std::array<double, 3>{1, 1, 1})) << "nodes of lights have none";
    ASSERT_EQ(scene.meshes.size(), 1U);
    EXPECT_EQ(scene.meshes[0].node, 0U);
    EXPECT_EQ(scene.meshes[0].url, "Tom's Chair.mesh");
    EXPECT_EQ(scene.meshes[0].line, 7U);
    ASSERT_EQ(scene.lights.size(), 1U);
    EXPECT_EQ(scene.lights[0].node, 1U);
    EXPECT_EQ(scene.lights[0].type, DescribedLightType::spot);
    EXPECT_EQ(scene.lights[0].colour, (std::array<double, 3>{0.5, 0.45, 0.4}));
}

TEST(SceneDescription, RefusesNumbersThatAreNone) {
    EXPECT_THROW(readSceneDescription(
                     "<root>\n\t<node\n\t\tposition={{ x: nan, y: 0, z: 0 }}>\n\t</node>\n</root>\n\n"),
                 DescriptionFault);
    EXPECT_THROW(readSceneDescription("<root>\n"), DescriptionFault);
}

constexpr const char* kWhere = R"({"camera": {"orientation": {"w": 1.0, "x": 0.0, "y": 0.0, "z": 0.0},
    "position": {"x": 0.0, "y": 0.0, "z": 0.0}}, "environment": {"ambient": {"a": 1, "b": 0.25, "g": 0.5, "r": 0.75},
    "skybox": {"material": "Sky"}}})";

TEST(EnvironmentDescription, HasLightSkyAndCamera) {
    const EnvironmentDescription environment = readEnvironmentDescription(kWhere);
    EXPECT_EQ(environment.ambient, (std::array<double, 3>{0.75, 0.5, 0.25}));
    EXPECT_EQ(environment.skyMaterial, "Sky");
    EXPECT_TRUE(environment.hasDefaultCamera());
    EXPECT_THROW(readEnvironmentDescription("{}"), DescriptionFault);
}

TEST(FileNameOf, ReplacesEveryByteThatAFileNameMayNotHold) {
    EXPECT_EQ(fileNameOf("Big Box-2.mesh"), "Big_Box-2.mesh");
    EXPECT_EQ(fileNameOf("Stu\xC3\x9F.mesh"), "Stu__.mesh");
}

}  // namespace
}  // namespace velinor
