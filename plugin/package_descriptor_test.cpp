#include "plugin/package_descriptor.h"

#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>

#include "tests/support/test_scene.h"

namespace velinor {
namespace {

std::string describe(const TestScene& scene, const ExportSettings& settings = {}) {
    TestCollection collection(scene);
    collection.settings = settings;
    collection.run();
    return BuildPackageDescriptor(settings, collection.scene);
}

nlohmann::json cameraOf(const TestScene& scene, const ExportSettings& settings = {}) {
    return nlohmann::json::parse(describe(scene, settings)).at("camera");
}

constexpr char kDefaultPlacement[] =
    R"({"orientation":{"w":1.0,"x":0.0,"y":0.0,"z":0.0},"position":{"x":0.0,"y":0.0,"z":0.0}})";

// A camera-bounds node with the box (-1, -2, -3) to (4, 5, 6).
SnapshotRef addBounds(TestScene& scene, std::u16string name) {
    const auto node = scene.addMesh(std::move(name));
    scene[node].object->boundingBox = host::Box3{{-1, -2, -3}, {4, 5, 6}};
    return node;
}

TEST(PackageDescriptor, AtDefaultsIsThisText) {
    EXPECT_EQ(describe(TestScene()), R"({
    "camera": {
        "orientation": {
            "w": 1.0,
            "x": 0.0,
            "y": 0.0,
            "z": 0.0
        },
        "position": {
            "x": 0.0,
            "y": 0.0,
            "z": 0.0
        }
    },
    "deploy-name": "test",
    "description": {
        "full": "",
        "short": ""
    },
    "environment": {
        "ambient": {
            "a": 1,
            "b": 0.20000000298023224,
            "g": 0.20000000298023224,
            "r": 0.20000000298023224
        },
        "background": {
            "a": 1,
            "b": 0.20000000298023224,
            "g": 0.20000000298023224,
            "r": 0.20000000298023224
        },
        "skybox": {
            "material": "FXUnlitSkyboxCubic"
        }
    },
    "isPrivate": "false",
    "isPublic": "false",
    "local": "./resources",
    "main": "index.jsx",
    "mainTag": "",
    "meta": {
        "affliliation": "",
        "creator": ""
    },
    "name": "",
    "price": 0,
    "tags": "[]",
    "thumbnails": "[]",
    "version": 0
})");
}

TEST(PackageDescriptor, UsesTheAmbientColourForTheBackgroundToo) {
    ExportSettings settings;
    settings.ambientRed = 0.5F;
    settings.ambientGreen = -1;
    settings.ambientBlue = 3;
    const auto environment = nlohmann::json::parse(describe(TestScene(), settings)).at("environment");
    EXPECT_EQ(environment.at("ambient").dump(), R"({"a":1,"b":3.0,"g":-1.0,"r":0.5})");
    EXPECT_EQ(environment.at("background"), environment.at("ambient"));
}

TEST(PackageDescriptor, StartsAtTheFirstCamera) {
    TestScene scene;
    const auto first = scene.addCamera(u"First");
    scene[first].worldTransform = translation(1, 2, 3);
    scene[scene.addCamera(u"Second")].worldTransform = translation(7, 8, 9);
    EXPECT_EQ(cameraOf(scene).dump(),
              R"({"orientation":{"w":-1.0,"x":1.0,"y":0.0,"z":0.0},"position":{"x":1.0,"y":3.0,"z":-2.0}})");
}

TEST(PackageDescriptor, WritesAnOrientationOfLengthRootTwo) {
    TestScene scene;
    const auto camera = scene.addCamera(u"Camera");
    scene[camera].worldTransform = {{0.6F, 0.8F, 0, 0}, {-0.8F, 0.6F, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    const auto q = cameraOf(scene).at("orientation");
    double squares = 0;
    for (const char* key : {"w", "x", "y", "z"})
        squares += q.at(key).get<double>() * q.at(key).get<double>();
    EXPECT_NEAR(std::sqrt(squares), std::sqrt(2.0), 1e-6);
}

TEST(PackageDescriptor, MultipliesTheConstantTurnOnTheRight) {
    TestScene scene;
    const auto camera = scene.addCamera(u"Camera");
    scene[camera].worldTransform = {{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    EXPECT_EQ(
        cameraOf(scene).at("orientation").dump(),
        R"({"w":-0.7071067690849304,"x":0.7071067690849304,"y":-0.7071067690849304,"z":-0.7071067690849304})");
}

TEST(PackageDescriptor, LimitsAtZeroHaveTheSignsOfTheirSums) {
    TestScene scene;
    const auto bounds = scene.addMesh(u"Camera_Bounds");
    scene[bounds].object->boundingBox = host::Box3{{0, 0, 0}, {1, 1, 1}};
    EXPECT_EQ(cameraOf(scene).at("limits").dump(),
              R"({"max":{"x":1.0,"y":1.0,"z":-0.0},"min":{"x":0.0,"y":0.0,"z":-1.0}})");
}

TEST(PackageDescriptor, KeepsTheDefaultsWithoutTheCamera) {
    TestScene scene;
    scene[scene.addCamera(u"Camera")].worldTransform = translation(1, 2, 3);
    ExportSettings settings;
    settings.exportCamera = false;
    EXPECT_EQ(cameraOf(scene, settings).dump(), kDefaultPlacement);
}

TEST(PackageDescriptor, LimitsTheCameraByTheFirstBoundsNodeAlsoWithoutTheCamera) {
    TestScene scene;
    const auto bounds = addBounds(scene, u"Camera_Bounds");
    scene[bounds].worldTransform = {{0, 9, 0, 0}, {-9, 0, 0, 0}, {0, 0, 9, 0}, {10, 20, 30, 1}};
    addBounds(scene, u"CameraBounds");
    ExportSettings settings;
    settings.exportCamera = false;
    const auto camera = cameraOf(scene, settings);
    EXPECT_EQ(camera.at("limits").dump(),
              R"({"max":{"x":14.0,"y":36.0,"z":-18.0},"min":{"x":9.0,"y":27.0,"z":-25.0}})");
    EXPECT_EQ(camera.at("position").dump(), R"({"x":0.0,"y":0.0,"z":0.0})");
}

TEST(PackageDescriptor, PutsLimitsBeforeOrientationAndPosition) {
    TestScene scene;
    addBounds(scene, u"camera bounds");
    const std::string text = describe(scene);
    EXPECT_LT(text.find("\"limits\""), text.find("\"orientation\""));
    EXPECT_LT(text.find("\"orientation\""), text.find("\"position\""));
}

}  // namespace
}  // namespace velinor
