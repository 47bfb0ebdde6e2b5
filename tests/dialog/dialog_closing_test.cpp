// How the dialog opens and ends, and what it leaves in the settings.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>

#include "plugin/options_window_max.h"
#include "tests/dialog/dialog_driver.h"
#include "tests/dialog/temporary_maps.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

bool nothingExists(const fs::path&) {
    return false;
}

// Settings that differ from the defaults everywhere.
ExportSettings unusualSettings() {
    ExportSettings unusual;
    unusual.selectionOnly = unusual.exportHidden = unusual.exportBones = unusual.exportAnimation = true;
    unusual.exportMaterials = unusual.exportLights = unusual.helperLights = unusual.exportGeometry = false;
    unusual.spareFlagA = unusual.spareFlagB = unusual.exportCamera = unusual.exportWebtables = false;
    unusual.generatePhysicalMeshes = unusual.autoParams = unusual.cleanExportFolder = false;
    unusual.helperLightFraction = 0.3F;
    unusual.fallbackQuality = 1;
    unusual.polycountGoal = 17;
    unusual.ambientRed = unusual.ambientGreen = unusual.ambientBlue = 0.7F;
    unusual.customEnvironmentMap = "old sky.dds";
    unusual.customReflectionMap = "old room.dds";
    return unusual;
}

// The defaults as an untouched OK leaves them.
ExportSettings untouchedSettings() {
    ExportSettings untouched;
    untouched.helperLightFraction = 0;  // the field shows 0
    untouched.customEnvironmentMap = untouched.customReflectionMap = "default.dds";
    return untouched;
}

TEST(DialogClosing, OkStoresWhatTheUntouchedControlsShow) {
    ExportSettings settings = unusualSettings();
    OpeningOptions options;
    options.exists = nothingExists;
    DrivenDialog dialog(settings, options);
    dialog.click(ControlId::ok);
    EXPECT_EQ(dialog.finish(), DialogResult::confirmed);
    EXPECT_EQ(settings, untouchedSettings());
}

TEST(DialogClosing, CancelLeavesTheDefaultsAndTheMaps) {
    ExportSettings settings = unusualSettings();
    DrivenDialog dialog(settings);
    dialog.click(ControlId::cancel);
    EXPECT_EQ(dialog.finish(), DialogResult::cancelled);
    ExportSettings expected;
    expected.customEnvironmentMap = "old sky.dds";
    expected.customReflectionMap = "old room.dds";
    EXPECT_EQ(settings, expected);
}

TEST(DialogClosing, CancelKeepsWhatFourBoxesHaveStored) {
    ExportSettings settings;
    DrivenDialog dialog(settings);
    for (const ControlId box : {ControlId::exportLights, ControlId::generatePhysicalMeshes,
                                ControlId::selectionOnly, ControlId::exportMaterials})
        dialog.click(box);
    dialog.setText(ControlId::polycountGoal, L"9");
    dialog.setText(ControlId::environmentMap, L"C:\\windows");
    dialog.click(ControlId::cancel);
    EXPECT_EQ(dialog.finish(), DialogResult::cancelled);
    ExportSettings expected;
    expected.exportLights = expected.helperLights = false;
    expected.generatePhysicalMeshes = expected.autoParams = false;
    EXPECT_EQ(settings, expected);
}

TEST(DialogClosing, OkStoresEveryControl) {
    ExportSettings settings;
    OpeningOptions options;
    options.exists = [](const fs::path& path) { return path == "a.dds" || path == "b.dds"; };
    DrivenDialog dialog(settings, options);
    for (const ControlId box : {ControlId::selectionOnly, ControlId::exportHidden, ControlId::exportMaterials,
                                ControlId::helperLights, ControlId::exportCamera, ControlId::exportWebtables,
                                ControlId::autoParams, ControlId::cleanExportFolder})
        dialog.click(box);
    dialog.setText(ControlId::helperLightPercent, L"60");
    dialog.setText(ControlId::fallbackQuality, L"4");
    dialog.setText(ControlId::polycountGoal, L"1234");
    dialog.setText(ControlId::ambientRed, L"0.1");
    dialog.setText(ControlId::ambientGreen, L"0.5");
    dialog.setText(ControlId::ambientBlue, L"0.9");
    dialog.setText(ControlId::environmentMap, L"a.dds");
    dialog.setText(ControlId::reflectionMap, L"b.dds");
    dialog.click(ControlId::ok);
    EXPECT_EQ(dialog.finish(), DialogResult::confirmed);
    ExportSettings expected;
    expected.selectionOnly = expected.exportHidden = true;
    expected.exportMaterials = expected.helperLights = expected.exportCamera = false;
    expected.exportWebtables = expected.autoParams = expected.cleanExportFolder = false;
    expected.helperLightFraction = 0.6F;
    expected.fallbackQuality = 4;
    expected.polycountGoal = 1234;
    expected.ambientRed = 0.1F;
    expected.ambientGreen = 0.5F;
    expected.ambientBlue = 0.9F;
    expected.customEnvironmentMap = "a.dds";
    expected.customReflectionMap = "b.dds";
    EXPECT_EQ(settings, expected);
}

