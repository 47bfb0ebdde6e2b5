#include "descriptors/scene_descriptor.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/support/test_scene.h"

namespace velinor {
namespace {

const float kNaN = std::numeric_limits<float>::quiet_NaN();

// index.jsx of a scene, and what was told on the way.
struct Descriptor {
    std::string text;
    std::vector<std::string> told;
};

Descriptor describe(const TestScene& scene, const ExportSettings& settings = {}) {
    TestCollection collection(scene);
    collection.settings = settings;
    collection.run();
    StringSink sink;
    writeSceneDescriptor(collection.scene.rootRecord, collection.settings, sink, collection.report,
                         collection.progress);
    return {sink.text(), collection.told()};
}

std::string textOf(const TestScene& scene, const ExportSettings& settings = {}) {
    return describe(scene, settings).text;
}

std::string inRoot(const std::string& text) {
    return "<root>\n" + text + "</root>\n";
}

constexpr char kPlacementAtOrigin[] =
    "orientation={{ w: -1.000000, x: 0.000000, y: 0.000000, z: 0.000000 }}\n"
    "\t\tposition={{ x: 0.000000, y: 0.000000, z: 0.000000 }}\n"
    "\t\tscale={{ x: 1.000000, y: 1.000000, z: 1.000000 }}>\n";

std::string meshElement(const std::string& name) {
    return "\t\t<mesh\n\t\t\t{...{ url: '" + name +
           ".mesh' }}\n\t\t\tphysical={{ raycast: true, shapes: [ { shape: \"mesh\", mass: 1, offset: { x: "
           "0, y: 0, "
           "z: 0 }, rotation: { w: 1, x: 0, y: 0, z: 0 }, mesh: \"" +
           name + ".mesh_phy.obj\" } ] }}>\n\t\t</mesh>\n";
}

std::string lightElement(const std::string& type, const std::string& colour) {
    return "\t\t<light\n\t\t\t{...{ lighttype: \"" + type + "\" }}\n\t\t\tdiffuse={{ " + colour +
           " }}\n\t\t\tdirection={{ x: 0, y: -1, z: 0 }}\n\t\t\tspecular={{ " + colour +
           " }}>\n\t\t</light>\n";
}

constexpr char kShine[] =
    "orientation={{ w: -0.707107, x: 0.707107, y: 0.000000, z: 0.000000 }}\n"
    "\t\tposition={{ x: 0.000000, y: 0.000000, z: 0.000000 }}>\n";
constexpr char kHelperShine[] =
    "orientation={{ w: -0.707107, x: -0.707107, y: -0.000000, z: -0.000000 }}\n"
    "\t\tposition={{ x: 0.000000, y: 0.000000, z: 0.000000 }}>\n";
constexpr char kWhite[] = "r: 1.000000, g: 1.000000, b: 1.000000";

TEST(SceneDescriptor, OfAnEmptySceneIsAnEmptyRoot) {
    EXPECT_EQ(textOf(TestScene()), "<root>\n</root>\n");
}

TEST(SceneDescriptor, PlacesAHelperAtTheOrigin) {
    TestScene scene;
    scene.addHelper(u"Helper");
    EXPECT_EQ(textOf(scene),
              inRoot("\t<node\n\t\torientation={{ w: -1.000000, x: 0.000000, y: 0.000000, z: "
                     "0.000000 }}\n\t\tposition={{ x: 0.000000, y: 0.000000, z: 0.000000 }}\n\t\tscale={{ "
                     "x: 1.000000, y: 1.000000, z: 1.000000 }}>\n\t</node>\n"));
}

TEST(SceneDescriptor, PlacesANodeAtOneTwoThree) {
    TestScene scene;
    scene[scene.addHelper(u"Helper")].worldTransform = translation(1, 2, 3);
    EXPECT_EQ(textOf(scene),
              inRoot("\t<node\n\t\torientation={{ w: -1.000000, x: 0.000000, y: 0.000000, z: "
                     "0.000000 }}\n\t\tposition={{ x: 1.000000, y: 3.000000, z: -2.000000 }}\n\t\tscale={{ "
                     "x: 1.000000, y: 1.000000, z: 1.000000 }}>\n\t</node>\n"));
}

TEST(SceneDescriptor, SwapsAndNamesTheScale) {
    TestScene scene;
    scene[scene.addHelper(u"Helper")].worldTransform = {
        {2, 0, 0, 0}, {0, 3, 0, 0}, {0, 0, 4, 0}, {0, 0, 0, 1}};
    EXPECT_NE(textOf(scene).find("scale={{ x: 2.000000, y: 4.000000, z: 3.000000 }}"), std::string::npos);
}

TEST(SceneDescriptor, PlacesAChildRelativeToItsParent) {
    TestScene scene;
    const auto parent = scene.addHelper(u"Parent");
    scene[parent].worldTransform = {{0, 2, 0, 0}, {-2, 0, 0, 0}, {0, 0, 2, 0}, {5, 6, 7, 1}};
    const auto same = scene.addHelper(u"Same", parent);
    scene[same].worldTransform = scene[parent].worldTransform;
    const auto moved = scene.addHelper(u"Moved", parent);
    scene[moved].worldTransform = translation(1, 0, 0) * scene[parent].worldTransform;
    const std::string text = textOf(scene);
    EXPECT_NE(
        text.find(
            "\t\t<node\n\t\t\torientation={{ w: -1.000000, x: 0.000000, y: 0.000000, z: 0.000000 "
            "}}\n\t\t\tposition={{ x: 0.000000, y: 0.000000, z: 0.000000 }}\n\t\t\tscale={{ x: 1.000000, y: "
            "1.000000, z: 1.000000 }}>\n\t\t</node>\n"),
        std::string::npos)
        << text;
    EXPECT_NE(text.find("\t\t\tposition={{ x: 1.000000, y: 0.000000, z: 0.000000 }}"), std::string::npos)
        << text;
}

TEST(SceneDescriptor, GivesAMeshItsFilesAndTheParametersOfItsName) {
    TestScene scene;
    scene.addMesh(u"Chair [color: red]");
    EXPECT_EQ(textOf(scene), inRoot(std::string("\t<node\n\t\tcolor=\"red\"\n\t\t") + kPlacementAtOrigin +
                                    meshElement("Chair") + "\t</node>\n"));
}

TEST(SceneDescriptor, OrdersParametersByBytesAmongTheFixedAttributes) {
    TestScene scene;
    scene.addHelper(u"H [z: 1, pz: 2, Z: 3, p: 4, p: 5, position: 6, Ж: \"q\"]");
    const Descriptor descriptor = describe(scene);
    EXPECT_EQ(
        descriptor.text,
        inRoot("\t<node\n\t\tZ=\"3\"\n\t\torientation={{ w: -1.000000, x: 0.000000, y: 0.000000, z: 0.000000 "
               "}}\n\t\tp=\"4\"\n\t\tposition={{ x: 0.000000, y: 0.000000, z: 0.000000 "
               "}}\n\t\tpz=\"2\"\n\t\tscale={{ x: 1.000000, y: 1.000000, z: 1.000000 "
               "}}\n\t\tz=\"1\"\n\t\tЖ=\"\"q\"\">\n\t</node>\n"));
    EXPECT_EQ(descriptor.told.size(), 1U);
}

TEST(SceneDescriptor, PointsInstancesAtTheirMastersFiles) {
    TestScene scene;
    const auto a = scene.addMesh(u"A");
    const auto b = scene.addMesh(u"B");
    const auto c = scene.addMesh(u"C [mass: 2]");
    for (const auto node : {a, b, c})
        scene[node].instances = InstanceList({a, b, c});
    const std::string plain =
        std::string("\t<node\n\t\t") + kPlacementAtOrigin + meshElement("C") + "\t</node>\n";
    const std::string master =
        std::string("\t<node\n\t\tmass=\"2\"\n\t\t") + kPlacementAtOrigin + meshElement("C") + "\t</node>\n";
    EXPECT_EQ(textOf(scene), inRoot(plain + plain + master));
}

TEST(SceneDescriptor, PutsChildrenBehindTheMesh) {
    TestScene scene;
    const auto mesh = scene.addMesh(u"Mesh");
    const auto first = scene.addHelper(u"First", mesh);
    scene.addHelper(u"Inner", first);
    scene.addHelper(u"Second", mesh);
    const std::string text = textOf(scene);
    std::string tags;
    for (std::size_t at = text.find('<'); at != std::string::npos; at = text.find('<', at + 1)) {
        tags += text.substr(at, text.find_first_of(">\n", at) - at) + " ";
    }
    EXPECT_EQ(tags, "<root <node <mesh </mesh <node <node </node </node <node </node </node </root ");
}

TEST(SceneDescriptor, WritesPointAndSpotLightsWithoutScale) {
    struct Case {
        std::int32_t type;
        const char* name;
    };
    for (const auto& [type, name] :
         {Case{0, "point"}, Case{1, "spot"}, Case{4, "point"}, Case{-1, "point"}}) {
        TestScene scene;
        scene.addLight(u"Lamp [scale: 3]", {type, {0.5F, 0.25F, 1}, 1});
        EXPECT_EQ(textOf(scene),
                  inRoot("\t<node\n\t\torientation={{ w: -0.707107, x: 0.707107, y: 0.000000, z: 0.000000 "
                         "}}\n\t\tposition={{ x: 0.000000, y: 0.000000, z: 0.000000 }}\n\t\tscale=\"3\">\n" +
                         lightElement(name, "r: 0.500000, g: 0.250000, b: 1.000000") + "\t</node>\n"))
            << type;
    }
}

TEST(SceneDescriptor, ClampsTheChannelsOfALight) {
    struct Case {
        const char* name;
        host::Point3 colour;
        float intensity;
        const char* text;
    };
    for (const Case& c : {
             Case{"above one", {2, 1, 0.5F}, 1, "r: 1.000000, g: 1.000000, b: 0.500000"},
             Case{"times intensity", {0.25F, 0.5F, 1}, 2, "r: 0.500000, g: 1.000000, b: 1.000000"},
             Case{"negative", {-1, 0.5F, 0}, 1, "r: 0.000000, g: 0.500000, b: 0.000000"},
             Case{"negative intensity", {-1, 0.5F, 0.25F}, -1, "r: 1.000000, g: 0.000000, b: 0.000000"},
             Case{"not a number", {kNaN, 1, 1}, 1, "r: 0.000000, g: 1.000000, b: 1.000000"},
             Case{"infinite",
                  {1, -1, 0.5F},
                  std::numeric_limits<float>::infinity(),
                  "r: 1.000000, g: 0.000000, b: 1.000000"},
         }) {
        TestScene scene;
        scene.addLight(u"Lamp", {0, c.colour, c.intensity});
        EXPECT_NE(textOf(scene).find(c.text), std::string::npos) << c.name << "\n" << textOf(scene);
    }
}

TEST(SceneDescriptor, AddsAHelperLightToADirectionalLight) {
    for (const std::int32_t type : {2, 3}) {
        TestScene scene;
        scene.addLight(u"Sun [warm: yes]", {type, {1, 1, 0.5F}, 1});
        EXPECT_EQ(
            textOf(scene),
            inRoot("\t<node\n\t\torientation={{ w: -0.707107, x: 0.707107, y: 0.000000, z: 0.000000 "
                   "}}\n\t\tposition={{ x: 0.000000, y: 0.000000, z: 0.000000 }}\n\t\twarm=\"yes\">\n" +
                   lightElement("directional", "r: 1.000000, g: 1.000000, b: 0.500000") +
                   "\t</node>\n\t<node\n\t\t" + kHelperShine +
                   lightElement("directional", "r: 0.800000, g: 0.800000, b: 0.400000") + "\t</node>\n"));
    }
}

TEST(SceneDescriptor, MultipliesTheHelperFractionBeforeClamping) {
    TestScene scene;
    scene.addLight(u"Sun", {2, {3, 1, 1}, 1});
    ExportSettings settings;
    settings.helperLightFraction = 0.5F;
    EXPECT_NE(textOf(scene, settings).find("r: 1.000000, g: 0.500000, b: 0.500000"), std::string::npos);
}

// Turned about up, which does not commute with the constant turn: the order of the factors shows.
TEST(SceneDescriptor, MultipliesTheConstantTurnOnTheRight) {
    TestScene scene;
    const auto light = scene.addLight(u"Sun", {2, {1, 1, 1}, 1});
    scene[light].worldTransform = {{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    const std::string text = textOf(scene);
    EXPECT_NE(
        text.find("\t<node\n\t\torientation={{ w: -0.500000, x: 0.500000, y: -0.500000, z: -0.500000 }}"),
        std::string::npos)
        << text;
    EXPECT_NE(
        text.find("\t<node\n\t\torientation={{ w: -0.500000, x: -0.500000, y: 0.500000, z: 0.500000 }}"),
        std::string::npos)
        << text;
    scene[light].worldTransform = {{0.6F, 0.8F, 0, 0}, {-0.8F, 0.6F, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    EXPECT_NE(textOf(scene).find("orientation={{ w: -0.632456, x: 0.632456, y: -0.316228, z: -0.316228 }}"),
              std::string::npos);
}

TEST(SceneDescriptor, TurnsAChildIntoItsParentsSpace) {
    // The parent is turned by 90 degrees about host X and moved, the child by 90 degrees about host Z in the
    // world. Relative to the parent, local x lies along the parent's z, and so on: a third of a turn about a
    // diagonal.
    TestScene scene;
    const auto parent = scene.addHelper(u"Parent");
    scene[parent].worldTransform = {{1, 0, 0, 0}, {0, 0, 1, 0}, {0, -1, 0, 0}, {1, 2, 3, 1}};
    const auto child = scene.addHelper(u"Child", parent);
    scene[child].worldTransform = {{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {1, 3, 5, 1}};
    const std::string text = textOf(scene);
    // Right-handed host: parent-from-child = (+90 about Z) then (-90 about X): (w, x, y, z) = (1, -1, 1, 1)
    // / 2. In package axes (x, z, -y), with both signs turned: (-1, 1, -1, 1) / 2.
    EXPECT_NE(text.find("orientation={{ w: -0.500000, x: 0.500000, y: -0.500000, z: 0.500000 }}"),
              std::string::npos)
        << text;
    // The offset (0, 1, 2) in the world is (0, 2, -1) along the parent's axes, in package axes (0, -1, -2).
    EXPECT_NE(text.find("\t\t\tposition={{ x: 0.000000, y: -1.000000, z: -2.000000 }}"), std::string::npos)
        << text;
}

TEST(SceneDescriptor, NestsEverythingBelowADirectionalLightInItsHelperLight) {
    TestScene scene;
    const auto sun = scene.addLight(u"Sun", {2, {1, 1, 1}, 1});
    const auto child = scene.addHelper(u"Child", sun);
    scene.addHelper(u"Grandchild", child);
    const auto inner = scene.addLight(u"Inner", {2, {1, 1, 1}, 1}, sun);
    scene.addHelper(u"Below inner", inner);
    scene.addLight(u"Last", {2, {1, 1, 1}, 1});
    const std::string text = textOf(scene);
    std::string tags;
    for (std::size_t at = text.find('<'); at != std::string::npos; at = text.find('<', at + 1)) {
        tags += text.substr(at, text.find_first_of(">\n", at) - at) + " ";
    }
    EXPECT_EQ(
        tags,
        "<root <node <light </light </node <node <light </light "
        "<node <node </node </node <node <light </light </node <node <light </light <node </node </node "
        "</node <node <light </light </node <node <light </light </node </root ");
}

TEST(SceneDescriptor, WritesAnInstancesMasterByItsLowBytes) {
    TestScene scene;
    const auto a = scene.addMesh(u"A");
    const auto b = scene.addMesh(u"\u00E9\u0416");
    for (const auto node : {a, b})
        scene[node].instances = InstanceList({a, b});
    const std::string text = textOf(scene);
    EXPECT_NE(text.find("url: '\xE9\x16.mesh'"), std::string::npos);
    EXPECT_NE(text.find("url: '\u00E9\u0416.mesh'"), std::string::npos);
}

TEST(SceneDescriptor, AddsNoHelperLightWhereTheyAreOff) {
    TestScene scene;
    scene.addLight(u"Sun", {2, {1, 1, 1}, 1});
    ExportSettings settings;
    settings.helperLights = false;
    EXPECT_EQ(textOf(scene, settings), inRoot(std::string("\t<node\n\t\t") + kShine +
                                              lightElement("directional", kWhite) + "\t</node>\n"));
}

TEST(SceneDescriptor, PutsADirectionalLightsChildrenBelowItsHelperLight) {
    TestScene scene;
    const auto sun = scene.addLight(u"Sun", {2, {1, 1, 1}, 1});
    scene.addHelper(u"Child", sun);
    scene.addHelper(u"After");
    const std::string text = textOf(scene);
    std::string tags;
    for (std::size_t at = text.find('<'); at != std::string::npos; at = text.find('<', at + 1)) {
        tags += text.substr(at, text.find_first_of(">\n", at) - at) + " ";
    }
    EXPECT_EQ(
        tags,
        "<root <node <light </light </node <node <light </light <node </node </node <node </node </root ");
}

SnapshotObject sunPositioner(float north, float azimuth, float altitude) {
    SnapshotObject object = TestScene::ofType(1);
    object.className = u"My Sun Positioner 2";
    object.light = host::LightState{0, {0.1F, 0.1F, 0.1F}, 0.5F};
    object.parameters = {
        {u"north_direction_deg", north}, {u"azimuth_deg", azimuth}, {u"altitude_deg", altitude}};
    return object;
}

TEST(SceneDescriptor, AimsASunPositionerByItsParameters) {
    struct Case {
        float north, azimuth, altitude;
        const char* orientation;
    };
    // With an unturned node both rotations cancel: R * M * R^-1 of the identity is the identity.
    for (const Case& c : {Case{0, 0, 0, "w: 0.707107, x: 0.707107, y: 0.000000, z: 0.000000"},
                          Case{10, 120, 35, "w: 0.707107, x: 0.707107, y: 0.000000, z: 0.000000"}}) {
        TestScene scene;
        scene.add(u"Sun", sunPositioner(c.north, c.azimuth, c.altitude));
        ExportSettings settings;
        settings.helperLights = false;
        const std::string text = textOf(scene, settings);
        EXPECT_NE(text.find("lighttype: \"directional\""), std::string::npos) << text;
        EXPECT_NE(text.find(std::string("diffuse={{ ") + kWhite), std::string::npos) << text;
        EXPECT_NE(text.find(c.orientation), std::string::npos) << text;
    }
}

TEST(SceneDescriptor, TurnsASunPositionersNodeByConjugation) {
    // The node is turned +90 degrees about host Z, which is package Y: a rotation about Y by 90 degrees.
    // Conjugated by 90 degrees about X (altitude 90) it becomes a rotation about Z; then azimuth -90 turns
    // that axis about Y by +90 into one about X.
    TestScene scene;
    const auto sun = scene.add(u"Sun", sunPositioner(0, 0, 90));
    scene[sun].worldTransform = {{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    ExportSettings settings;
    settings.helperLights = false;
    // Package rotation about +Y by 90 degrees, row vectors; Rx * M * Rx^-1 with Rx the row matrix of +90
    // about X maps the axis through Rx^-1: (0, 1, 0) comes from (0, 0, -1), so the result turns about -Z.
    // Left-handed quaternion of 90 about -Z: (0, 0, h, h); times (1, 0, 0, 1), normalised: (h*h + ..) = (0.5,
    // 0.5, 0.5, 0.5).
    const std::string text = textOf(scene, settings);
    EXPECT_NE(text.find("orientation={{ w: 0.500000, x: 0.500000, y: 0.500000, z: 0.500000 }}"),
              std::string::npos)
        << text;
}

TEST(SceneDescriptor, TurnsASunPositionerByAltitudeFirstAndThenByAzimuthAndNorth) {
    TestScene scene;
    const auto sun = scene.add(u"Sun", sunPositioner(10, 20, 30));
    scene[sun].worldTransform = {{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    const std::string text = textOf(scene);
    // The turn by 90 degrees about Y has the axis (0, cos 30, sin 30 by the row matrix of X) after the
    // altitude, and is then turned by -30 degrees about Y. The helper light has the inverse, and 0.8 of the
    // white.
    EXPECT_NE(text.find("orientation={{ w: 0.375000, x: 0.625000, y: -0.216506, z: 0.649519 }}"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("orientation={{ w: 0.375000, x: -0.625000, y: 0.216506, z: -0.649519 }}"),
              std::string::npos);
    EXPECT_NE(text.find("diffuse={{ r: 0.800000, g: 0.800000, b: 0.800000 }}"), std::string::npos);
}

TEST(SceneDescriptor, TellsWhichNodesAreMirroredFlatOrNotFinite) {
    TestScene scene;
    const auto mirrored = scene.addMesh(u"Mirrored");
    scene[mirrored].worldTransform = {{-1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    const auto below = scene.addMesh(u"Below", mirrored);
    scene[below].worldTransform = scene[mirrored].worldTransform;
    scene[scene.addHelper(u"Flat")].worldTransform = {{1, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    scene[scene.addHelper(u"Nowhere")].worldTransform = translation(kNaN, 0, 0);
    EXPECT_EQ(describe(scene).told, (std::vector<std::string>{"node-mirrored Mirrored", "node-singular Flat",
                                                              "node-not-finite Nowhere"}));
}

TEST(SceneDescriptor, KeepsTheChildrenOfAFlatNodeInTheirPlane) {
    TestScene scene;
    const auto flat = scene.addHelper(u"Flat");
    scene[flat].worldTransform = {{2, 0, 0, 0}, {0, 2, 0, 0}, {0, 0, 0, 0}, {1, 1, 1, 1}};
    const auto child = scene.addHelper(u"Child", flat);
    scene[child].worldTransform = {{2, 0, 0, 0}, {0, 2, 0, 0}, {0, 0, 0, 0}, {5, 7, 1, 1}};
    const std::string text = textOf(scene);
    EXPECT_EQ(describe(scene).told, (std::vector<std::string>{"node-singular Flat"}));
    EXPECT_NE(text.find("position={{ x: 2.000000, y: 0.000000, z: -3.000000 }}"), std::string::npos) << text;
    EXPECT_EQ(text.find("nan"), std::string::npos) << text;
    EXPECT_EQ(text.find("inf"), std::string::npos) << text;
}

TEST(SceneDescriptor, WritesAChainOfThreeThousandNodes) {
    TestScene scene;
    TestScene::Parent parent;
    for (int i = 0; i < 3000; ++i)
        parent = scene.addHelper(u"Link", parent);
    const std::string text = textOf(scene);
    EXPECT_NE(text.find("\n" + std::string(3000, '\t') + "</node>\n"), std::string::npos);
}

TEST(SceneDescriptor, TellsOnceWhereLightsShine) {
    TestScene scene;
    scene.addLight(u"Sun", {2, {1, 1, 1}, 1});
    scene.addLight(u"Lamp", {0, {1, 1, 1}, 1});
    EXPECT_EQ(describe(scene).told, (std::vector<std::string>{"light-direction index.jsx"}));
}

TEST(SceneDescriptor, TellsWhatHangsBelowLights) {
    TestScene scene;
    const auto lamp = scene.addLight(u"Lamp", {0, {1, 1, 1}, 1});
    const auto shade = scene.addHelper(u"Shade", lamp);
    scene.addHelper(u"Switch", shade);
    EXPECT_EQ(describe(scene).told,
              (std::vector<std::string>{"light-direction index.jsx", "node-below-light Shade"}));
}

}  // namespace
}  // namespace velinor
