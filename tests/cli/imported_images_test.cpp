// Images of imported scenes, from the scene file into packages and snapshots, and nothing left behind.
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "tests/cli/command_test_support.h"
#include "tests/support/environment.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

// One pixel: red 1, green 20, blue 30.
constexpr const char* kPixel =
    "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAIAAACQd1PeAAAADElEQVR4nGNgFJEDAABNADSzaJaQAAAAAElFTkSuQmCC";

// A triangle with a material "M"; `material` and `images` are members of glTF.
std::string gltfTriangle(const std::string& material, const std::string& images) {
    return R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],"nodes":[{"name":"T","mesh":0}],)"
           R"("meshes":[{"primitives":[{"attributes":{"POSITION":0,"TEXCOORD_0":1},"material":0}]}],)"
           R"("buffers":[{"byteLength":60,"uri":"data:application/octet-stream;base64,)"
           R"(AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAAAAAAAAAAAAAAAIA/AAAAAAAAAAAAAIA/"}],)"
           R"("bufferViews":[{"buffer":0,"byteLength":36},{"buffer":0,"byteOffset":36,"byteLength":24}],)"
           R"("accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3","min":[0,0,0],)"
           R"("max":[1,1,0]},{"bufferView":1,"componentType":5126,"count":3,"type":"VEC2"}],)"
           R"("materials":[{"name":"M",)" +
           material + R"(}],"textures":[{"source":0}],"images":[)" + images + "]}";
}

const std::string kColourMap = R"("pbrMetallicRoughness":{"baseColorTexture":{"index":0}})";
const std::string kPackedMap = R"("pbrMetallicRoughness":{"metallicRoughnessTexture":{"index":0}})";

std::string embedded(const std::string& name) {
    return R"({"name":")" + name + R"(","uri":"data:image/png;base64,)" + kPixel + "\"}";
}

// Temporary files of the command go into a folder of their own, which must be empty at the end.
class ImportedImages : public CommandTest {
  protected:
    ~ImportedImages() override { EXPECT_TRUE(fs::is_empty(temporary_.path())); }

    Tree resources() const { return readTree(folder() / "out/resources"); }

    // The bitmap names of a snapshot.
    std::vector<std::string> bitmaps(const std::string& file) const {
        std::ifstream stream(folder() / file);
        std::vector<std::string> names;
        const auto document = nlohmann::json::parse(stream);
        for (const auto& map : document.at("maps"))
            names.push_back(map.value("bitmap", ""));
        return names;
    }

  private:
    TemporaryFolder temporary_;
    TemporaryFilesIn variable_{temporary_.path()};
};

TEST_F(ImportedImages, StrictCountsWhatTheReadingLeavesOut) {
    write("plain.gltf", gltfTriangle(kColourMap, embedded("wood")));
    EXPECT_EQ(run({"export", "--strict", "plain.gltf", "out.jsx"}).status, 0);
    write("sided.gltf", gltfTriangle(R"("doubleSided":true,)" + kColourMap, embedded("wood")));
    EXPECT_EQ(run({"export", "--strict", "sided.gltf", "sided.jsx"}).status, 1);
    EXPECT_TRUE(fs::exists(folder() / "sided/index.jsx"));
    // Said of the option, not of the scene.
    EXPECT_EQ(run({"export", "--strict", "--up-axis", "z", "plain.gltf", "again.jsx"}).status, 0);
}

TEST_F(ImportedImages, AnExportHasTheImagesThatTheFileHolds) {
    write("a.gltf", gltfTriangle(kColourMap, embedded("my wood")));
    const CommandResult result = run({"export", "a.gltf", "out.jsx"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(resources().contains("my_wood.png"));
    EXPECT_NE(resources().at("M.material").find("texture my_wood.png"), std::string::npos);
}

TEST_F(ImportedImages, AnExportHasThePartsOfPackedImages) {
    write("a.gltf", gltfTriangle(kPackedMap, embedded("mr")));
    EXPECT_EQ(run({"export", "a.gltf", "out.jsx"}).status, 0);
    const Tree files = resources();
    EXPECT_TRUE(files.contains("mr-roughness.png"));
    EXPECT_TRUE(files.contains("mr-metalness.png"));
    EXPECT_FALSE(files.contains("mr.png"));
}

TEST_F(ImportedImages, ABitmapWhoseNameIsNotAsciiIsExportedUnderTheNameOfThePackage) {
    write("a.gltf", gltfTriangle(kColourMap, R"({"uri":"gr%C3%B6%C3%9Fe%20%D0%96.png"})"));
    write(
        "gr\xC3\xB6\xC3\x9F"
        "e \xD0\x96.png",
        "image");
    EXPECT_EQ(run({"export", "a.gltf", "out.jsx"}).status, 0);
    const Tree files = resources();
    ASSERT_TRUE(files.contains("gr__e__.png")) << "the low byte of each character, and \"_\"";
    EXPECT_EQ(files.at("gr__e__.png"), "image");
    EXPECT_NE(files.at("M.material").find("texture gr__e__.png"), std::string::npos);
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(folder() / "out/resources/gr__e__.png")));
}

