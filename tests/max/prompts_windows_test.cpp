// Exports with prompts: the loaded plug-in opens its dialog, and a user works it from another thread.
#include <windows.h>

#include "hosts/max/max_sdk.h"

#include <gtest/gtest.h>

#include <uxtheme.h>

#include <array>
#include <atomic>
#include <bit>
#include <chrono>
#include <filesystem>
#include <functional>
#include <initializer_list>
#include <string>
#include <thread>
#include <utility>
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

constexpr auto kLongest = 20s;

// The visible dialogs of a thread, whoever has opened them.
std::vector<HWND> dialogsOf(DWORD thread) {
    std::vector<HWND> dialogs;
    const auto keep = [](HWND window, LPARAM list) -> BOOL {
        std::array<wchar_t, 16> name{};
        GetClassNameW(window, name.data(), static_cast<int>(name.size()));
        if (IsWindowVisible(window) != FALSE && std::wstring(name.data()) == L"#32770")
            std::bit_cast<std::vector<HWND>*>(list)->push_back(window);
        return TRUE;
    };
    EnumThreadWindows(thread, keep, std::bit_cast<LPARAM>(&dialogs));
    return dialogs;
}

// Waits for the answer, but not for ever.
void send(HWND window, UINT message, WPARAM detail) {
    DWORD_PTR answer = 0;
    constexpr UINT kLimit = 20000;
    EXPECT_NE(SendMessageTimeoutW(window, message, detail, 0, SMTO_NORMAL, kLimit, &answer), 0);
}

void click(HWND dialog, int button) {
    send(GetDlgItem(dialog, button), BM_CLICK, 0);
}

// In the place of what the edit holds.
void type(HWND dialog, int edit, const std::wstring& characters) {
    const LPARAM toTheEnd = -1;
    SendMessageW(GetDlgItem(dialog, edit), EM_SETSEL, 0, toTheEnd);
    for (const wchar_t character : characters)
        send(GetDlgItem(dialog, edit), WM_CHAR, character);
}

// Works the dialog of the thread that makes it; the last act closes it. A dialog that stays open is closed by
// force: the test has failed then, and goes on.
class DialogUser {
  public:
    using Acts = std::function<void(HWND dialog)>;

    explicit DialogUser(Acts acts)
        : thread_([this, exporting = GetCurrentThreadId(), chosen = std::move(acts)] {
              work(exporting, chosen);
          }) {}
    DialogUser(const DialogUser&) = delete;
    DialogUser& operator=(const DialogUser&) = delete;
    ~DialogUser() {
        isExportOver_ = true;
        thread_.join();
        EXPECT_TRUE(hasSeenDialog_);
        EXPECT_FALSE(hasForced_) << "the dialog did not close";
    }

  private:
    // Null where none comes in time, or the export ends without.
    HWND awaitDialog(DWORD thread) const {
        const auto end = std::chrono::steady_clock::now() + kLongest;
        while (!isExportOver_ && std::chrono::steady_clock::now() < end) {
            const std::vector<HWND> dialogs = dialogsOf(thread);
            if (!dialogs.empty()) return dialogs.front();
            std::this_thread::sleep_for(5ms);
        }
        return nullptr;
    }

    void work(DWORD thread, const Acts& acts) {
        HWND const dialog = awaitDialog(thread);
        hasSeenDialog_ = dialog != nullptr;
        if (dialog != nullptr) acts(dialog);
        const auto end = std::chrono::steady_clock::now() + kLongest;
        while (!isExportOver_) {
            std::this_thread::sleep_for(5ms);
            if (std::chrono::steady_clock::now() < end) continue;
            for (HWND left : dialogsOf(thread)) {
                hasForced_ = true;
                PostMessageW(left, WM_CLOSE, 0, 0);
            }
        }
    }

