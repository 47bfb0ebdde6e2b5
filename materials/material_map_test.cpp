#include "materials/material_map.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hosts/snapshot/snapshot_host.h"

namespace velinor {
namespace {

using testing::ElementsAre;
using testing::Pair;

// The materials of a scene by their place in it.
class MaterialMapTest : public testing::Test {
  protected:
    // A scene with one node a material.
    void makeScene(const std::vector<std::u16string>& names) {
        for (std::size_t i = 0; i < names.size(); ++i) {
            scene_.materials.push_back({.className = u"Standard", .name = names[i]});
            scene_.nodes.push_back({.name = u"n", .material = static_cast<SnapshotRef>(i)});
            scene_.roots.push_back(static_cast<SnapshotRef>(i));
        }
        host_ = makeSnapshotHost(scene_, "");
    }
    host::IGameMaterial* material(int place) {
        return host_->GetIGameInterface()->GetTopLevelNode(place)->GetNodeMaterial();
    }

    SceneSnapshot scene_;
    std::unique_ptr<host::Host> host_;
    ExportSettings settings_;
};

TEST_F(MaterialMapTest, NamesScriptsAfterSanitisedMaterials) {
    makeScene({u"Brick Wall #2", u"\u041A\u0443\u0431", u"", u"default"});
    EXPECT_EQ(materialVariant(material(0), settings_).scriptName, "Brick_Wall__2");
    EXPECT_EQ(materialVariant(material(1), settings_).scriptName, "______") << "two a Cyrillic letter";
    EXPECT_EQ(materialVariant(material(2), settings_).scriptName, "");
    EXPECT_EQ(materialVariant(material(3), settings_).scriptName, "default");
}

TEST_F(MaterialMapTest, CallsTheMissingMaterialDefault) {
    EXPECT_EQ(materialVariant(nullptr, settings_).scriptName, "default");
}

TEST_F(MaterialMapTest, TakesTheLastComponentOfTheReflectionMap) {
    for (const auto& [map, name] : {std::pair<const char*, const char*>{"default.dds", "default.dds"},
                                    {"/maps/my sky.dds", "my sky.dds"},
                                    {"D:\\maps\\Sky.dds", "Sky.dds"},
                                    {"", ""}}) {
        settings_.customReflectionMap = map;
        EXPECT_EQ(materialVariant(nullptr, settings_).reflectionTextureName, name);
    }
}

TEST_F(MaterialMapTest, ListsMaterialsInTheOrderOfTheSceneTheMissingOneFirst) {
    makeScene({u"z", u"a"});
    MaterialMap materials;
    registerMaterial(materials, material(1), {"a", "r"});
    registerMaterial(materials, material(0), {"z", "r"});
    registerMaterial(materials, nullptr, {"default", "r"});
    const MaterialGroup missing{{"default", "r"}};
    const MaterialGroup first{{"z", "r"}};
    const MaterialGroup second{{"a", "r"}};
    EXPECT_THAT(materials,
                ElementsAre(Pair(nullptr, missing), Pair(material(0), first), Pair(material(1), second)));
}

TEST_F(MaterialMapTest, KeepsEachVariantOnceInOrder) {
    MaterialMap materials;
    registerMaterial(materials, nullptr, {"b", "r"});
    registerMaterial(materials, nullptr, {"a", "r"});
    registerMaterial(materials, nullptr, {"b", "r"});
    registerMaterial(materials, nullptr, {"b", "s"});
    EXPECT_THAT(materials[nullptr],
                ElementsAre(MaterialVariant{"b", "r"}, MaterialVariant{"a", "r"}, MaterialVariant{"b", "s"}));
}

}  // namespace
}  // namespace velinor
