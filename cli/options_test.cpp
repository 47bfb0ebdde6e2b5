#include "cli/options.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "cli/command_error.h"
#include "cli/setting_options.h"

namespace velinor {
namespace {

template <typename Arguments>
Arguments parsed(std::vector<std::string> arguments) {
    return std::get<Arguments>(parseCommandLine(arguments));
}

ExportSettings settingsOf(std::vector<std::string> options) {
    options.insert(options.begin(), "export");
    options.insert(options.end(), {"room.fbx", "room.jsx"});
    return parsed<ExportArguments>(options).settings;
}

TEST(ParseCommandLine, GivesTheDefaultsWithoutOptions) {
    ExportArguments expected;
    expected.scene = "room.fbx";
    expected.target = "out/room.jsx";
    EXPECT_EQ(parsed<ExportArguments>({"export", "room.fbx", "out/room.jsx"}), expected);
}

TEST(ParseCommandLine, ReadsEachCommand) {
    EXPECT_EQ(parsed<InspectArguments>({"inspect", "-", "--json"}), (InspectArguments{"-", true}));
    EXPECT_EQ(parsed<SnapshotArguments>({"snapshot", "a.fbx", "b.scene.cbor"}),
              (SnapshotArguments{"a.fbx", "b.scene.cbor", {}}));
    EXPECT_EQ(parsed<CheckArguments>({"check", "room"}), (CheckArguments{"room"}));
}

TEST(ParseCommandLine, TakesNamesThatLookLikeOptionsAfterTwoDashes) {
    EXPECT_EQ(parsed<CheckArguments>({"check", "--", "--json"}).package, "--json");
}

TEST(ParseCommandLine, TakesCommandNamesAsFileNames) {
    const auto arguments = parsed<ExportArguments>({"export", "check", "export"});
    EXPECT_EQ(arguments.scene, "check");
    EXPECT_EQ(arguments.target, "export");
}

TEST(ParseCommandLine, SetsAndClearsEveryFlag) {
    for (const SettingOption& option : settingOptions()) {
        const auto* field = std::get_if<bool ExportSettings::*>(&option.field);
        if (field == nullptr) continue;
        const std::string name(option.name);
        EXPECT_TRUE(settingsOf({"--" + name}).**field) << name;
        EXPECT_FALSE(settingsOf({"--no-" + name}).**field) << name;
        EXPECT_TRUE(settingsOf({"--no-" + name, "--" + name}).**field) << name << ", the last one counts";
    }
}

TEST(ParseCommandLine, ReadsEveryNumberAndPath) {
    const ExportSettings settings =
        settingsOf({"--helper-light-fraction", "0.25", "--fallback-quality=9", "--polycount-goal", "-7",
                    "--ambient-red", "-0.5", "--ambient-green=1e2", "--ambient-blue", ".5",
                    "--custom-environment-map", "небо.dds", "--custom-reflection-map=a b.dds"});
    EXPECT_EQ(settings.helperLightFraction, 0.25F);
    EXPECT_EQ(settings.fallbackQuality, 9) << "the rules of the dialog come later";
    EXPECT_EQ(settings.polycountGoal, -7);
    EXPECT_EQ(settings.ambientRed, -0.5F);
    EXPECT_EQ(settings.ambientGreen, 100.0F);
    EXPECT_EQ(settings.ambientBlue, 0.5F);
    EXPECT_EQ(settings.customEnvironmentMap, u8"небо.dds");
    EXPECT_EQ(settings.customReflectionMap, "a b.dds");
}

TEST(ParseCommandLine, CollectsAssetFolders) {
    using Paths = std::vector<std::filesystem::path>;
    EXPECT_EQ(
        parsed<ExportArguments>({"export", "--asset-folder", "a", "s.fbx", "--asset-folder=b c", "t.jsx"})
            .assetFolders,
        (Paths{"a", "b c"}));
    EXPECT_EQ(parsed<SnapshotArguments>({"snapshot", "--asset-folder", "a", "s.fbx", "o.json"}).assetFolders,
              Paths{"a"});
}

TEST(ParseCommandLine, HasAnOptionForEachFieldWithAControl) {
    EXPECT_EQ(settingOptions().size(), 21U);
}

std::string contentOf(const std::filesystem::path& path) {
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

TEST(OptionsDocument, ExplainsEveryOption) {
    const std::string document = contentOf(std::filesystem::path(TOLVEX_SOURCE_DIR) / "docs/options.md");
    for (const SettingOption& option : settingOptions()) {
        const std::string name = "`--" + std::string(option.name) + "`";
        EXPECT_NE(document.find(name), std::string::npos) << name;
    }
}

TEST(OptionsDocument, CallsCheckBoxesByTheirNames) {
    const std::filesystem::path root = TOLVEX_SOURCE_DIR;
    const std::string document = contentOf(root / "docs/options.md");
    std::istringstream resource(contentOf(root / "plugin/options_dialog.rc"));
    int found = 0;
    for (std::string line; std::getline(resource, line);) {
        const std::size_t open = line.find('"');
        if (line.find("AUTOCHECKBOX") == std::string::npos || open == std::string::npos) continue;
        const std::string label = line.substr(open + 1, line.find('"', open + 1) - open - 1);
        EXPECT_NE(document.find("| " + label + " |"), std::string::npos) << label;
        ++found;
    }
    EXPECT_EQ(found, 13);
}

}  // namespace
}  // namespace velinor
