#include "geometry/mesh_materials.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "hosts/snapshot/snapshot_host.h"

namespace velinor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr char kReflection[] = "sky.dds";

// Material 0 of a scene is a multi-material with these names under these IDs; the others follow in order.
class MeshMaterialsTest : public testing::Test {
  protected:
    struct Slot {
        std::int32_t id;
        const char16_t* name;  // null: empty
    };

    void makeMulti(const std::vector<Slot>& slots) {
        scene_.materials.push_back({.className = u"Multi/Sub-Object", .name = u"multi"});
        for (const Slot& slot : slots) {
            std::optional<SnapshotRef> material;
            if (slot.name != nullptr) {
                material = static_cast<SnapshotRef>(scene_.materials.size());
                scene_.materials.push_back({.className = u"Standard", .name = slot.name});
            }
            scene_.materials[0].subMaterials.push_back({slot.id, material});
        }
    }

    MeshMaterials name(const std::vector<int>& activeIds) {
        for (SnapshotRef i = 0; i < scene_.materials.size(); ++i) {
            scene_.nodes.push_back({.name = u"n", .material = i});
            scene_.roots.push_back(i);
        }
        host_ = makeSnapshotHost(scene_, "");
        settings_.customReflectionMap = kReflection;
        return nameMeshMaterials(scene_.materials.empty() ? nullptr : material(0), activeIds, settings_,
                                 materials_);
    }

    host::IGameMaterial* material(int place) {
        return host_->GetIGameInterface()->GetTopLevelNode(place)->GetNodeMaterial();
    }

    static MaterialVariant variant(const char* name) { return {name, kReflection}; }
    static MaterialGroup group(const char* name) { return {variant(name)}; }

    SceneSnapshot scene_;
    std::unique_ptr<host::Host> host_;
    ExportSettings settings_;
    MaterialMap materials_;
};

TEST_F(MeshMaterialsTest, NameAMissingMaterialDefaultAndNoteNothing) {
    const MeshMaterials named = name({0, 3});
    EXPECT_THAT(named.materialNames, ElementsAre(Pair(0, variant("default"))));
    EXPECT_THAT(materials_, IsEmpty());
    EXPECT_EQ(named.submeshOf(3), 0);
}

TEST_F(MeshMaterialsTest, GiveAllFacesTheOneMaterial) {
    scene_.materials.push_back({.className = u"Standard", .name = u"Brick Wall"});
    const MeshMaterials named = name({2, 5});
    EXPECT_THAT(named.materialNames, ElementsAre(Pair(0, variant("Brick_Wall"))));
    EXPECT_THAT(materials_, ElementsAre(Pair(material(0), group("Brick_Wall"))));
    EXPECT_EQ(named.submeshOf(5), 0);
}

TEST_F(MeshMaterialsTest, KeyTheSubMaterialsInUseByTheirIds) {
    makeMulti({{0, u"a"}, {2, u"c"}, {7, u"unused"}});
    const MeshMaterials named = name({0, 2});
    EXPECT_THAT(named.materialNames, ElementsAre(Pair(0, variant("a")), Pair(2, variant("c"))));
    EXPECT_THAT(named.idRemap, IsEmpty());
    EXPECT_EQ(named.maxMaterialId, 2);
    EXPECT_THAT(materials_, ElementsAre(Pair(material(1), group("a")), Pair(material(2), group("c"))));
}

TEST_F(MeshMaterialsTest, ClampIdsBeyondTheLastNamedOne) {
    makeMulti({{0, u"a"}, {2, u"c"}});
    const MeshMaterials named = name({0, 2});
    EXPECT_EQ(named.submeshOf(3), 2);
    EXPECT_EQ(named.submeshOf(65535), 2);
    EXPECT_EQ(named.submeshOf(1), 1) << "an ID below it stays, named or not";
}