struct NumberCase {
    std::wstring text;
    std::int32_t quality;
    std::int32_t goal;
    float number;
};

// Equal, or both no number.
bool isSame(float a, float b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

// The Universal C Runtime is meant, which the host's plug-ins use, and not msvcrt, which this program has.
TEST(DialogClosing, OkReadsNumbersAsTheCRuntimeDoes) {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    for (const NumberCase& c : {
             NumberCase{L"9", 5, 9, 9},
             NumberCase{L"-2", 0, -2, -2},
             NumberCase{L"0", 0, 0, 0},
             NumberCase{L"", 0, 0, 0},
             NumberCase{L"many", 0, 0, 0},
             NumberCase{L" \t4x", 4, 4, 4},
             NumberCase{L"2.5", 2, 2, 2.5F},
             NumberCase{L"1e2", 1, 1, 100},
             NumberCase{L"0,5", 0, 0, 0},
             NumberCase{L"99999999999", 5, 2147483647, 99999999999.0F},
             NumberCase{L"3\u0436", 3, 3, 3},
             NumberCase{L"0x10", 0, 0, 16},
             NumberCase{L"inf", 0, 0, kInfinity},
             NumberCase{L"-inf", 0, 0, -kInfinity},
             NumberCase{L"nan", 0, 0, std::numeric_limits<float>::quiet_NaN()},
             NumberCase{L"1e400", 1, 1, kInfinity},
             NumberCase{L"1d2", 1, 1, 1},
             NumberCase{L"0.5abc", 0, 0, 0.5F},
             NumberCase{L"  7", 5, 7, 7},
             NumberCase{std::wstring(3000, L'9'), 5, 2147483647, kInfinity},
             NumberCase{std::wstring(3000, L'0') + L"4", 4, 4, 4},
         }) {
        ExportSettings settings;
        DrivenDialog dialog(settings);
        for (const ControlId edit : {ControlId::fallbackQuality, ControlId::polycountGoal,
                                     ControlId::ambientRed, ControlId::helperLightPercent})
            dialog.setText(edit, c.text);
        dialog.click(ControlId::ok);
        EXPECT_EQ(dialog.finish(), DialogResult::confirmed);
        const std::string text = testing::PrintToString(c.text.substr(0, 20));
        EXPECT_EQ(settings.fallbackQuality, c.quality) << text;
        EXPECT_EQ(settings.polycountGoal, c.goal) << text;
        EXPECT_TRUE(isSame(settings.ambientRed, c.number)) << text << ": " << settings.ambientRed;
        EXPECT_THAT(settings.helperLightFraction, testing::NanSensitiveFloatEq(c.number / 100)) << text;
    }
}

TEST(DialogClosing, OkReadsDisabledFieldsToo) {
    ExportSettings settings;
    DrivenDialog dialog(settings);
    dialog.click(ControlId::exportLights);
    dialog.click(ControlId::generatePhysicalMeshes);
    dialog.setText(ControlId::helperLightPercent, L"40");
    dialog.setText(ControlId::fallbackQuality, L"1");
    dialog.click(ControlId::ok);
    EXPECT_EQ(dialog.finish(), DialogResult::confirmed);
    EXPECT_EQ(settings.helperLightFraction, 0.4F);
    EXPECT_EQ(settings.fallbackQuality, 1);
}

TEST(DialogClosing, OkReplacesMapsThatAreNotOnTheDisk) {
    const TemporaryMaps maps;
    const fs::path sky = maps.add(L"sky.dds");
    const fs::path room = maps.add(L"room 1.dds");
    const fs::path accent = maps.add(L"\u00e9.dds");
    const fs::path cyrillic = maps.add(L"\u043d\u0435\u0431\u043e.dds");
    const fs::path missing = maps.path() / "gone.dds";
    ASSERT_EQ(GetACP(), 1252U) << "the expectations are those of Western Windows";
    struct Case {
        const char* name;
        fs::path environment;
        fs::path reflection;
        fs::path expectedEnvironment;
        fs::path expectedReflection;
    };
    for (const Case& c : {
             Case{"both", sky, room, sky, room},
             Case{"environment missing", missing, room, "default.dds", room},
             Case{"reflection missing", sky, missing, sky, sky},
             Case{"both missing", missing, missing, "default.dds", "default.dds"},
             Case{"reflection empty", sky, {}, sky, sky},
             Case{"a folder is an entry, too", maps.path(), {}, maps.path(), maps.path()},
             Case{"within the code page", accent, accent, accent, accent},
             Case{"outside the code page", cyrillic, room, "default.dds", room},
             Case{"reflection outside the code page", sky, cyrillic, sky, sky},
         }) {
        ExportSettings settings;
        DrivenDialog dialog(settings);
        dialog.setText(ControlId::environmentMap, c.environment.wstring());
        dialog.setText(ControlId::reflectionMap, c.reflection.wstring());
        dialog.click(ControlId::ok);
        EXPECT_EQ(dialog.finish(), DialogResult::confirmed);
        const auto replaced = (c.environment != c.expectedEnvironment ? 1U : 0U) +
                              (!c.reflection.empty() && c.reflection != c.expectedReflection ? 1U : 0U);
        EXPECT_EQ(dialog.report().count(Severity::warning), replaced) << c.name;
        EXPECT_EQ(settings.customEnvironmentMap, c.expectedEnvironment) << c.name;
        EXPECT_EQ(settings.customReflectionMap, c.expectedReflection) << c.name;
    }
}

TEST(DialogClosing, KeysAndTheCloseButtonEndIt) {
    const auto focus = [](const DrivenDialog& dialog, ControlId control) {
        HWND item = dialog.item(control);
        SendMessageW(dialog.window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(item), TRUE);
        EXPECT_TRUE(waitUntil([&] { return dialog.focused() == item; }));
    };
    struct Case {
        const char* name;
        std::function<void(const DrivenDialog&)> act;
        DialogResult result;
    };
    for (const Case& c : {
             Case{"Enter at first", [](const DrivenDialog& d) { d.press(VK_RETURN); },
                  DialogResult::confirmed},
             Case{"Enter in an edit",
                  [&](const DrivenDialog& d) {
                      focus(d, ControlId::environmentMap);
                      d.press(VK_RETURN);
                  },
                  DialogResult::confirmed},
             Case{"Enter on a check box",
                  [&](const DrivenDialog& d) {
                      focus(d, ControlId::exportCamera);
                      d.press(VK_RETURN);
                  },
                  DialogResult::confirmed},
             Case{"Enter on Cancel",
                  [&](const DrivenDialog& d) {
                      focus(d, ControlId::cancel);
                      d.press(VK_RETURN);
                  },
                  DialogResult::cancelled},
             Case{"Escape at first", [](const DrivenDialog& d) { d.press(VK_ESCAPE); },
                  DialogResult::cancelled},
             Case{"Escape in an edit",
                  [&](const DrivenDialog& d) {
                      focus(d, ControlId::polycountGoal);
                      d.press(VK_ESCAPE);
                  },
                  DialogResult::cancelled},
             Case{"the close button",
                  [](const DrivenDialog& d) { PostMessageW(d.window(), WM_SYSCOMMAND, SC_CLOSE, 0); },
                  DialogResult::cancelled},
             Case{"a request to close",
                  [](const DrivenDialog& d) { PostMessageW(d.window(), WM_CLOSE, 0, 0); },
                  DialogResult::cancelled},
         }) {
        SCOPED_TRACE(c.name);
        ExportSettings settings;
        DrivenDialog dialog(settings);
        dialog.setText(ControlId::polycountGoal, L"77");
        ASSERT_TRUE(waitUntil([&] { return dialog.focused() != nullptr; }));
        c.act(dialog);
        EXPECT_EQ(dialog.finish(), c.result);
        EXPECT_EQ(settings.polycountGoal, c.result == DialogResult::confirmed ? 77 : 200);
    }
}

TEST(DialogClosing, NotificationsOfEditsAreNoCommands) {
    ExportSettings settings;
    DrivenDialog dialog(settings);
    for (const WORD notification : {EN_CHANGE, EN_UPDATE, EN_SETFOCUS, EN_KILLFOCUS})
        SendMessageW(dialog.window(), WM_COMMAND, MAKEWPARAM(IDOK, notification), 0);
    EXPECT_TRUE(IsWindow(dialog.window()));
    EXPECT_EQ(SendMessageW(dialog.window(), WM_COMMAND, MAKEWPARAM(1, BN_CLICKED), 0), 0);
    EXPECT_EQ(dialog.finish(), DialogResult::confirmed);
}

TEST(DialogClosing, OpensWithTheDefaultsEachTime) {
    ExportSettings settings;
    {
        DrivenDialog dialog(settings);
        dialog.click(ControlId::exportLights);
        dialog.setText(ControlId::fallbackQuality, L"1");
        dialog.click(ControlId::ok);
        EXPECT_EQ(dialog.finish(), DialogResult::confirmed);
    }
    DrivenDialog dialog(settings);
    EXPECT_TRUE(dialog.isChecked(ControlId::exportLights));
    EXPECT_TRUE(dialog.isChecked(ControlId::helperLights));
    EXPECT_TRUE(dialog.isEnabled(ControlId::helperLightPercent));
    EXPECT_EQ(dialog.text(ControlId::fallbackQuality), L"3");
    EXPECT_EQ(dialog.text(ControlId::environmentMap), L"") << "the maps are kept, and not shown";
    dialog.click(ControlId::cancel);
    EXPECT_EQ(dialog.finish(), DialogResult::cancelled);
    EXPECT_EQ(settings.customEnvironmentMap, "default.dds");
}

TEST(DialogClosing, DisablesItsOwnerMeanwhile) {
    ExportSettings settings;
    HWND owner = nullptr;
    bool isEnabledAfterwards = false;
    OpeningOptions options;
    options.afterwards = [&] { isEnabledAfterwards = IsWindowEnabled(owner) != FALSE; };
    DrivenDialog dialog(settings, options);
    owner = dialog.owner();
    ASSERT_NE(owner, nullptr);
    EXPECT_EQ(GetWindow(dialog.window(), GW_OWNER), owner);
    EXPECT_FALSE(IsWindowEnabled(owner));
    dialog.click(ControlId::cancel);
    EXPECT_EQ(dialog.finish(), DialogResult::cancelled);
    EXPECT_TRUE(isEnabledAfterwards);
}

TEST(DialogClosing, OpensOverTheMiddleOfItsOwner) {
    RECT work{};
    ASSERT_TRUE(SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0));
    const LONG right = work.right;
    const LONG bottom = work.bottom;
    struct Case {
        const char* name;
        std::optional<OwnerWindow> owner;
        RECT around;  // whose middle is the dialog's, unless the screen's edge is in the way
    };
    for (const Case& c : {
             Case{"a large owner", OwnerWindow{{200, 150, 1000, 750}}, {200, 150, 1000, 750}},
             Case{"a small owner", OwnerWindow{{500, 400, 700, 500}}, {500, 400, 700, 500}},
             Case{"an owner at the left edge", OwnerWindow{{0, 0, 200, 100}}, {0, 0, 200, 100}},
             Case{"an owner at the right edge",
                  OwnerWindow{{right - 200, bottom - 100, right, bottom}},
                  {right - 200, bottom - 100, right, bottom}},
             Case{"a hidden owner", OwnerWindow{{500, 400, 700, 500}, false}, work},
             Case{"no owner", std::nullopt, work},
         }) {
        ExportSettings settings;
        OpeningOptions options;
        options.owner = c.owner;
        const DrivenDialog dialog(settings, options);
        RECT found{};
        GetWindowRect(dialog.window(), &found);
        const LONG width = found.right - found.left;
        const LONG height = found.bottom - found.top;
        const LONG left = (c.around.left + c.around.right - width) / 2;
        const LONG top = (c.around.top + c.around.bottom - height) / 2;
        EXPECT_NEAR(found.left, std::clamp(left, work.left, right - width), 1) << c.name;
        EXPECT_NEAR(found.top, std::clamp(top, work.top, bottom - height), 1) << c.name;
    }
}

