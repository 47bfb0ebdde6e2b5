#include "plugin/options_dialog_model.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>
#include <string>
#include <vector>

#include "base/text.h"
#include "platform/code_page.h"

namespace velinor {
namespace {

bool everythingExists(const std::filesystem::path& /*path*/) {
    return true;
}

// A dialog over settings of its own, on a disk that holds exactly `existing`.
class OptionsDialogModelTest : public testing::Test {
  protected:
    OptionsDialogModelTest() { dialog.open(); }

    void confirm() {
        dialog.click(ControlId::ok);
        EXPECT_EQ(dialog.result(), DialogResult::confirmed);
    }

    std::set<std::filesystem::path> existing;
    ExportSettings settings;
    Report report;
    OptionsDialogModel dialog{
        settings, [this](const std::filesystem::path& path) { return existing.contains(path); }, report};
};

TEST_F(OptionsDialogModelTest, OpensWithTheDefaultsInItsCheckBoxes) {
    const std::set<ControlId> unchecked{ControlId::selectionOnly, ControlId::exportHidden,
                                        ControlId::exportBones, ControlId::exportAnimation};
    for (const ControlId control :
         {ControlId::selectionOnly, ControlId::exportHidden, ControlId::exportBones,
          ControlId::exportAnimation, ControlId::exportMaterials, ControlId::exportLights,
          ControlId::helperLights, ControlId::exportGeometry, ControlId::exportCamera,
          ControlId::exportWebtables, ControlId::generatePhysicalMeshes, ControlId::autoParams,
          ControlId::cleanExportFolder}) {
        EXPECT_EQ(dialog.isChecked(control), !unchecked.contains(control)) << static_cast<int>(control);
    }
}

TEST_F(OptionsDialogModelTest, OpensWithTheDefaultsInItsEdits) {
    const std::map<ControlId, std::u16string> expected{
        {ControlId::helperLightPercent, u"0"}, {ControlId::fallbackQuality, u"3"},
        {ControlId::polycountGoal, u"200"},    {ControlId::ambientRed, u"0.2"},
        {ControlId::ambientGreen, u"0.2"},     {ControlId::ambientBlue, u"0.2"},
        {ControlId::environmentMap, u""},      {ControlId::reflectionMap, u""},
    };
    for (const auto& [control, text] : expected) {
        EXPECT_EQ(dialog.text(control), text) << static_cast<int>(control);
    }
}

TEST_F(OptionsDialogModelTest, OpensWithEverythingEnabledButWhatIsFixed) {
    const std::set<ControlId> disabled{ControlId::exportGeometry, ControlId::exportBones,
                                       ControlId::exportAnimation};
    for (int id = 1001; id <= 1035; ++id) {
        const auto control = static_cast<ControlId>(id);
        EXPECT_EQ(dialog.isEnabled(control), !disabled.contains(control)) << id;
    }
}

TEST_F(OptionsDialogModelTest, ShowsTheVersionInItsTitle) {
    EXPECT_EQ(dialog.title(), u"Velinor export v 1.63");
}

TEST_F(OptionsDialogModelTest, OpeningResetsAllSettingsButTheMaps) {
    ExportSettings changed;
    changed.selectionOnly = changed.exportHidden = changed.exportBones = changed.exportAnimation = true;
    changed.exportMaterials = changed.exportLights = changed.helperLights = changed.exportGeometry = false;
    changed.spareFlagA = changed.exportCamera = changed.exportWebtables = changed.spareFlagB = false;
    changed.generatePhysicalMeshes = changed.autoParams = changed.cleanExportFolder = false;
    changed.helperLightFraction = 7;
    changed.fallbackQuality = -4;
    changed.polycountGoal = 1;
    changed.ambientRed = changed.ambientGreen = changed.ambientBlue = 1;
    changed.customEnvironmentMap = "sky.dds";
    changed.customReflectionMap = "room.dds";
    settings = changed;

    dialog.open();

    ExportSettings expected;
    expected.customEnvironmentMap = "sky.dds";
    expected.customReflectionMap = "room.dds";
    EXPECT_EQ(settings, expected);
    EXPECT_EQ(dialog.text(ControlId::environmentMap), u"") << "the edits do not show the maps";
}

TEST_F(OptionsDialogModelTest, OkWithoutATouchTurnsTheHelperLightsFractionIntoZero) {
    confirm();

    ExportSettings expected;
    expected.helperLightFraction = 0;
    expected.customEnvironmentMap = "default.dds";
    expected.customReflectionMap = "default.dds";
    EXPECT_EQ(settings, expected);
}

struct CheckBoxCase {
    ControlId control;
    bool ExportSettings::*field;
};

const CheckBoxCase kClickableCheckBoxes[] = {
    {ControlId::selectionOnly, &ExportSettings::selectionOnly},
    {ControlId::exportHidden, &ExportSettings::exportHidden},
    {ControlId::exportMaterials, &ExportSettings::exportMaterials},
    {ControlId::exportLights, &ExportSettings::exportLights},
    {ControlId::helperLights, &ExportSettings::helperLights},
    {ControlId::exportCamera, &ExportSettings::exportCamera},
    {ControlId::exportWebtables, &ExportSettings::exportWebtables},
    {ControlId::generatePhysicalMeshes, &ExportSettings::generatePhysicalMeshes},
    {ControlId::autoParams, &ExportSettings::autoParams},
    {ControlId::cleanExportFolder, &ExportSettings::cleanExportFolder},
};

TEST_F(OptionsDialogModelTest, OkStoresEveryCheckBoxThatWasClicked) {
    for (const auto& [control, field] : kClickableCheckBoxes) {
        dialog.open();
        const bool before = settings.*field;
        dialog.click(control);
        confirm();
        EXPECT_EQ(settings.*field, !before) << static_cast<int>(control);
    }
}

TEST_F(OptionsDialogModelTest, OkStoresEveryCheckBoxThatWasClickedTwiceAsItWas) {
    for (const auto& [control, field] : kClickableCheckBoxes) {
        dialog.open();
        const bool before = settings.*field;
        dialog.click(control);
        dialog.click(control);
        confirm();
        EXPECT_EQ(settings.*field, before) << static_cast<int>(control);
    }
}

TEST_F(OptionsDialogModelTest, FixedCheckBoxesDoNotReact) {
    for (const ControlId control :
         {ControlId::exportGeometry, ControlId::exportBones, ControlId::exportAnimation}) {
        const bool before = dialog.isChecked(control);
        dialog.click(control);
        EXPECT_EQ(dialog.isChecked(control), before) << static_cast<int>(control);
    }
    confirm();
    EXPECT_TRUE(settings.exportGeometry);
    EXPECT_FALSE(settings.exportBones);
    EXPECT_FALSE(settings.exportAnimation);
}

struct State {
    bool checked;
    bool enabled;

