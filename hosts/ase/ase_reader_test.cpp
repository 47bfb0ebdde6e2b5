#include "hosts/ase/ase_reader.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "hosts/ase/ase_test_support.h"

namespace velinor {
namespace {

using host::IGameObject;
using testing::ElementsAre;
using testing::HasSubstr;

std::string light(const std::string& name, const std::string& type, const std::string& settings) {
    return aseBlock("LIGHTOBJECT", aseName(name) + "*LIGHT_TYPE " + type + "\n" + aseTransform(name) +
                                       "*LIGHT_SHADOWS Off\n" + settings);
}

std::string settings(const std::string& falloff) {
    return aseBlock(
        "LIGHT_SETTINGS",
        "*TIMEVALUE 0\n*LIGHT_COLOR 0.25 0.5 1\n*LIGHT_INTENS 2.5\n*LIGHT_FALLOFF " + falloff + "\n");
}

TEST(AseReader, EveryKindOfObjectBecomesItsKindOfNode) {
    const ReadAse read = readAseText(
        kAseHeader + aseMeshObject("Mesh", aseTriangle()) + aseMeshObject("Camera01.Target", "") +
        aseBlock("SHAPEOBJECT",
                 aseName("Shape") + "*SHAPE_LINECOUNT 1\n*SHAPE_LINE 0 {\n*SHAPE_VERTEX_KNOT 0 0 0 0\n}\n") +
        light("Light", "Omni", settings("80")) +
        aseBlock("CAMERAOBJECT", aseName("Camera") + aseTransform("Camera") + "*CAMERA_TYPE Free\n") +
        aseBlock("HELPEROBJECT", aseName("Helper") + "*HELPER_CLASS \"Dummy\"\n" + aseTransform("Helper")));
    EXPECT_EQ(read.node(u"Mesh").object->type, IGameObject::IGAME_MESH);
    EXPECT_EQ(read.node(u"Camera01.Target").object->type, IGameObject::IGAME_HELPER);
    EXPECT_EQ(read.node(u"Shape").object->type, IGameObject::IGAME_SPLINE);
    EXPECT_EQ(read.node(u"Light").object->type, IGameObject::IGAME_LIGHT);
    EXPECT_EQ(read.node(u"Camera").object->type, IGameObject::IGAME_CAMERA);
    EXPECT_EQ(read.node(u"Helper").object->type, IGameObject::IGAME_HELPER);
    EXPECT_EQ(read.node(u"Helper").object->className, u"Dummy");
    EXPECT_EQ(read.notesOf("room.ase", "1 node (\"Shape\") has no transform"), 1);
    EXPECT_EQ(read.scene.roots.size(), 6U);
}

TEST(AseReader, LightsKeepColourAndIntensityApart) {
    struct Case {
        const char* type;
        const char* falloff;
        std::int32_t expected;
    };
    for (const Case& c :
         {Case{"Omni", "0", host::OMNI_LGT}, Case{"Target", "45", host::SPOT_LGT},
          Case{"Free", "45", host::SPOT_LGT}, Case{"Free", "0", host::OMNI_LGT},
          Case{"Directional", "0", host::DIRECT_LGT}, Case{"\"Directional\"", "45", host::DIRECT_LGT},
          Case{"Sunny", "45", host::OMNI_LGT}}) {
        const ReadAse read = readAseText(kAseHeader + light("L", c.type, settings(c.falloff)));
        const host::LightState expected{c.expected, {0.25F, 0.5F, 1}, 2.5F};
        EXPECT_EQ(read.node(u"L").object->light, expected) << c.type << ' ' << c.falloff;
        EXPECT_EQ(read.notesOf("room.ase", "1 node (\"L\") has a light of a type that is not known"),
                  std::string(c.type) == "Sunny" ? 1 : 0);
    }
}

// Blocks of one kind of object mean nothing in another.
TEST(AseReader, WhatAnObjectCannotHaveIsPassedOver) {
    const std::string odd = aseTriangle() + settings("5") + "*LIGHT_TYPE Omni\n*MATERIAL_REF -1\n";
    const ReadAse read =
        readAseText(kAseHeader + aseBlock("CAMERAOBJECT", aseName("C") + odd) +
                    aseBlock("SHAPEOBJECT", aseName("S") + odd) + light("L", "Omni", aseTriangle()));
    for (const SnapshotNode& node : read.scene.nodes)
        EXPECT_FALSE(node.object->mesh);
    EXPECT_FALSE(read.node(u"C").object->light);
    EXPECT_TRUE(read.node(u"L").object->light);
}

TEST(AseReader, TheFirstSettingsOfALightCount) {
    const std::string animation =
        aseBlock("LIGHT_ANIMATION", aseBlock("LIGHT_SETTINGS", "*LIGHT_INTENS 9\n"));
    const std::string later = aseBlock("LIGHT_SETTINGS", "*LIGHT_INTENS 8\n");
    const ReadAse read = readAseText(kAseHeader + light("L", "Omni", settings("1") + animation + later));
    EXPECT_EQ(read.node(u"L").object->light->intens, 2.5F);
    EXPECT_EQ(read.notesOf("room.ase", "animations"), 1);
    EXPECT_EQ(readAseText(kAseHeader + light("L", "Omni", "")).node(u"L").object->light, host::LightState());
}

TEST(AseReader, OfTwoTransformsTheOneOfTheNodesNameCounts) {
    const std::string own = aseTransform("C", "1 2 3");
    const std::string target = aseTransform("C.Target", "7 8 9");
    for (const std::string& both : {own + target, target + own, own + aseTransform("C", "4 5 6")}) {
        const ReadAse read = readAseText(kAseHeader + aseBlock("CAMERAOBJECT", aseName("C") + both));
        EXPECT_EQ(read.node(u"C").worldTransform.Translation(), (host::Point3{1, 2, 3}));
    }
}

TEST(AseReader, AWorldTransformHasItsRows) {
    const std::string rows =
        "*NODE_TM {\n*NODE_NAME \"A\"\n*INHERIT_POS 0 0 0\n*TM_ROW0 1 2 3\n*TM_ROW1 4,5 5 6\n"
        "*TM_ROW2 7 8 9\n*TM_ROW3 10 11 12\n*TM_POS 0 0 0\n*TM_ROTAXIS 1.#QNAN 0 0\n*TM_ROW4 0 0 0\n}\n";
    const ReadAse read = readAseText(kAseHeader + aseBlock("HELPEROBJECT", aseName("A") + rows));
    EXPECT_EQ(read.node(u"A").worldTransform,
              host::GMatrix({1, 2, 3, 0}, {4.5F, 5, 6, 0}, {7, 8, 9, 0}, {10, 11, 12, 1}));
    EXPECT_EQ(aseRefusal(kAseHeader + "*HELPEROBJECT {\n*NODE_TM {\n*TM_ROW0 1 -1.#IND 3\n}\n}\n"),
              "room.ase: line 4, column 12: \"-1.#IND\" is no number that can be used here");
}

TEST(AseReader, ParentsAreFoundByNameAndChildrenKeepTheirOrder) {
    const ReadAse read =
        readAseText(kAseHeader + aseHelper("Room") + aseHelper("A", "Room") + aseHelper("B", "A") +
                    aseHelper("A", "Room") + aseHelper("C", "A") + aseHelper("D", "Gone"));
    EXPECT_THAT(read.scene.roots, ElementsAre(0, 5));
    EXPECT_THAT(read.scene.nodes[0].children, ElementsAre(1, 3));
    EXPECT_THAT(read.scene.nodes[1].children, ElementsAre(2));
    EXPECT_THAT(read.scene.nodes[3].children, ElementsAre(4)) << "of two of one name the later";
    EXPECT_EQ(read.notesOf("room.ase", "1 node (\"D\") has a parent that the file does not hold"), 1);
}

TEST(AseReader, ObjectsWithinGroupsAreObjectsOfTheScene) {
    const std::string inner =
        "*GROUP \"Inner\" {\n" + aseHelper("Inner", "Outer") + aseHelper("B", "Inner") + "}\n";
    const ReadAse read = readAseText(kAseHeader + "*GROUP \"Outer\" {\n" + aseHelper("Outer") + inner +
                                     aseHelper("C", "Outer") + "}\n" + aseHelper("D"));
    ASSERT_EQ(read.scene.nodes.size(), 5U);
    EXPECT_THAT(read.scene.roots, ElementsAre(0, 4));
    EXPECT_THAT(read.scene.nodes[0].children, ElementsAre(1, 3));
    EXPECT_THAT(read.scene.nodes[1].children, ElementsAre(2));
}

TEST(AseReader, BlocksThatAreNotKnownAreToldOnceAKindAndWhatFollowsIsRead) {
    const std::string unknown = aseBlock("SOFTOBJECT", aseName("Cloth}{") + aseBlock("INNER", "1 2 {3}\n"));
    const ReadAse read =
        readAseText(kAseHeader + "*COMMENT \"a { b\"\n*NEWTHING 5\n" + unknown + unknown +
                    aseBlock("HELPEROBJECT", aseName("A") + "*NEW { { } }\n" + aseTransform("A")));
    EXPECT_EQ(read.scene.nodes.size(), 1U);
    EXPECT_EQ(read.notesOf("room.ase", "not known and left out: *SOFTOBJECT"), 1);
    std::string many = kAseHeader + aseHelper("A");
    for (int i = 0; i < 100; ++i)
        many += aseBlock("KIND" + std::to_string(i), "");
    const ReadAse readMany = readAseText(many);
    for (const ImportNote& note : readMany.notes.notes())
        EXPECT_LT(note.text.size(), 300U);
}

TEST(AseReader, TheAnimationStartsAtTheFirstFrame) {
    const auto start = [](const std::string& scene) {
        return readAseText(kAseHeader + aseBlock("SCENE", scene) + aseHelper("A")).scene.animationStart;
    };
    EXPECT_EQ(start("*SCENE_FIRSTFRAME 5\n*SCENE_LASTFRAME 100\n*SCENE_TICKSPERFRAME 160\n"), 800);
    EXPECT_EQ(start("*SCENE_FIRSTFRAME -5\n*SCENE_TICKSPERFRAME 160\n"), -800);
    EXPECT_EQ(start("*SCENE_FIRSTFRAME 2147483647\n*SCENE_TICKSPERFRAME 2147483647\n"), 2147483647);
    EXPECT_EQ(start(""), 0);
}

TEST(AseReader, WhatNoAseFileHoldsIsToldOnce) {
    const ReadAse read = readAseText(kAseHeader + aseHelper("A") + aseHelper("B"));
    EXPECT_EQ(read.notes.notes().size(), 1U);
    EXPECT_EQ(read.notesOf("room.ase", "user properties, layers, instances"), 1);
}

TEST(AseReader, WhatManyNodesLackIsToldOnceAKind) {
    const std::string mesh = aseTriangle("*MESH_NUMTVERTEX 1\n*MESH_TVERTLIST {\n*MESH_TVERT 0 nan 0 0\n}\n" +
                                         aseBlock("MESH_NORMALS", "*MESH_FACENORMAL 0 0 0 1\n"));
    std::string text = kAseHeader;
    for (const char* name : {"A", "B", "C", "D"}) {
        text += aseBlock("GEOMOBJECT", aseName(name) + "*NODE_PARENT \"Gone\"\n" +
                                           aseBlock("NODE_TM", "*TM_ROW0 -1 0 0\n") + mesh);
        text += aseBlock("LIGHTOBJECT", aseName(name) + "*LIGHT_TYPE Sunny\n");
    }
    const ReadAse read = readAseText(text);
    const std::string nodes = "4 nodes (\"A\", \"B\", \"C\", ...) have ";
    const std::string meshes = "4 meshes (\"A\", \"B\", \"C\", ...) have ";
    const std::string told[] = {nodes + "no transform", nodes + "a parent that the file does not hold",
                                nodes + "a light of a type", meshes + "4 texture coordinates",
                                meshes + "faces that oppose"};
    for (const std::string& note : told)
        EXPECT_EQ(read.notesOf("room.ase", note), 1) << note;
    EXPECT_EQ(read.notes.notes().size(), 6U);
}

TEST(AseReader, AnAnimatedObjectIsToldOnceAFile) {
    const std::string animated =
        aseBlock("HELPEROBJECT",
                 aseName("A") + aseTransform("A") +
                     aseBlock("TM_ANIMATION",
                              aseName("A") + aseBlock("CONTROL_POS_TRACK", "*CONTROL_POS_SAMPLE 0 0 0 0\n")));
    EXPECT_EQ(readAseText(kAseHeader + animated + animated).notesOf("room.ase", "animations are left out"),
              1);
}

TEST(AseReader, FilesThatAreNoScenesAreRefused) {
    EXPECT_THAT(aseRefusal(""),
                HasSubstr("room.ase: line 1, column 1: an ASE file begins with *3DSMAX_ASCIIEXPORT"));
    EXPECT_THAT(aseRefusal("; FBX 7.3.0 project file\n"), HasSubstr("an ASE file begins with"));
    EXPECT_THAT(aseRefusal("*COMMENT \"x\"\n" + kAseHeader),
                HasSubstr("line 1, column 1: an ASE file begins with"));
    EXPECT_EQ(aseRefusal(kAseHeader), "room.ase: holds nothing: no mesh, shape, light, camera or helper");
    EXPECT_THAT(aseRefusal(kAseHeader + "*HELPEROBJECT\n*X"),
                HasSubstr("line 3, column 1: there is \"*\" where the block of *HELPEROBJECT"));
    EXPECT_THAT(aseRefusal(kAseHeader + aseHelper("A") + "}"),
                HasSubstr("line 12, column 1: there is no open block"));
}

TEST(AseReader, AFileMayStandOnOneLine) {
    const std::string text = kAseHeader + "*COMMENT \"x\"\n" + aseMeshObject("A", aseTriangle()) +
                             "*GROUP \"G\" {\n" + aseHelper("B", "A") + "}\n";
    std::string line = text;
    std::ranges::replace(line, '\n', ' ');
    EXPECT_EQ(readAseText(line).scene, readAseText(text).scene);
}

TEST(AseReader, ManyStringsOnOneLineCostNoSquare) {
    constexpr std::size_t kNodes = 100000;
    std::string text = "*3DSMAX_ASCIIEXPORT 200 ";
    for (std::size_t i = 0; i < kNodes; ++i)
        text += "*HELPEROBJECT { *NODE_NAME \"A\" *COMMENT \"{\" } ";
    EXPECT_EQ(readAseText(text + "*COMMENT \"x\"\n").scene.nodes.size(), kNodes);
    EXPECT_EQ(readAseText(text).scene.nodes.size(), kNodes);
}

TEST(AseReader, NamesMayBeLongAndEmptyAndHoldAnything) {
    const std::string name(1 << 20, 'n');
    const ReadAse read = readAseText(kAseHeader + aseHelper(name) + aseHelper(name, name) + aseHelper("") +
                                     aseHelper("A\tB\x01"));
    EXPECT_EQ(read.scene.nodes[0].name.size(), name.size());
    EXPECT_THAT(read.scene.nodes[0].children, ElementsAre(1));
    EXPECT_EQ(read.scene.nodes[2].name, u"");
    EXPECT_EQ(read.scene.nodes[3].name, u"A\tB\u0001");
}

TEST(AseReader, DepthAndNumbersOfNodesCostNoStackAndNoSquare) {
    constexpr std::size_t kNodes = 100000;
    std::string text = kAseHeader;
    for (std::size_t i = 0; i < kNodes; ++i)
        text += "*GROUP \"G\" {\n" + aseHelper(std::to_string(i), i == 0 ? "" : std::to_string(i - 1));
    text += std::string(kNodes, '}');
    const ReadAse read = readAseText(text);
    EXPECT_EQ(read.scene.nodes.size(), kNodes);
    EXPECT_THAT(read.scene.roots, ElementsAre(0));
}

// Asks to stop after the first of many steps.
class StoppedProgress final : public Progress {
  public:
    void beginPhase(std::string_view name, std::uint64_t total) override {
        EXPECT_EQ(name, "Reading the scene file");
        total_ = total;
    }
    void advance(std::uint64_t amount) override {
        done_ += amount;
        if (isStopped_ && done_ > total_ / 2) throw std::string("stopped");
    }
    std::uint64_t done() const { return done_; }
    std::uint64_t total() const { return total_; }
    void stop() { isStopped_ = true; }

