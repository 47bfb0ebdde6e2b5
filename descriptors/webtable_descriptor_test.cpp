#include "descriptors/webtable_descriptor.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

#include "tests/support/test_scene.h"

namespace velinor {
namespace {

struct Panels {
    std::string text;
    std::vector<std::string> told;
};

Panels describePanels(const TestScene& scene) {
    TestCollection collection(scene);
    collection.run();
    const std::string text = buildWebtablesJson(collection.scene.webtableNodes,
                                                collection.patterns.numericSuffixPattern, collection.report);
    return {text, collection.told()};
}

nlohmann::json onlyPanel(const TestScene& scene) {
    return nlohmann::json::parse(describePanels(scene).text).at(0);
}

TEST(WebtablesJson, OfNoPanelsIsAnEmptyArray) {
    EXPECT_EQ(describePanels(TestScene()).text, "[]");
}

TEST(WebtablesJson, DescribesAFourByThreePanel) {
    TestScene scene;
    scene.addMesh(u"Webtable_7", std::nullopt, 4, 3);
    EXPECT_EQ(describePanels(scene).text, R"([
    {
        "autoResolution": true,
        "index": 7,
        "lastLoadedURL": "velinor:///default",
        "orientation": {
            "w": -0.7071067690849304,
            "x": 0.7071067690849304,
            "y": 0.0,
            "z": 0.0
        },
        "position": {
            "x": 0.0,
            "y": 0.0,
            "z": 0.0
        },
        "resolution": {
            "height": 1200,
            "width": 1600
        },
        "size": {
            "height": 3.0,
            "width": 4.0
        },
        "url": ""
    }
])");
}

TEST(WebtablesJson, PlacesAPanelInTheWorld) {
    TestScene scene;
    const auto group = scene.addHelper(u"Group");
    scene[group].worldTransform = translation(100, 100, 100);
    const auto node = scene.addMesh(u"Webtable_1", group);
    scene[node].worldTransform = translation(0.1F, 2, 3);
    const auto panel = onlyPanel(scene);
    EXPECT_EQ(panel.at("position").dump(), R"({"x":0.10000000149011612,"y":3.0,"z":-2.0})");
}

TEST(WebtablesJson, ChoosesTheResolution) {
    struct Case {
        const char* name;
        float width, height;
        std::map<std::u16string, std::int32_t> properties;
        std::int32_t resolutionWidth, resolutionHeight;
    };
    constexpr std::int32_t kNone = std::numeric_limits<std::int32_t>::min();
    for (const Case& c : {
             Case{"nothing given", 4, 3, {}, 1600, 1200},
             Case{"width given", 16, 9, {{u"qv_wt_res_w", 1280}}, 1280, 720},
             Case{"height given", 4, 3, {{u"qv_wt_res_h", 99}}, 1600, 99},
             Case{"both given", 4, 3, {{u"qv_wt_res_w", 5}, {u"qv_wt_res_h", 6}}, 5, 6},
             Case{"minus one is absent", 4, 3, {{u"qv_wt_res_w", -1}, {u"qv_wt_res_h", -1}}, 1600, 1200},
             Case{"zero is given", 4, 3, {{u"qv_wt_res_w", 0}}, 0, 0},
             Case{"negative is given", 4, 3, {{u"qv_wt_res_w", -2}}, -2, -1},
             Case{"truncated", 3, 2, {{u"qv_wt_res_w", 100}}, 100, 66},
             Case{"flat", 4, 0, {}, 1600, 0},
             Case{"no width", 0, 3, {}, 1600, kNone},
             Case{"no extent", 0, 0, {}, 1600, kNone},
             Case{"too high", 1e-9F, 3e9F, {}, 1600, kNone},
         }) {
        TestScene scene;
        const auto node = scene.addMesh(u"Webtable_1", std::nullopt, c.width, c.height);
        scene[node].userProperties = c.properties;
        const auto resolution = onlyPanel(scene).at("resolution");
        EXPECT_EQ(resolution.at("width"), c.resolutionWidth) << c.name;
        EXPECT_EQ(resolution.at("height"), c.resolutionHeight) << c.name;
    }
}

TEST(WebtablesJson, TakesTheNumberAtTheEndOfTheName) {
    struct Case {
        const char16_t* name;
        int index;
    };
    for (const auto& [name, index] :
         {Case{u"Webtable_7", 7}, Case{u"Webtable_0012", 12}, Case{u"Webtable_123456789", 123456789},
          Case{u"Webtable_1234567890", 123456789}, Case{u"_brw_tv_5_2", 2}, Case{u"Webtable_3 [a: b]", 3}}) {
        TestScene scene;
        scene.addMesh(name);
        EXPECT_EQ(onlyPanel(scene).at("index"), index) << toUtf8(name);
    }
}

TEST(WebtablesJson, IgnoresScaleAndRotationForTheSize) {
    TestScene scene;
    const auto node = scene.addMesh(u"Webtable_1", std::nullopt, 4, 3);
    scene[node].worldTransform = {{0, 10, 0, 0}, {-10, 0, 0, 0}, {0, 0, 10, 0}, {0, 0, 0, 1}};
    const auto panel = onlyPanel(scene);
    EXPECT_EQ(panel.at("size").dump(), R"({"height":3.0,"width":4.0})");
}

TEST(WebtablesJson, MultipliesTheConstantTurnOnTheRight) {
    TestScene scene;
    const auto node = scene.addMesh(u"Webtable_1");
    scene[node].worldTransform = {{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    EXPECT_EQ(onlyPanel(scene).at("orientation").dump(), R"({"w":-0.5,"x":0.5,"y":-0.5,"z":-0.5})");
}

TEST(WebtablesJson, KeepsTheOrderOfTheScene) {
    TestScene scene;
    for (const char16_t* name : {u"Webtable_3", u"_brw_x_1", u"Webtable_2"})
        scene.addMesh(name);
    std::vector<int> indices;
    for (const auto& panel : nlohmann::json::parse(describePanels(scene).text))
        indices.push_back(panel.at("index"));
    EXPECT_EQ(indices, (std::vector<int>{3, 1, 2}));
}

TEST(WebtablesJson, TellsOfAFlatPanel) {
    TestScene scene;
    scene.addMesh(u"Webtable_1", std::nullopt, 4, 0);
    EXPECT_EQ(describePanels(scene).told, (std::vector<std::string>{"panel-flat Webtable_1"}));
}

}  // namespace
}  // namespace velinor
