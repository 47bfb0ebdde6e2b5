#include "cli/node_selection.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/text.h"
#include "cli/command_error.h"

namespace velinor {
namespace {

// Room (Table (Vase), Chair [color: red], Chair), Lamp
SceneSnapshot roomScene() {
    SceneSnapshot scene;
    scene.nodes.resize(6);
    scene.nodes[0].name = u"Room";
    scene.nodes[0].children = {1, 3, 4};
    scene.nodes[1].name = u"Table";
    scene.nodes[1].children = {2};
    scene.nodes[2].name = u"Vase";
    scene.nodes[3].name = u"Chair [color: red]";
    scene.nodes[4].name = u"Chair";
    scene.nodes[5].name = u"Lamp";
    scene.roots = {0, 5};
    return scene;
}

std::string selectedOf(const SceneSnapshot& scene) {
    std::string text;
    for (const SnapshotNode& node : scene.nodes)
        text += node.selected ? toUtf8(node.name) + "; " : "";
    return text;
}

std::string selectedBy(const std::vector<std::string>& patterns) {
    SceneSnapshot scene = roomScene();
    selectNodes(scene, patterns);
    return selectedOf(scene);
}

TEST(SelectNodes, TakesWhatFitsAndAllBelow) {
    EXPECT_EQ(selectedBy({}), "");
    EXPECT_EQ(selectedBy({"Table"}), "Table; Vase; ");
    EXPECT_EQ(selectedBy({"R*"}), "Room; Table; Vase; Chair [color: red]; Chair; ");
    EXPECT_EQ(selectedBy({"Vase", "Lamp"}), "Vase; Lamp; ");
}

TEST(SelectNodes, KnowsNamesWithAndWithoutParameters) {
    EXPECT_EQ(selectedBy({"Chair"}), "Chair [color: red]; Chair; ");
    EXPECT_EQ(selectedBy({"Chair *"}), "Chair [color: red]; ");
}

TEST(SelectNodes, KeepsWhatIsSelected) {
    SceneSnapshot scene = roomScene();
    scene.nodes[5].selected = true;
    selectNodes(scene, std::vector<std::string>{"Vase"});
    EXPECT_EQ(selectedOf(scene), "Vase; Lamp; ");
}

TEST(SelectNodes, RefusesPatternsThatNothingFits) {
    SceneSnapshot scene = roomScene();
    try {
        selectNodes(scene, std::vector<std::string>{"Vase", "Sofa*"});
        ADD_FAILURE() << "no refusal";
    } catch (const CommandError& error) {
        EXPECT_EQ(error.status(), kNotRun);
        EXPECT_STREQ(error.what(),
                     "--select: no node of the scene is named \"Sofa*\"; \"tolvex inspect\" shows the names");
    }
    EXPECT_EQ(selectedOf(scene), "");
    EXPECT_THROW(selectNodes(scene, std::vector<std::string>{"[z-a]"}), CommandError);
}

TEST(SelectNodes, GoesDownDeepHierarchies) {
    SceneSnapshot scene;
    constexpr SnapshotRef kDepth = 100000;
    scene.nodes.resize(kDepth);
    for (SnapshotRef i = 0; i + 1 < kDepth; ++i)
        scene.nodes[i].children = {i + 1};
    scene.nodes[1].name = u"below";
    scene.roots = {0};
    selectNodes(scene, std::vector<std::string>{"below"});
    EXPECT_FALSE(scene.nodes.front().selected);
    EXPECT_TRUE(scene.nodes.back().selected);
}

}  // namespace
}  // namespace velinor