TEST_F(ImportedImages, AnExportHasImagesWhereTemporaryFilesHaveAPathThatIsNotAscii) {
    write("a.gltf", gltfTriangle(kColourMap, embedded("my wood")));
    const TemporaryFolder parent;
    const fs::path temporary = parent.path() / pathOfUtf8("\u0442\u043c\u043f");
    fs::create_directory(temporary);
    const TemporaryFilesIn variable(temporary);
    const CommandResult result = run({"export", "--json", "a.gltf", "out.jsx"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(resources().contains("my_wood.png")) << result.out;
    EXPECT_EQ(result.out.find("texture-path-mangled"), std::string::npos) << result.out;
    EXPECT_NE(resources().at("M.material").find("texture my_wood.png"), std::string::npos);
    EXPECT_TRUE(fs::is_empty(temporary));
    EXPECT_EQ(entryCount(), 3U) << "the two scenes and the package";
}

TEST_F(ImportedImages, ASnapshotKeepsTheImagesBesideItAndNamesThemThere) {
    write("a.gltf", gltfTriangle(kColourMap, embedded("wood")));
    fs::create_directory(folder() / "saved");
    EXPECT_EQ(run({"snapshot", "a.gltf", "saved/room.scene.json"}).status, 0);
    EXPECT_EQ(bitmaps("saved/room.scene.json"), (std::vector<std::string>{"room.textures/wood.png"}));
    EXPECT_TRUE(fs::is_regular_file(folder() / "saved/room.textures/wood.png"));
    EXPECT_EQ(run({"export", "saved/room.scene.json", "out.jsx"}).status, 0);
    EXPECT_TRUE(resources().contains("wood.png"));
    EXPECT_EQ(run({"snapshot", "a.gltf", "saved/room.scene.json"}).status, 0) << "once more";
    EXPECT_EQ(readTree(folder() / "saved").size(), 2U);
}

TEST_F(ImportedImages, ASnapshotWithoutSuchImagesHasNoFolderAndTrueNames) {
    write("gr\xC3\xB6.png", "image");
    write("a.gltf", gltfTriangle(kColourMap, R"({"uri":"gr%C3%B6.png"})"));
    EXPECT_EQ(run({"snapshot", "a.gltf", "room.json"}).status, 0);
    EXPECT_FALSE(fs::exists(folder() / "room.textures"));
    EXPECT_EQ(bitmaps("room.json"),
              (std::vector<std::string>{utf8Path(folder() / pathOfUtf8("gr\xC3\xB6.png"))}));
}

TEST_F(ImportedImages, ASnapshotThatCannotBeWrittenLeavesNoImages) {
    write("a.gltf", gltfTriangle(kColourMap, embedded("wood")));
    fs::create_directory(folder() / "room.scene.json.d");
    EXPECT_EQ(run({"snapshot", "a.gltf", "room.scene.json.d/none/x.scene.json"}).status, 3);
    fs::create_directories(folder() / "full.scene.json/x");
    EXPECT_EQ(run({"snapshot", "a.gltf", "full.scene.json"}).status, 3);
    EXPECT_FALSE(fs::exists(folder() / "full.textures"));
    write("file.textures", "mine");
    EXPECT_EQ(run({"snapshot", "a.gltf", "file.scene.json"}).status, 3);
    EXPECT_FALSE(fs::exists(folder() / "file.scene.json"));
}

TEST_F(ImportedImages, ARefusedFileAndAnInspectedOneLeaveNothing) {
    write("cut.gltf", gltfTriangle(kColourMap, embedded("wood")).substr(0, 300));
    EXPECT_EQ(run({"export", "cut.gltf", "out.jsx"}).status, 2);
    write("a.gltf", gltfTriangle(kColourMap, embedded("wood")));
    EXPECT_EQ(run({"inspect", "a.gltf"}).status, 0);
    EXPECT_EQ(run({"export", "a.gltf", "none/out.jsx"}).status, 3);
}

TEST_F(ImportedImages, AMissingBitmapIsToldWithThePlacesWhereItWasLookedFor) {
    write("a.gltf", gltfTriangle(kColourMap, R"({"uri":"tex%20one.png"})"));
    const CommandResult result = run({"snapshot", "a.gltf", "room.json"});
    EXPECT_NE(result.err.find("tolvex: M: the bitmap \"tex%20one.png\" is missing"), std::string::npos)
        << result.err;
    EXPECT_EQ(bitmaps("room.json"), (std::vector<std::string>{"tex%20one.png"}));
}

}  // namespace
}  // namespace velinor