    bool operator==(const State&) const = default;
};

void PrintTo(const State& state, std::ostream* out) {
    *out << (state.checked ? "checked" : "unchecked") << (state.enabled ? ", enabled" : ", disabled");
}

TEST_F(OptionsDialogModelTest, UncheckingLightsUnchecksAndDisablesHelperLights) {
    dialog.click(ControlId::exportLights);

    EXPECT_EQ((State{dialog.isChecked(ControlId::helperLights), dialog.isEnabled(ControlId::helperLights)}),
              (State{false, false}));
    EXPECT_FALSE(dialog.isEnabled(ControlId::helperLightPercent));
    EXPECT_FALSE(settings.exportLights) << "stored at once";
    EXPECT_FALSE(settings.helperLights) << "stored at once";
}

TEST_F(OptionsDialogModelTest, CheckingLightsAgainEnablesHelperLightsOnly) {
    dialog.click(ControlId::exportLights);
    dialog.click(ControlId::exportLights);

    EXPECT_EQ((State{dialog.isChecked(ControlId::helperLights), dialog.isEnabled(ControlId::helperLights)}),
              (State{false, true}));
    EXPECT_FALSE(dialog.isEnabled(ControlId::helperLightPercent));
    EXPECT_TRUE(settings.exportLights);
    EXPECT_FALSE(settings.helperLights);
}

TEST_F(OptionsDialogModelTest, HelperLightsEnableTheirPercentage) {
    dialog.click(ControlId::helperLights);
    EXPECT_FALSE(dialog.isEnabled(ControlId::helperLightPercent));
    EXPECT_FALSE(settings.helperLights);
    dialog.click(ControlId::helperLights);
    EXPECT_TRUE(dialog.isEnabled(ControlId::helperLightPercent));
    EXPECT_TRUE(settings.helperLights);
}

TEST_F(OptionsDialogModelTest, HelperLightsDoNotReactWithoutLights) {
    dialog.click(ControlId::exportLights);
    dialog.click(ControlId::helperLights);
    EXPECT_FALSE(dialog.isChecked(ControlId::helperLights));
    EXPECT_FALSE(dialog.isEnabled(ControlId::helperLightPercent));
}

TEST_F(OptionsDialogModelTest, UncheckingPhysicalMeshesDisablesTheirControls) {
    dialog.click(ControlId::generatePhysicalMeshes);

    EXPECT_EQ((State{dialog.isChecked(ControlId::autoParams), dialog.isEnabled(ControlId::autoParams)}),
              (State{false, false}));
    EXPECT_FALSE(dialog.isEnabled(ControlId::fallbackQuality));
    EXPECT_FALSE(dialog.isEnabled(ControlId::polycountGoal));
    EXPECT_FALSE(settings.generatePhysicalMeshes) << "stored at once";
    EXPECT_FALSE(settings.autoParams) << "stored at once";
}

TEST_F(OptionsDialogModelTest, CheckingPhysicalMeshesAgainLeavesAutoParamsUnchecked) {
    dialog.click(ControlId::generatePhysicalMeshes);
    dialog.click(ControlId::generatePhysicalMeshes);

    EXPECT_EQ((State{dialog.isChecked(ControlId::autoParams), dialog.isEnabled(ControlId::autoParams)}),
              (State{false, true}));
    EXPECT_TRUE(dialog.isEnabled(ControlId::fallbackQuality));
    EXPECT_FALSE(dialog.isEnabled(ControlId::polycountGoal)) << "enabled by auto-params alone";
}

TEST_F(OptionsDialogModelTest, AutoParamsEnableThePolycountGoal) {
    dialog.click(ControlId::autoParams);
    EXPECT_FALSE(dialog.isEnabled(ControlId::polycountGoal));
    EXPECT_FALSE(settings.autoParams);
    dialog.click(ControlId::autoParams);
    EXPECT_TRUE(dialog.isEnabled(ControlId::polycountGoal));
    EXPECT_TRUE(settings.autoParams);
}

TEST_F(OptionsDialogModelTest, CancelKeepsWhatClicksHaveStoredAndNothingElse) {
    dialog.click(ControlId::exportLights);
    dialog.click(ControlId::exportHidden);
    dialog.setText(ControlId::fallbackQuality, u"5");
    dialog.click(ControlId::cancel);

    EXPECT_EQ(dialog.result(), DialogResult::cancelled);
    ExportSettings expected;
    expected.exportLights = false;
    expected.helperLights = false;
    EXPECT_EQ(settings, expected);
}

TEST_F(OptionsDialogModelTest, IsOpenUntilAButtonEndsIt) {
    EXPECT_EQ(dialog.result(), std::nullopt);
    dialog.click(ControlId::cancel);
    dialog.click(ControlId::ok);
    EXPECT_EQ(dialog.result(), DialogResult::cancelled) << "a closed dialog does not react";
    dialog.open();
    EXPECT_EQ(dialog.result(), std::nullopt);
}

struct IntegerCase {
    std::u16string text;
    std::int32_t quality;
    std::int32_t goal;
};

TEST_F(OptionsDialogModelTest, ReadsIntegersAsTheCRuntimeDoes) {
    const IntegerCase cases[] = {
        {u"3", 3, 3},
        {u"9", 5, 9},
        {u"-2", 0, -2},
        {u"0", 0, 0},
        {u"5", 5, 5},
        {u"6", 5, 6},
        {u"-1", 0, -1},
        {u"", 0, 0},
        {u"abc", 0, 0},
        {u" \t\n4", 4, 4},
        {u"+4", 4, 4},
        {u"4x", 4, 4},
        {u"4.9", 4, 4},
        {u"1e3", 1, 1},
        {u"0x4", 0, 0},
        {u"- 4", 0, 0},
        {u"--4", 0, 0},
        {u"2147483647", 5, 2147483647},
        {u"2147483648", 5, 2147483647},
        {u"-2147483649", 0, -2147483647 - 1},
        {u"99999999999999999999999", 5, 2147483647},
        {std::u16string(100000, u'9'), 5, 2147483647},
        {u"-" + std::u16string(100000, u'9'), 0, -2147483647 - 1},
        {std::u16string(100000, u'0') + u"4", 4, 4},
        {u"0x10", 0, 0},
        {u"inf", 0, 0},
        {u"nan", 0, 0},
        {u"1e400", 1, 1},
        {u"1d2", 1, 1},
        {u"0.5abc", 0, 0},
        {u"\u0664", 0, 0},
    };
    for (const auto& c : cases) {
        dialog.open();
        dialog.setText(ControlId::fallbackQuality, c.text);
        dialog.setText(ControlId::polycountGoal, c.text);
        confirm();
        EXPECT_EQ(settings.fallbackQuality, c.quality) << testing::PrintToString(c.text);
        EXPECT_EQ(settings.polycountGoal, c.goal) << testing::PrintToString(c.text);
    }
}

struct FloatCase {
    std::u16string text;
    float fraction;
    float colour;
};

// Equal, or both no number.
bool isSame(float a, float b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

// The C runtime that is meant is the Universal C Runtime, which the host's plug-ins use. The older msvcrt
// knows neither hexadecimal digits nor words, and takes "d" for an exponent.
TEST_F(OptionsDialogModelTest, ReadsNumbersAsTheCRuntimeDoes) {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    const FloatCase cases[] = {
        {u"80", 0.8F, 80},
        {u"0", 0, 0},
        {u"", 0, 0},
        {u"bright", 0, 0},
        {u"  50", 0.5F, 50},
        {u"50%", 0.5F, 50},
        {u"12.5", 0.125F, 12.5F},
        {u"0,5", 0, 0},
        {u"-20", -0.2F, -20},
        {u"1e2", 1, 100},
        {u".5", 0.005F, 0.5F},
        {u"1000", 10, 1000},
        {u"0.2", 0.002F, 0.2F},
        {u"+1", 0.01F, 1},
        {u"1 2", 0.01F, 1},
        {u"0x10", 0.16F, 16},
        {u"0x1p3", 0.08F, 8},
        {u"0x", 0, 0},
        {u"1d2", 0.01F, 1},
        {u"1D2", 0.01F, 1},
        {u"0.5abc", 0.005F, 0.5F},
        {u"  7", 0.07F, 7},
        {u"1e-400", 0, 0},
        {u"1e", 0.01F, 1},
        {u"inf", kInfinity, kInfinity},
        {u"-inf", -kInfinity, -kInfinity},
        {u"infinity", kInfinity, kInfinity},
        {u"nan", kNan, kNan},
        {u"1e400", kInfinity, kInfinity},
        {u"-1e400", -kInfinity, -kInfinity},
        {std::u16string(100000, u'9'), kInfinity, kInfinity},
        {std::u16string(100000, u'0') + u"5", 0.05F, 5},
        {u"0." + std::u16string(100000, u'0') + u"5", 0, 0},
    };
    for (const auto& c : cases) {
        const std::string text = toUtf8(c.text).substr(0, 20);
        dialog.open();
        for (const ControlId edit : {ControlId::helperLightPercent, ControlId::ambientRed,
                                     ControlId::ambientGreen, ControlId::ambientBlue}) {
            dialog.setText(edit, c.text);
        }
        confirm();
        EXPECT_TRUE(isSame(settings.helperLightFraction, c.fraction))
            << text << ": " << settings.helperLightFraction;
        EXPECT_TRUE(isSame(settings.ambientRed, c.colour)) << text << ": " << settings.ambientRed;
        EXPECT_TRUE(isSame(settings.ambientGreen, c.colour)) << text << ": " << settings.ambientGreen;
        EXPECT_TRUE(isSame(settings.ambientBlue, c.colour)) << text << ": " << settings.ambientBlue;
    }
}

TEST_F(OptionsDialogModelTest, KeepsTheThreeColoursApart) {
    dialog.setText(ControlId::ambientRed, u"0.1");
    dialog.setText(ControlId::ambientGreen, u"0.5");
    dialog.setText(ControlId::ambientBlue, u"0.9");
    confirm();
    EXPECT_EQ(settings.ambientRed, 0.1F);
    EXPECT_EQ(settings.ambientGreen, 0.5F);
    EXPECT_EQ(settings.ambientBlue, 0.9F);
}

TEST_F(OptionsDialogModelTest, ReadsTheEditsOfDisabledControls) {
    dialog.click(ControlId::exportLights);
    dialog.click(ControlId::generatePhysicalMeshes);
    dialog.setText(ControlId::helperLightPercent, u"40");
    dialog.setText(ControlId::fallbackQuality, u"1");
    confirm();
    EXPECT_EQ(settings.helperLightFraction, 0.4F);
    EXPECT_EQ(settings.fallbackQuality, 1);
}

struct MapCase {
    const char* name;
    std::u16string environment;
    std::u16string reflection;
    std::filesystem::path expectedEnvironment;
    std::filesystem::path expectedReflection;
};

TEST_F(OptionsDialogModelTest, ReplacesMapsThatDoNotExist) {
    existing = {"sky.dds", "room.dds", u8"небо.dds"};
    const MapCase cases[] = {
        {"both empty", u"", u"", "default.dds", "default.dds"},
        {"both exist", u"sky.dds", u"room.dds", "sky.dds", "room.dds"},
        {"environment only", u"sky.dds", u"", "sky.dds", "sky.dds"},
        {"reflection only", u"", u"room.dds", "default.dds", "room.dds"},
        {"environment missing, reflection exists", u"gone.dds", u"room.dds", "default.dds", "room.dds"},
        {"reflection missing", u"sky.dds", u"gone.dds", "sky.dds", "sky.dds"},
        {"both missing", u"gone.dds", u"lost.dds", "default.dds", "default.dds"},
        {"spaces count", u" sky.dds", u"", "default.dds", "default.dds"},
    };
    for (const auto& c : cases) {
        dialog.open();
        dialog.setText(ControlId::environmentMap, c.environment);
        dialog.setText(ControlId::reflectionMap, c.reflection);
        confirm();
        EXPECT_EQ(settings.customEnvironmentMap, c.expectedEnvironment) << c.name;
        EXPECT_EQ(settings.customReflectionMap, c.expectedReflection) << c.name;
    }
}

TEST_F(OptionsDialogModelTest, LosesMapsThatTheCodePageCannotName) {
    const std::u16string sky = u"C:/\u043d\u0435\u0431\u043e \u4e2d.dds";
    existing = {toPath(sky)};
    dialog.setText(ControlId::environmentMap, sky);
    confirm();
    const bool isKept = wideText(narrowText(sky)) == sky;
    EXPECT_EQ(settings.customEnvironmentMap, isKept ? toPath(sky) : "default.dds");
    EXPECT_EQ(settings.customReflectionMap, settings.customEnvironmentMap);
}

TEST_F(OptionsDialogModelTest, ParsesWhatTheCodePageMakesOfAText) {
    dialog.setText(ControlId::polycountGoal, u"12\u4e2d");
    dialog.setText(ControlId::ambientRed, u"\u043d1");
    confirm();
    EXPECT_EQ(settings.polycountGoal, 12);
    EXPECT_EQ(settings.ambientRed, 0);
}

TEST_F(OptionsDialogModelTest, TakesStatesThatCameWithoutAClick) {
    dialog.setChecked(ControlId::exportLights, false);
    EXPECT_FALSE(dialog.isChecked(ControlId::exportLights));
    EXPECT_TRUE(dialog.isEnabled(ControlId::helperLights));
    EXPECT_TRUE(settings.exportLights) << "only a command stores";
    dialog.command(ControlId::exportLights);
    EXPECT_FALSE(settings.exportLights);
    EXPECT_FALSE(dialog.isChecked(ControlId::helperLights));
    EXPECT_FALSE(dialog.isEnabled(ControlId::helperLights));
    dialog.setChecked(ControlId::environmentMap, true);
    EXPECT_FALSE(dialog.isChecked(ControlId::environmentMap)) << "an edit has no check";
}

TEST_F(OptionsDialogModelTest, ClosedDialogsObeyNoCommand) {
    dialog.click(ControlId::cancel);
    dialog.setChecked(ControlId::exportLights, false);
    dialog.command(ControlId::exportLights);
    dialog.command(ControlId::ok);
    EXPECT_TRUE(settings.exportLights);
    EXPECT_EQ(dialog.result(), DialogResult::cancelled);
}

TEST_F(OptionsDialogModelTest, ListsWhatAWindowHasToShow) {
    EXPECT_EQ(dialog.checkBoxes().size(), 13U);
    EXPECT_EQ(dialog.edits().size(), 8U);
    for (const auto& [control, isEnabled] : dialog.enabledStates())
        EXPECT_EQ(isEnabled, dialog.isEnabled(control)) << static_cast<int>(control);
    EXPECT_EQ(dialog.enabledStates().size(), 5U);
}

TEST_F(OptionsDialogModelTest, NeverAsksForAnEmptyPath) {
    std::vector<std::filesystem::path> asked;
    const auto watch = [&](const std::filesystem::path& path) {
        asked.push_back(path);
        return true;
    };
    OptionsDialogModel watched(settings, watch, report);
    watched.open();
    watched.click(ControlId::ok);
    EXPECT_EQ(asked, std::vector<std::filesystem::path>{});
    EXPECT_EQ(settings.customEnvironmentMap, "default.dds");
}

TEST_F(OptionsDialogModelTest, ReportsTypedMapsThatAreNotThere) {
    existing = {"C:\\sky.dds"};
    struct Case {
        std::u16string environment;
        std::u16string reflection;
        std::vector<ReportEntry> entries;
    };
    constexpr auto replaced = MessageId::customMapReplaced;
    const Case cases[] = {
        {u"", u"", {}},
        {u"C:\\sky.dds", u"", {}},
        {u"C:\\sky.dds", u"C:\\sky.dds", {}},
        {u"\"C:\\sky.dds\"", u"", {{replaced, "\"\"C:\\sky.dds\"\"", "default.dds is used"}}},
        {u"", u" C:\\sky.dds", {{replaced, "\" C:\\sky.dds\"", "default.dds is used"}}},
        {u"C:\\sky.dds", u"room.dds", {{replaced, "\"room.dds\"", "C:\\sky.dds is used"}}},
        {u"\u043d\u0435\u0431\u043e.dds",
         u"room.dds",
         {{replaced, "\"\u043d\u0435\u0431\u043e.dds\"", "default.dds is used"},
          {replaced, "\"room.dds\"", "default.dds is used"}}},
    };
    for (const Case& c : cases) {
        Report told;
        OptionsDialogModel model(
            settings, [this](const std::filesystem::path& path) { return existing.contains(path); }, told);
        model.open();
        model.setText(ControlId::environmentMap, c.environment);
        model.setText(ControlId::reflectionMap, c.reflection);
        model.click(ControlId::ok);
        EXPECT_EQ(told.entries(), c.entries) << toUtf8(c.environment) << ", " << toUtf8(c.reflection);
    }
}

TEST_F(OptionsDialogModelTest, ReportsNothingWhenItIsCancelled) {
    dialog.setText(ControlId::environmentMap, u"gone.dds");
    dialog.click(ControlId::cancel);
    EXPECT_TRUE(report.entries().empty());
}

TEST_F(OptionsDialogModelTest, BrowseButtonsFillTheirEdits) {
    dialog.choose(ControlId::browseEnvironmentMap, u"C:\\maps\\sky.dds");
    dialog.choose(ControlId::browseReflectionMap, u"C:\\maps\\room.dds");
    EXPECT_EQ(dialog.text(ControlId::environmentMap), u"C:\\maps\\sky.dds");
    EXPECT_EQ(dialog.text(ControlId::reflectionMap), u"C:\\maps\\room.dds");
}

TEST(SettingRules, SwitchOffWhatCannotWorkAlone) {
    for (const bool lights : {false, true}) {
        for (const bool physical : {false, true}) {
            ExportSettings settings;
            settings.exportLights = lights;
            settings.generatePhysicalMeshes = physical;
            Report report;
            applySettingRules(settings, everythingExists, report);
            EXPECT_EQ(settings.helperLights, lights);
            EXPECT_EQ(settings.autoParams, physical);
            EXPECT_EQ(settings.helperLightFraction, 0.8F);
        }
    }
}

TEST(SettingRules, SwitchNothingOn) {
    ExportSettings settings;
    settings.helperLights = false;
    settings.autoParams = false;
    Report report;
    applySettingRules(settings, everythingExists, report);
    EXPECT_FALSE(settings.helperLights);
    EXPECT_FALSE(settings.autoParams);
}

TEST(SettingRules, ClampTheQuality) {
    for (const auto& [quality, clamped] : {std::pair{-1, 0}, {0, 0}, {3, 3}, {5, 5}, {6, 5}}) {
        ExportSettings settings;
        settings.fallbackQuality = quality;
        Report report;
        applySettingRules(settings, everythingExists, report);
        EXPECT_EQ(settings.fallbackQuality, clamped) << quality;
    }
}

TEST(SettingRules, ReplaceMissingMaps) {
    ExportSettings settings;
    settings.customEnvironmentMap = "gone.dds";
    settings.customReflectionMap = "room.dds";
    Report report;
    applySettingRules(
        settings, [](const std::filesystem::path& path) { return path == "room.dds"; }, report);
    EXPECT_EQ(settings.customEnvironmentMap, "default.dds");
    EXPECT_EQ(settings.customReflectionMap, "room.dds");
    const ReportEntry replaced{MessageId::customMapReplaced, "\"gone.dds\"", "default.dds is used"};
    EXPECT_EQ(report.entries(), std::vector{replaced});
}

}  // namespace
}  // namespace velinor
