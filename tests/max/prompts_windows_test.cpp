// Exports with prompts: the loaded plug-in opens its dialog, and a user works it from another thread.
#include <windows.h>

#include "hosts/max/max_sdk.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <chrono>
#include <filesystem>
#include <initializer_list>
#include <string>
#include <thread>
#include <vector>

#include "hosts/max/max_values.h"
#include "hosts/snapshot/snapshot_host.h"
#include "platform/temporary_folder.h"
#include "plugin/resource.h"
#include "tests/max/golden_cases.h"
#include "tests/max/max_stage.h"
#include "tests/max/plug_in_library.h"
#include "tests/support/expected_package.h"
#include "tests/support/tree_compare.h"

namespace velinor {
namespace {

using namespace std::chrono_literals;

// Clicks the buttons one after the other in the dialog of the thread that makes it; the last one closes it.
class DialogUser {
  public:
    explicit DialogUser(std::initializer_list<int> buttons)
        : thread_([this, exporting = GetCurrentThreadId(), clicks = std::vector<int>(buttons)] {
              work(exporting, clicks);
          }) {}
    DialogUser(const DialogUser&) = delete;
    DialogUser& operator=(const DialogUser&) = delete;
    ~DialogUser() {
        thread_.join();
        EXPECT_TRUE(hasSeenDialog_);
    }

  private:
    // Null where none comes within half a minute.
    static HWND awaitDialog(DWORD thread) {
        const auto keepDialog = [](HWND window, LPARAM found) -> BOOL {
            std::array<wchar_t, 64> title{};
            GetWindowTextW(window, title.data(), static_cast<int>(title.size()));
            if (IsWindowVisible(window) == FALSE || std::wstring(title.data()) != L"Velinor export v 1.63")
                return TRUE;
            *std::bit_cast<HWND*>(found) = window;
            return FALSE;
        };
        HWND dialog = nullptr;
        const auto end = std::chrono::steady_clock::now() + 30s;
        while (dialog == nullptr && std::chrono::steady_clock::now() < end) {
            std::this_thread::sleep_for(5ms);
            EnumThreadWindows(thread, keepDialog, std::bit_cast<LPARAM>(&dialog));
        }
        return dialog;
    }

    void work(DWORD thread, const std::vector<int>& buttons) {
        HWND const dialog = awaitDialog(thread);
        hasSeenDialog_ = dialog != nullptr;
        for (const int button : buttons)
            SendMessageW(GetDlgItem(dialog, button), BM_CLICK, 0, 0);
    }

    bool hasSeenDialog_ = false;
    std::thread thread_;
};

// Golden packages have a line of text in the place of the sky that every package gets.
Tree withoutDefaultSky(Tree package) {
    const auto sky = package.find("resources/default.dds");
    if (sky != package.end() && sky->second.starts_with("DDS "))
        sky->second = "the default sky as it is shipped\n";
    return package;
}

// The package of a golden scene, exported by what a user does in the dialog, and what the user was told.
struct Exported {
    Tree package;
    std::vector<std::string> messages;
};

Exported exportWith(const std::string& caseName, std::initializer_list<int> buttons) {
    const PlugInLibrary plugIn;
    const SceneSnapshot scene = goldenScene(caseName);
    const auto host = makeSnapshotHost(scene, caseFolder(caseName));
    MaxStage stage(*host);
    const TemporaryFolder target;
    const auto exporter = plugIn.exporter();
    const SdkString name = maxString((target.path() / "package.jsx").u16string());
    {
        const DialogUser user(buttons);
        EXPECT_EQ(exporter->DoExport(name.c_str(), nullptr, nullptr, 0, 0), 1);
    }
    const std::filesystem::path package = target.path() / "package";
    return {std::filesystem::exists(package) ? readTree(package) : Tree(), stage.messages};
}

class PromptsOfAGoldenScene : public testing::TestWithParam<std::string> {};

TEST_P(PromptsOfAGoldenScene, GiveTheGoldenPackageWhenConfirmed) {
    const Tree actual = withoutDefaultSky(exportWith(GetParam(), {IDOK}).package);
    const Tree golden = readTree(caseFolder(GetParam()) / "expected");
    const auto difference = firstDifference(expectedHere(golden, actual), actual);
    EXPECT_EQ(difference, std::nullopt) << *difference;
}

INSTANTIATE_TEST_SUITE_P(Case, PromptsOfAGoldenScene,
                         testing::Values("mesh-with-parameters", "physical-materials", "web-panel"),
                         [](const auto& parameter) { return testName(parameter.param); });

TEST(Prompts, WriteNothingWhenCancelled) {
    const Exported exported = exportWith("mesh-with-parameters", {IDCANCEL});
    EXPECT_TRUE(exported.package.empty());
    EXPECT_TRUE(exported.messages.empty());
}

TEST(Prompts, TellOfAMissingImageLibraryAndWriteNothing) {
    const TemporaryFolder folder;
    const std::filesystem::path file = folder.path() / "tolvex.dle";
    std::filesystem::copy_file(plugInFile(), file);
    const PlugInLibrary plugIn(file);
    const SceneSnapshot scene = goldenScene("mesh-with-parameters");
    const auto host = makeSnapshotHost(scene, {});
    MaxStage stage(*host);
    const SdkString name = maxString((folder.path() / "package.jsx").u16string());
    EXPECT_EQ(plugIn.exporter()->DoExport(name.c_str(), nullptr, nullptr, 0, 0), 1);
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "package"));
    ASSERT_EQ(stage.messages.size(), 1U);
    EXPECT_NE(stage.messages[0].find("libvips-42.dll"), std::string::npos) << stage.messages[0];
}

TEST(Prompts, LeaveOutWhatIsUnchecked) {
    const Exported exported = exportWith("physical-materials", {IDC_EXPORT_MATERIALS, IDOK});
    EXPECT_TRUE(exported.package.contains("index.jsx"));
    for (const auto& [file, content] : exported.package)
        EXPECT_FALSE(file.ends_with(".material") || file.ends_with(".dds")) << file;
}

}  // namespace
}  // namespace velinor
