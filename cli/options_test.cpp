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
    EXPECT_EQ(parsed<InspectArguments>({"inspect", "-", "--json"}), (InspectArguments{"-", true, {}}));
    EXPECT_EQ(parsed<SnapshotArguments>({"snapshot", "a.fbx", "b.scene.cbor"}),
              (SnapshotArguments{"a.fbx", "b.scene.cbor", {}}));
    EXPECT_EQ(parsed<CheckArguments>({"check", "room"}), (CheckArguments{"room"}));
    EXPECT_EQ(parsed<FormatsArguments>({"formats", "--json"}), (FormatsArguments{true}));
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

TEST(ParseCommandLine, ReadsHowToReadForEveryCommandThatReads) {
    const std::vector<std::string> options{"--asset-folder",
                                           "a",
                                           "--asset-folder=b c",
                                           "--select",
                                           "Chair*",
                                           "--select=-x",
                                           "--up-axis",
                                           "z",
                                           "--import-memory-limit",
                                           "8192",
                                           "--import-time-limit=7"};
    const auto with = [&options](std::vector<std::string> arguments) {
        arguments.insert(arguments.end(), options.begin(), options.end());
        return arguments;
    };
    ReadingOptions expected;
    expected.assetFolders = {"a", "b c"};
    expected.selected = {"Chair*", "-x"};
    expected.upAxis = UpAxis::z;
    expected.importLimits = {std::uint64_t{8} << 30U, 7};
    EXPECT_EQ(parsed<ExportArguments>(with({"export", "s.fbx", "t.jsx"})).reading, expected);
    EXPECT_EQ(parsed<InspectArguments>(with({"inspect", "s.fbx"})).reading, expected);
    EXPECT_EQ(parsed<SnapshotArguments>(with({"snapshot", "s.fbx", "o.json"})).reading, expected);
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