  private:
    std::uint64_t total_ = 0;
    std::uint64_t done_ = 0;
    bool isStopped_ = false;
};

TEST(AseReader, ProgressCountsTheBytesAndMayStopWithinAMesh) {
    constexpr int kVertices = 100000;
    std::string vertices = "*MESH_NUMVERTEX " + std::to_string(kVertices) + "\n*MESH_VERTEX_LIST {\n";
    for (int i = 0; i < kVertices; ++i)
        vertices += "*MESH_VERTEX " + std::to_string(i) + " 0 0 0\n";
    const std::string text = kAseHeader + aseMeshObject("A", aseBlock("MESH", vertices + "}\n"));
    ImportNotes notes;
    StoppedProgress whole;
    readAse(text, "room.ase", {}, whole, notes);
    EXPECT_EQ(whole.done(), text.size());
    EXPECT_EQ(whole.total(), text.size());
    StoppedProgress stopped;
    stopped.stop();
    EXPECT_THROW(readAse(text, "room.ase", {}, stopped, notes), std::string);
    EXPECT_LT(stopped.done(), text.size() * 3 / 4);
}

TEST(AseReader, KnowsItsFilesByTheirEnding) {
    for (const char* file : {"a.ase", "b/ROOM.ASE", "c.x.Ase", "d.ask"})
        EXPECT_TRUE(isAseFile(file)) << file;
    for (const char* file : {"ase", "a.asee", "a.ase.json", ".ase", ""})
        EXPECT_FALSE(isAseFile(file)) << file;
}

}  // namespace
}  // namespace velinor