TEST(DialogClosing, IsNotCreatedFromAModuleWithoutIt) {
    ExportSettings settings = unusualSettings();
    OptionsWindow window(nullptr, GetModuleHandleW(L"kernel32.dll"));
    Report report;
    EXPECT_EQ(window.run(settings, report), DialogResult::notCreated);
    EXPECT_EQ(settings, unusualSettings());
}

TEST(DialogClosing, PassesOnWhatTheDiskThrows) {
    ExportSettings settings;
    HWND owner = nullptr;
    bool isEnabledAfterwards = false;
    OpeningOptions options;
    options.exists = [](const fs::path&) -> bool { throw std::runtime_error("the disk is gone"); };
    options.afterwards = [&] { isEnabledAfterwards = IsWindowEnabled(owner) != FALSE; };
    DrivenDialog dialog(settings, options);
    owner = dialog.owner();
    HWND window = dialog.window();
    dialog.setText(ControlId::environmentMap, L"sky.dds");
    dialog.click(ControlId::ok);
    try {
        dialog.finish();
        ADD_FAILURE() << "nothing was thrown";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "the disk is gone");
    }
    EXPECT_FALSE(IsWindow(window));
    EXPECT_TRUE(isEnabledAfterwards);
}

}  // namespace
}  // namespace velinor
