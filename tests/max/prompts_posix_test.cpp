// Exports with prompts, where no dialog can be shown: what the user is told.
#include "hosts/max/max_sdk.h"

#include <gtest/gtest.h>

#include <memory>

#include "hosts/max/max_values.h"
#include "platform/temporary_folder.h"
#include "tests/max/max_stage.h"
#include "tests/max/plug_in_library.h"
#include "tests/support/test_scene.h"

namespace velinor {
namespace {

std::vector<std::string> messagesOf(const TestScene& scene) {
    const PlugInLibrary plugIn;
    const auto host = scene.makeHost();
    MaxStage stage(*host);
    const TemporaryFolder target;
    const SdkString name = maxString((target.path() / "package.jsx").u16string());
    EXPECT_EQ(plugIn.exporter()->DoExport(name.c_str(), nullptr, nullptr, 0, 0), 1);
    return stage.messages;
}

TEST(Prompts, TellOfAMissingDialog) {
    TestScene scene;
    scene.addHelper(u"room");
    const auto messages = messagesOf(scene);
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0],
              "48 Velinor scene exporter: The export ended with 0 errors and 1 warning.\n\n"
              "options dialog: the options dialog could not be shown; the settings are used as they are.");
}

TEST(Prompts, ListTheFirstOfManyWarnings) {
    TestScene scene;
    for (int i = 0; i < 40; ++i) {
        const SnapshotRef node = scene.addHelper(u"mirrored");
        scene[node].worldTransform = {{-1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    }
    const auto messages = messagesOf(scene);
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_NE(messages[0].find("with 0 errors and 41 warnings."), std::string::npos) << messages[0];
    EXPECT_EQ(std::ranges::count(messages[0], '\n'), 14) << messages[0];
    EXPECT_TRUE(messages[0].ends_with("... and more; the log of 3ds Max has them all.")) << messages[0];
}

}  // namespace
}  // namespace velinor