TEST_F(MeshMaterialsTest, JoinHigherIdsOfTheSameName) {
    makeMulti({{1, u"same"}, {3, u"same"}, {4, u"other"}});
    const MeshMaterials named = name({1, 3, 4});
    EXPECT_THAT(named.materialNames, ElementsAre(Pair(1, variant("same")), Pair(4, variant("other"))));
    EXPECT_THAT(named.idRemap, ElementsAre(Pair(3, 1)));
    EXPECT_EQ(named.submeshOf(3), 1);
    EXPECT_THAT(materials_, ElementsAre(Pair(material(1), group("same")), Pair(material(2), group("same")),
                                        Pair(material(3), group("other"))))
        << "each sub-material is noted, also one that shares its name";
}

TEST_F(MeshMaterialsTest, CompareNamesAsTheyAreWritten) {
    makeMulti({{0, u"a b"}, {1, u"a_b"}});
    EXPECT_THAT(name({0, 1}).idRemap, ElementsAre(Pair(1, 0)));
}

TEST_F(MeshMaterialsTest, NoteAnEmptySlotAsTheMissingMaterial) {
    makeMulti({{0, u"a"}, {1, nullptr}});
    const MeshMaterials named = name({0, 1, 2});
    EXPECT_THAT(named.materialNames, ElementsAre(Pair(0, variant("a")), Pair(1, variant("default"))));
    EXPECT_THAT(named.idRemap, ElementsAre(Pair(2, 1))) << "an ID without a sub-material is missing as well";
    EXPECT_THAT(materials_, ElementsAre(Pair(nullptr, group("default")), Pair(material(1), group("a"))));
}

TEST_F(MeshMaterialsTest, TakeTheHostsOrderOfIds) {
    makeMulti({{5, u"s"}, {3, u"s"}, {7, u"s"}});
    const MeshMaterials named = name({5, 3, 7});
    EXPECT_THAT(named.materialNames, ElementsAre(Pair(5, variant("s"))));
    EXPECT_THAT(named.idRemap, ElementsAre(Pair(5, 3), Pair(7, 5))) << "the first lower one stays";
    EXPECT_EQ(named.maxMaterialId, 5);
}

// For each ID all others, as the rule reads.
std::map<std::int32_t, std::int32_t> remapAsItReads(const std::vector<int>& ids,
                                                    const std::vector<int>& nameOfId) {
    std::map<std::int32_t, std::int32_t> remap;
    const auto nameOf = [&nameOfId](int id) { return nameOfId[static_cast<std::size_t>(id)]; };
    for (const int a : ids) {
        for (const int b : ids) {
            if (nameOf(a) == nameOf(b) && b > a) remap.emplace(b, a);
        }
    }
    return remap;
}

TEST_F(MeshMaterialsTest, RemapAsTheRuleReads) {
    constexpr const char16_t* kNames[] = {u"a", u"b", u"c"};
    std::mt19937 random(3);
    for (int round = 0; round < 300; ++round) {
        scene_ = {};
        materials_.clear();
        const int count = 1 + static_cast<int>(random() % 12);
        std::vector<Slot> slots;
        std::vector<int> ids;
        std::vector<int> nameOfId;
        for (int id = 0; id < count; ++id) {
            nameOfId.push_back(static_cast<int>(random() % 3));
            slots.push_back({id, kNames[nameOfId.back()]});
            ids.push_back(id);
        }
        std::shuffle(ids.begin(), ids.end(), random);
        makeMulti(slots);
        ASSERT_EQ(name(ids).idRemap, remapAsItReads(ids, nameOfId)) << "round " << round;
    }
}

TEST_F(MeshMaterialsTest, CopeWithEveryId) {
    std::vector<Slot> slots;
    std::vector<int> ids;
    for (int id = 65535; id >= 0; --id) {
        slots.push_back({id, u"same"});
        ids.push_back(id);
    }
    makeMulti(slots);
    const MeshMaterials named = name(ids);
    EXPECT_EQ(named.materialNames.size(), 1U);
    EXPECT_EQ(named.idRemap.size(), 65535U);
    EXPECT_EQ(named.submeshOf(65535), 65534) << "the first in the order of IDs that is lower";
}

}  // namespace
}  // namespace velinor
