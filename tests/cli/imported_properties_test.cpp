// User properties of imported scenes, from the scene file into packages.
#include <nlohmann/json.hpp>

#include "tests/cli/command_test_support.h"

namespace velinor {
namespace {

using ImportedProperties = CommandTest;

TEST_F(ImportedProperties, ExtrasOfGltfReachAWebPanel) {
    write(
        "a.gltf",
        R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],"nodes":[{"name":"Webtable_3","mesh":0,)"
        R"("extras":{"qv_wt_res_w":640,"qv_wt_res_h":360.0}}],)"
        R"("meshes":[{"primitives":[{"attributes":{"POSITION":0}}]}],)"
        R"("buffers":[{"byteLength":36,"uri":"data:application/octet-stream;base64,)"
        R"(AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAAAAAAIA/"}],"bufferViews":[{"buffer":0,"byteLength":36}],)"
        R"("accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3","min":[0,0,0],"max":[1,0,1]}]})");
    const CommandResult result = run({"export", "a.gltf", "out.jsx"});
    ASSERT_EQ(result.status, 0) << result.err;
    std::ifstream stream(folder() / "out/webtables.json");
    const auto panels = nlohmann::json::parse(stream);
    ASSERT_EQ(panels.size(), 1U);
    EXPECT_EQ(panels[0].at("resolution").dump(), R"({"height":360,"width":640})");
}

}  // namespace
}  // namespace velinor
