// The command on paths as Windows has them.
#include <gmock/gmock.h>

#include "platform/path_text.h"
#include "tests/cli/command_test_support.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

class WindowsPaths : public CommandTest {
  protected:
    bool isExported(const fs::path& package) const { return fs::exists(package / "resources"); }
};

TEST_F(WindowsPaths, TakesPathsThatTheSystemTakesAsTheyAre) {
    const std::string target = "\\\\?\\" + utf8Path(folder() / "room.jsx");
    const CommandResult result = run({"export", "--quiet", "room.scene.json", target});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "\\\\?\\" + utf8Path(folder() / "room") + "\n");
    EXPECT_TRUE(isExported(folder() / "room"));
}

TEST_F(WindowsPaths, FindsTexturesOfScenesWithSuchPaths) {
    write("wood.png", "image");
    write(
        "a.gltf",
        R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],"nodes":[{"name":"T","mesh":0}],)"
        R"("meshes":[{"primitives":[{"attributes":{"POSITION":0},"material":0}]}],)"
        R"("buffers":[{"byteLength":36,"uri":"data:application/octet-stream;base64,)"
        R"(AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAA"}],)"
        R"("bufferViews":[{"buffer":0,"byteLength":36}],)"
        R"("accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3","min":[0,0,0],)"
        R"("max":[1,1,0]}],"materials":[{"name":"M","pbrMetallicRoughness":{"baseColorTexture":{"index":0}}}],)"
        R"("textures":[{"source":0}],"images":[{"uri":"wood.png"}]})");
    const fs::path elsewhere = folder() / "elsewhere";
    fs::create_directory(elsewhere);
    CommandInput input;
    input.folder = elsewhere;
    const std::string mark = "\\\\?\\";
    EXPECT_EQ(runTolvex({"snapshot", mark + utf8Path(folder() / "a.gltf"),
                         mark + utf8Path(folder() / "a.scene.json")},
                        input)
                  .status,
              0);
    const CommandResult result =
        runTolvex({"export", mark + utf8Path(folder() / "a.scene.json"), "a.jsx"}, input);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(fs::exists(elsewhere / "a/resources/wood.png")) << result.out;
}

}  // namespace
}  // namespace velinor
