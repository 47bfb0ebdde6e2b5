#include "scene/scene_collection.h"

#include <gtest/gtest.h>

#include "scene/instances.h"
#include "tests/support/test_scene.h"

namespace velinor {
namespace {

using Lines = std::vector<std::string>;

TEST(CollectScene, TakesMeshesLightsAndHelpersWithTheirHierarchy) {
    TestScene scene;
    const auto room = scene.addHelper(u"Room");
    const auto chair = scene.addMesh(u"Chair", room);
    scene.addMesh(u"Leg", chair);
    scene.addLight(u"Lamp", {}, room);
    scene.addHelper(u"Second");
    TestCollection collection(scene);
    EXPECT_TRUE(collection.run());
    EXPECT_EQ(collection.tree(), "Room(Chair(Leg) Lamp) Second");
    EXPECT_EQ(collection.names(collection.scene.objectNodes), "Room Chair Leg Lamp Second");
    EXPECT_EQ(collection.names(collection.scene.meshNodes), "Chair Leg");
    EXPECT_EQ(collection.names(collection.scene.lightNodes), "Lamp");
    EXPECT_EQ(collection.told(), Lines{});
    const SceneNodeRecord& record = collection.scene.rootRecord.children.front();
    EXPECT_EQ(record.kind, SceneNodeKind::Helper);
    EXPECT_EQ(record.parent, &collection.scene.rootRecord);
    EXPECT_EQ(record.children.front().kind, SceneNodeKind::Mesh);
    EXPECT_EQ(record.children.front().parent, &record);
    EXPECT_EQ(record.children.back().kind, SceneNodeKind::Light);
}

TEST(CollectScene, LeavesAnEmptySceneEmpty) {
    TestScene scene;
    TestCollection collection(scene);
    EXPECT_TRUE(collection.run());
    EXPECT_EQ(collection.tree(), "");
    EXPECT_TRUE(collection.scene.objectNodes.empty());
}

TEST(CollectScene, DropsAHiddenHelperWithItsChildrenFromTheTreeButNotFromTheLists) {
    TestScene scene;
    const auto group = scene.addHelper(u"Group");
    scene[group].hidden = true;
    const auto mesh = scene.addMesh(u"Mesh", group);
    scene.addMesh(u"Below", mesh);
    scene.addLight(u"Light", {}, group);
    TestCollection collection(scene);
    collection.run();
    EXPECT_EQ(collection.tree(), "");
    EXPECT_EQ(collection.names(collection.scene.meshNodes), "Mesh Below");
    EXPECT_EQ(collection.names(collection.scene.lightNodes), "Light");
    EXPECT_EQ(collection.told(),
              (Lines{"node-hidden Group", "node-under-dropped-parent Mesh", "node-under-dropped-parent Below",
                     "node-under-dropped-parent Light"}));
}

TEST(CollectScene, FiltersByVisibilityLayerAndSelection) {
    struct Case {
        const char* name;
        bool hidden, layerHidden, selected;
        bool exportHidden, selectionOnly;
        const char* tree;
        Lines told;
    };
    for (const Case& c : {
             Case{"visible", false, false, false, false, false, "N", {}},
             Case{"hidden", true, false, false, false, false, "", {"node-hidden N"}},
             Case{"hidden, exported", true, false, false, true, false, "N", {}},
             Case{"layer hidden", false, true, false, false, false, "", {"node-layer-hidden N"}},
             Case{"layer hidden, exported", false, true, false, true, false, "N", {}},
             Case{"both hidden", true, true, true, false, false, "", {"node-hidden N"}},
             Case{"not selected", false, false, false, false, true, "", {"node-not-selected N"}},
             Case{"selected", false, false, true, false, true, "N", {}},
             Case{"selected and hidden", true, false, true, false, true, "", {"node-hidden N"}},
             Case{"hidden, exported, not selected",
                  true,
                  true,
                  false,
                  true,
                  true,
                  "",
                  {"node-not-selected N"}},
         }) {
        TestScene scene;
        const auto node = scene.addMesh(u"N");
        scene[node].hidden = c.hidden;
        scene[node].layerHidden = c.layerHidden;
        scene[node].selected = c.selected;
        TestCollection collection(scene);
        collection.settings.exportHidden = c.exportHidden;
        collection.settings.selectionOnly = c.selectionOnly;
        collection.run();
        EXPECT_EQ(collection.tree(), c.tree) << c.name;
        EXPECT_EQ(collection.names(collection.scene.meshNodes), c.tree) << c.name;
        EXPECT_EQ(collection.names(collection.scene.objectNodes), "N") << c.name;
        EXPECT_EQ(collection.told(), c.told) << c.name;
    }
}

TEST(CollectScene, PutsWebPanelsIntoTheirListAndNotIntoTheTree) {
    TestScene scene;
    const auto panel = scene.addMesh(u"Webtable_12");
    scene.addMesh(u"Child", panel);
    scene.addMesh(u"_brw_tv_2");
    scene.addMesh(u"_brw_tv");
    scene.addMesh(u"Webtable_3 [qv_wt_res_w: 1024]");
    scene.addHelper(u"Webtable_4");
    TestCollection collection(scene);
    collection.settings.exportWebtables = false;
    collection.run();
    EXPECT_EQ(collection.names(collection.scene.webtableNodes),
              "Webtable_12 _brw_tv_2 Webtable_3 [qv_wt_res_w: 1024]");
    EXPECT_EQ(collection.names(collection.scene.meshNodes), "Child _brw_tv");
    EXPECT_EQ(collection.tree(), "_brw_tv Webtable_4");
    EXPECT_EQ(collection.told(), (Lines{"node-under-dropped-parent Child"}));
}

TEST(CollectScene, PutsCameraBoundsIntoTheirList) {
    TestScene scene;
    for (const char16_t* name : {u"Camera-bounds", u"camera_Bounds", u"CameraBounds", u"camera bounds"}) {
        scene.addMesh(name);
    }
    scene.addMesh(u"Camera__bounds");
    TestCollection collection(scene);
    collection.settings.exportGeometry = false;
    collection.settings.exportCamera = false;
    collection.run();
    EXPECT_EQ(collection.scene.cameraBoundsNodes.size(), 4U);
    EXPECT_EQ(collection.tree(), "");
    EXPECT_EQ(collection.told(),
              (Lines{"node-geometry-off Camera__bounds", "node-extra-camera-bounds camera_Bounds",
                     "node-extra-camera-bounds CameraBounds", "node-extra-camera-bounds camera bounds"}));
}

TEST(CollectScene, KeepsEveryInstanceButOnlyTheMastersMesh) {
    TestScene scene;
    const auto a = scene.addMesh(u"A");
    const auto b = scene.addMesh(u"B [k: v]");
    const auto c = scene.addMesh(u"C [mass: 2]");
    const InstanceList group({a, b, c});
    for (const auto node : {a, b, c}) {
        scene[node].object->mesh = 0;
        scene[node].instances = group;
    }
    TestCollection collection(scene);
    collection.run();
    EXPECT_EQ(collection.tree(), "A B [k: v] C [mass: 2]");
    EXPECT_EQ(collection.names(collection.scene.meshNodes), "C [mass: 2]");
    const auto& records = collection.scene.rootRecord.children;
    const SceneNodeRecord& first = records.front();
    EXPECT_EQ(first.kind, SceneNodeKind::Mesh);
    EXPECT_FALSE(first.isInstanceMaster);
    EXPECT_EQ(first.masterName, "C");
    EXPECT_TRUE(first.paramKeys.empty());
    const SceneNodeRecord& second = *std::next(records.begin());
    EXPECT_EQ(second.masterName, "C");
    EXPECT_EQ(second.paramKeys, (Lines{"k"}));
    EXPECT_EQ(second.paramValues, (Lines{"v"}));
    EXPECT_TRUE(records.back().isInstanceMaster);
    EXPECT_EQ(records.back().masterName, "");
    EXPECT_EQ(records.back().paramKeys, (Lines{"mass"}));
}

TEST(CollectScene, NarrowsTheMastersNameByLowBytes) {
    TestScene scene;
    const auto a = scene.addMesh(u"A");
    const auto b = scene.addMesh(u"\u00E9\u0416");
    scene[a].instances = InstanceList({a, b});
    scene[b].instances = InstanceList({a, b});
    TestCollection collection(scene);
    collection.run();
    EXPECT_EQ(collection.scene.rootRecord.children.front().masterName, "\xE9\x16");
}

TEST(CollectScene, LetsTheHostsExceptionForAnEmptyInstanceListPass) {
    TestScene scene;
    const auto a = scene.addMesh(u"A");
    scene[a].instances = InstanceList(std::vector<SnapshotRef>{});
    TestCollection collection(scene);
    try {
        collection.run();
        FAIL() << "no exception";
    } catch (const host::TabOutOfRangeException& error) {
        EXPECT_STREQ(error.what(), "Invalid index passed into a Max SDK Tab::operator[]");
    }
}

TEST(CollectScene, AsksForInstancesOnlyOfNodesThatPassTheFilters) {
    TestScene scene;
    const auto a = scene.addMesh(u"A");
    scene[a].instances = InstanceList(std::vector<SnapshotRef>{});
    scene[a].hidden = true;
    const auto b = scene.add(u"B", std::nullopt);
    scene[b].instances = InstanceList(std::vector<SnapshotRef>{});
    TestCollection collection(scene);
    EXPECT_TRUE(collection.run());
}

TEST(CollectScene, ListsACameraAndDropsItsChildren) {
    TestScene scene;
    const auto camera = scene.addCamera(u"Eye");
    scene.addHelper(u"Target", camera);
    scene.addMesh(u"Mesh", camera);
    scene.addCamera(u"Second");
    TestCollection collection(scene);
    collection.run();
    EXPECT_EQ(collection.names(collection.scene.cameraNodes), "Eye Second");
    EXPECT_EQ(collection.names(collection.scene.meshNodes), "Mesh");
    EXPECT_EQ(collection.tree(), "");
    EXPECT_EQ(collection.told(), (Lines{"node-under-dropped-parent Target", "node-under-dropped-parent Mesh",
                                        "node-extra-camera Second"}));
}

TEST(CollectScene, ObeysWhatIsSwitchedOff) {
    TestScene scene;
    const auto light = scene.addLight(u"Light", {});
    scene.addMesh(u"Below", light);
    scene.addMesh(u"Mesh");
    scene.addCamera(u"Camera");
    scene.addHelper(u"Helper");
    TestCollection collection(scene);
    collection.settings.exportLights = false;
    collection.settings.exportGeometry = false;
    collection.settings.exportCamera = false;
    collection.run();
    EXPECT_EQ(collection.tree(), "Helper");
    EXPECT_EQ(collection.names(collection.scene.lightNodes), "");
    EXPECT_EQ(collection.names(collection.scene.meshNodes), "");
    EXPECT_EQ(collection.names(collection.scene.cameraNodes), "");
    EXPECT_EQ(collection.told(), (Lines{"node-lights-off Light", "node-geometry-off Below",
                                        "node-geometry-off Mesh", "node-cameras-off Camera"}));
}

TEST(CollectScene, TakesNeitherSplinesNorBonesNorNodesWithoutObject) {
    TestScene scene;
    const auto spline = scene.addSpline(u"Spline");
    scene.addMesh(u"Below", spline);
    scene.addMesh(u"Skin", scene.add(u"Bone", TestScene::ofType(6)));
    scene.add(u"Xref", TestScene::ofType(8));
    scene.add(u"Strange", TestScene::ofType(-5));
    scene.add(u"Unknown", TestScene::ofType(0));
    const auto bare = scene.add(u"Bare", std::nullopt);
    scene.addHelper(u"Under", bare);
    TestCollection collection(scene);
    collection.run();
    EXPECT_EQ(collection.tree(), "");
    EXPECT_EQ(collection.names(collection.scene.meshNodes), "Below Skin");
    EXPECT_EQ(collection.names(collection.scene.objectNodes),
              "Spline Below Bone Skin Xref Strange Unknown Under");
    EXPECT_EQ(collection.told(), (Lines{"node-type-not-exported Spline", "node-under-dropped-parent Below",
                                        "node-type-not-exported Bone", "node-under-dropped-parent Skin",
                                        "node-type-not-exported Xref", "node-type-not-exported Strange",
                                        "node-type-not-exported Unknown", "node-without-object Bare",
                                        "node-under-dropped-parent Under"}));
}

TEST(CollectScene, AppendsToWhatAnEarlierWalkLeft) {
    TestScene scene;
    scene.addMesh(u"Mesh");
    TestCollection collection(scene);
    collection.run();
    collection.run();
    EXPECT_EQ(collection.tree(), "Mesh Mesh");
    EXPECT_EQ(collection.names(collection.scene.meshNodes), "Mesh Mesh");
}

TEST(CollectScene, TellsOfParametersThatItCannotRead) {
    TestScene scene;
    scene.addMesh(u"Chair [color:red, mass: 2]");
    TestCollection collection(scene);
    collection.run();
    ASSERT_EQ(collection.report.entries().size(), 1U);
    EXPECT_EQ(collection.report.entries()[0], (ReportEntry{MessageId::nodeNameParameterIgnored,
                                                           "Chair [color:red, mass: 2]", "\"color:red\""}));
}

TEST(CollectScene, TellsOnceOfANameWithManyPiecesThatItCannotRead) {
    TestScene scene;
    std::u16string name = u"Chair [x";
    for (int i = 0; i < 100000; ++i)
        name += u", x";
    scene.addMesh(name + u"]");
    TestCollection collection(scene);
    collection.run();
    ASSERT_EQ(collection.report.entries().size(), 1U);
    EXPECT_EQ(collection.report.entries()[0].detail, "\"x\" and 100000 more");
    EXPECT_LT(collection.report.entries()[0].subject.size(), 1000U);
}

TEST(CollectScene, DropsTheChildrenOfALightThatIsSwitchedOff) {
    TestScene scene;
    const auto light = scene.addLight(u"Light", {});
    scene.addMesh(u"Below", light);
    TestCollection collection(scene);
    collection.settings.exportLights = false;
    collection.run();
    EXPECT_EQ(collection.tree(), "");
    EXPECT_EQ(collection.names(collection.scene.meshNodes), "Below");
    EXPECT_EQ(collection.told(), (Lines{"node-lights-off Light", "node-under-dropped-parent Below"}));
}

TEST(CollectScene, WalksAChainOfAHundredThousandNodes) {
    TestScene scene;
    TestScene::Parent parent;
    for (int i = 0; i < 100000; ++i)
        parent = scene.addHelper(u"Link", parent);
    TestCollection collection(scene);
    collection.run();
    const SceneNodeRecord* record = &collection.scene.rootRecord;
    int depth = 0;
    for (; !record->children.empty(); record = &record->children.front())
        ++depth;
    EXPECT_EQ(depth, 100000);
}

TEST(CollectScene, WalksAParentOfAMillionChildren) {
    TestScene scene;
    const auto parent = scene.addHelper(u"P");
    for (int i = 0; i < 1000000; ++i)
        scene.addHelper(u"C", parent);
    TestCollection collection(scene);
    collection.run();
    EXPECT_EQ(collection.scene.rootRecord.children.front().children.size(), 1000000U);
}

TEST(Instances, NameTheLastEntryAsMaster) {
    TestScene scene;
    const auto a = scene.addHelper(u"A");
    const auto b = scene.addHelper(u"B");
    scene[a].instances = InstanceList({b, a});
    scene[b].instances = InstanceList({b, a});
    const auto host = scene.makeHost();
    host->GetIGameInterface()->InitialiseIGame(false);
    host::IGameNode& nodeA = *host->GetIGameInterface()->GetTopLevelNode(0);
    host::IGameNode& nodeB = *host->GetIGameInterface()->GetTopLevelNode(1);
    EXPECT_TRUE(isInstanceMaster(*host->GetInstanceMgr(), nodeA));
    EXPECT_FALSE(isInstanceMaster(*host->GetInstanceMgr(), nodeB));
    EXPECT_EQ(instanceMasterName(*host->GetInstanceMgr(), nodeB), "A");
}

}  // namespace
}  // namespace velinor