    std::atomic<bool> isExportOver_ = false;
    bool hasSeenDialog_ = false;
    bool hasForced_ = false;
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

Exported exportWith(const std::string& caseName, DialogUser::Acts acts) {
    const PlugInLibrary plugIn;
    const SceneSnapshot scene = goldenScene(caseName);
    const auto host = makeSnapshotHost(scene, caseFolder(caseName));
    MaxStage stage(*host);
    const TemporaryFolder target;
    const auto exporter = plugIn.exporter();
    const SdkString name = maxString((target.path() / "package.jsx").u16string());
    {
        const DialogUser user(std::move(acts));
        EXPECT_EQ(exporter->DoExport(name.c_str(), nullptr, nullptr, 0, 0), 1);
    }
    const std::filesystem::path package = target.path() / "package";
    return {std::filesystem::exists(package) ? readTree(package) : Tree(), stage.messages};
}

Exported exportWith(const std::string& caseName, std::initializer_list<int> buttons) {
    return exportWith(caseName, [clicks = std::vector<int>(buttons)](HWND dialog) {
        for (const int button : clicks)
            click(dialog, button);
    });
}

void expectGolden(const std::string& caseName, const Tree& exported) {
    const Tree actual = withoutDefaultSky(exported);
    const Tree golden = readTree(caseFolder(caseName) / "expected");
    const auto difference = firstDifference(expectedHere(golden, actual), actual);
    EXPECT_EQ(difference, std::nullopt) << *difference;
}

class PromptsOfAGoldenScene : public testing::TestWithParam<std::string> {};

TEST_P(PromptsOfAGoldenScene, GiveTheGoldenPackageWhenConfirmed) {
    expectGolden(GetParam(), exportWith(GetParam(), {IDOK}).package);
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

// Without materials, meshes are written and cleaned, and there is no sky.
TEST(Prompts, LeaveOutMaterialsThatAreUnchecked) {
    expectGolden("no-materials", exportWith("no-materials", {IDC_EXPORT_MATERIALS, IDOK}).package);
    const Exported exported = exportWith("physical-materials", {IDC_EXPORT_MATERIALS, IDOK});
    EXPECT_TRUE(exported.package.contains("index.jsx"));
    for (const auto& [file, content] : exported.package) {
        EXPECT_FALSE(file.ends_with(".material") || file.ends_with(".dds") || file.ends_with(".xml")) << file;
    }
}

TEST(Prompts, KeepIntermediateMeshesWhereCleaningIsUnchecked) {
    const Exported exported =
        exportWith("no-materials", {IDC_EXPORT_MATERIALS, IDC_CLEAN_EXPORT_FOLDER, IDOK});
    EXPECT_TRUE(exported.package.contains("resources/Tri.mesh.xml"));
}

TEST(Prompts, WriteWebtablesAlsoWhenTheyAreUnchecked) {
    expectGolden("web-panel", exportWith("web-panel", {IDC_EXPORT_WEBTABLES, IDOK}).package);
}

// The golden lights are those of helper lights at 80 percent.
TEST(Prompts, TakeTheTypedStrengthOfHelperLights) {
    const Exported exported = exportWith("lights", [](HWND dialog) {
        type(dialog, IDC_HELPER_LIGHT_PERCENT, L"80");
        click(dialog, IDOK);
    });
    expectGolden("lights", exported.package);
}

TEST(Prompts, MakeHelperLightsBlackWhenNothingIsTouched) {
    const std::string index = exportWith("lights", {IDOK}).package["index.jsx"];
    const std::string helped = "diffuse={{ r: 1.000000, g: 0.500000, b: 0.000000 }}";
    const std::string helper = "diffuse={{ r: 0.000000, g: 0.000000, b: 0.000000 }}";
    const std::size_t place = index.find(helped);
    ASSERT_NE(place, std::string::npos) << index;
    const std::size_t next = index.find("diffuse=", place + 1);
    ASSERT_NE(next, std::string::npos) << index;
    EXPECT_EQ(index.substr(next, helper.size()), helper);
}

TEST(Prompts, WarnOfATypedMapThatIsNotThere) {
    const Exported exported = exportWith("empty-scene", [](HWND dialog) {
        type(dialog, IDC_ENVIRONMENT_MAP, L"\"C:\\sky.dds\"");
        click(dialog, IDOK);
    });
    ASSERT_EQ(exported.messages.size(), 1U);
    EXPECT_NE(exported.messages[0].find("\"\"C:\\sky.dds\"\": no file of this name exists"),
              std::string::npos)
        << exported.messages[0];
    EXPECT_TRUE(exported.package.contains("resources/default.dds"));
}

TEST(Prompts, AreAskedInAThemedDialogOverTheActiveWindow) {
    HWND host = CreateWindowExW(0, L"Static", L"Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100, 900, 600,
                                nullptr, nullptr, nullptr, nullptr);
    SetActiveWindow(host);
    ASSERT_EQ(GetActiveWindow(), host);
    const Exported exported = exportWith("mesh-with-parameters", [host](HWND dialog) {
        std::array<wchar_t, 64> title{};
        GetWindowTextW(dialog, title.data(), static_cast<int>(title.size()));
        EXPECT_STREQ(title.data(), L"Velinor export v 1.63");
        EXPECT_EQ(GetWindow(dialog, GW_OWNER), host);
        EXPECT_FALSE(IsWindowEnabled(host));
        EXPECT_NE(GetWindowTheme(GetDlgItem(dialog, IDC_EXPORT_LIGHTS)), nullptr) << "common controls 6";
        click(dialog, IDCANCEL);
    });
    EXPECT_TRUE(IsWindowEnabled(host));
    EXPECT_TRUE(exported.package.empty());
    DestroyWindow(host);
}

TEST(Prompts, SwitchTheHostsAcceleratorsOffMeanwhile) {
    const AcceleratorSwitches before = acceleratorSwitches();
    int closings = 0;
    for (const int button : {IDCANCEL, IDOK}) {
        exportWith("empty-scene", [&](HWND dialog) {
            EXPECT_EQ(acceleratorSwitches().off, before.off + closings + 1);
            EXPECT_EQ(acceleratorSwitches().on, before.on + closings);
            click(dialog, button);
        });
        ++closings;
        EXPECT_EQ(acceleratorSwitches().off, before.off + closings);
        EXPECT_EQ(acceleratorSwitches().on, before.on + closings);
    }
}

}  // namespace
}  // namespace velinor
