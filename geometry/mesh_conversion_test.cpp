#include "geometry/mesh_conversion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <sstream>

#include "base/text.h"
#include "platform/path_text.h"
#include "platform/temporary_folder.h"
#include "tests/support/platform_text.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

// Runs nothing: it notes the commands, and does what the test wants done.
class ScriptedTools final : public ToolRunner {
  public:
    ToolRun run(const ToolCommand& command) override {
        const bool isConverter = command.arguments[1] == "-d3d";
        commandLines.push_back(command.commandLine);
        if (isConverter) {
            converted.push_back(command.arguments[3]);
        } else {
            options.push_back(optionOf(command));
        }
        if (isConverter ? makesMesh : options.size() == successfulAttempt) {
            std::ofstream(fs::path(command.arguments.back())) << content;
        }
        return result;
    }

    bool makesMesh = true;
    std::size_t successfulAttempt = 1;  // of the collision mesh; 0: none
    std::string content = "something";
    ToolRun result{.output = "it said this\n"};
    std::vector<std::string> commandLines;
    std::vector<std::string> converted;  // the files that the converter was to read
    std::vector<std::string> options;    // what the processor was to do

  private:
    static std::string optionOf(const ToolCommand& command) {
        std::string option;
        for (std::size_t i = 3; i + 2 < command.arguments.size(); ++i)
            option += (option.empty() ? "" : " ") + command.arguments[i];
        return option;
    }
};

class MeshConversionTest : public testing::Test {
  protected:
    void SetUp() override {
        folders_.pluginFolder = folder_.path() / "Plugins";
        folders_.resourcesFolder = resources_;
    }

    bool convert(const std::string& baseName, std::int32_t faceCount = 5000) {
        return convertMesh({folders_, settings_, tools_, report_}, baseName, faceCount);
    }

    std::string content(const std::string& name) const {
        std::ifstream stream(resources_ / name, std::ios::binary);
        return (std::ostringstream() << stream.rdbuf()).str();
    }
    bool exists(const std::string& name) const { return fs::exists(resources_ / name); }

    std::vector<std::string> told() const {
        std::vector<std::string> lines;
        for (const ReportEntry& entry : report_.entries())
            lines.push_back(std::string(message(entry.id).code) + " " + entry.subject + " " + entry.detail);
        return lines;
    }

    TemporaryFolder folder_;
    fs::path resources_ = folder_.path();
    PackageFolders folders_;
    ExportSettings settings_;
    ScriptedTools tools_;
    Report report_;
};

TEST_F(MeshConversionTest, MakesBothFilesOfAMesh) {
    EXPECT_TRUE(convert("Chair"));
    EXPECT_THAT(tools_.converted, ElementsAre(utf8Path(resources_ / "Chair.mesh.xml")));
    EXPECT_THAT(tools_.options, ElementsAre("-meshDecimation 10 10 0.303030"));
    EXPECT_TRUE(exists("Chair.mesh"));
    EXPECT_TRUE(exists("Chair.mesh_phy.obj"));
    EXPECT_FALSE(exists("failed_mesh.txt"));
    EXPECT_FALSE(exists("failed_physics.txt"));
    EXPECT_THAT(told(), IsEmpty());
    EXPECT_THAT(report_.written(), ElementsAre(WrittenFile{resources_ / "Chair.mesh", 9},
                                               WrittenFile{resources_ / "Chair.mesh_phy.obj", 9}));
}

TEST_F(MeshConversionTest, NamesFilesWithTheSystemsSeparators) {
    settings_.autoParams = false;
    settings_.fallbackQuality = 5;
    convert("Chair");
    const std::string resources = asPathText(utf8Path(resources_) + "/");
    const std::string tools = asPathText(utf8Path(folder_.path()) + "/Plugins/tolvex/ogrexmltools/");
    EXPECT_THAT(tools_.commandLines,
                ElementsAre("\"" + tools + "OgreXMLConverter.exe\" -d3d -q  \"" + resources +
                                "Chair.mesh.xml\" \"" + resources + "Chair.mesh\"",
                            "\"" + tools + "meshprocessor.exe\" -import \"" + resources +
                                "Chair.mesh.xml\" -convexHull -saveCollisionShapes \"" + resources +
                                "Chair.mesh_phy.obj\""));
}

TEST_F(MeshConversionTest, TriesACollisionMeshThreeTimes) {
    tools_.successfulAttempt = 0;
    EXPECT_TRUE(convert("Chair"));
    EXPECT_THAT(tools_.options, ElementsAre("-meshDecimation 10 10 0.303030",
                                            "-meshDecimation 10 10 0.293030", "-meshDecimation 10 10 0.2"));
    EXPECT_EQ(content("failed_physics.txt"), asTextFile({"Chair\n\0\0", 8}));
    EXPECT_THAT(told(),
                ElementsAre("collision-mesh-not-made Chair.mesh_phy.obj exit status 0: it said this"));
}

TEST_F(MeshConversionTest, StopsAtTheFirstTryThatLeavesAFile) {
    tools_.successfulAttempt = 2;
    convert("Chair");
    EXPECT_EQ(tools_.options.size(), 2U);
    EXPECT_FALSE(exists("failed_physics.txt"));
}

TEST_F(MeshConversionTest, TriesTheFallbackOnceWithoutAutomaticParameters) {
    settings_.autoParams = false;
    settings_.fallbackQuality = 0;
    tools_.successfulAttempt = 0;
    convert("Chair");
    EXPECT_THAT(tools_.options, ElementsAre(""));
    EXPECT_EQ(content("failed_physics.txt"), asTextFile({"Chair\n\0\0", 8}));
}

TEST_F(MeshConversionTest, KeepsACollisionMeshThatIsThere) {
    std::ofstream(resources_ / "Chair.mesh_phy.obj") << "old";
    convert("Chair");
    EXPECT_THAT(tools_.options, IsEmpty());
    EXPECT_EQ(content("Chair.mesh_phy.obj"), "old");
    EXPECT_FALSE(exists("failed_physics.txt"));
    EXPECT_THAT(told(), IsEmpty());
}

TEST_F(MeshConversionTest, MakesNoCollisionMeshUnasked) {
    settings_.generatePhysicalMeshes = false;
    convert("Chair");
    EXPECT_THAT(tools_.options, IsEmpty());
    EXPECT_FALSE(exists("failed_physics.txt"));
}

TEST_F(MeshConversionTest, NotesFailuresInRecordsOfEightBytes) {
    tools_.makesMesh = false;
    for (const char* name : {"Chair", "Armchair", "Bookshelf", "Shelves", ""})
        convert(name);
    EXPECT_EQ(content("failed_mesh.txt"), asTextFile(std::string("Chair\n\0\0", 8) + "Armchair" + "Bookshel" +
                                                     "Shelves\n" + std::string("\n\0\0\0\0\0\0\0", 8)));
    EXPECT_EQ(told().front(), "mesh-not-converted Chair.mesh exit status 0: it said this");
}

TEST_F(MeshConversionTest, AppendsToTheLogsOfEarlierExports) {
    std::ofstream(resources_ / "failed_mesh.txt") << "Earlier\n";
    tools_.makesMesh = false;
    convert("Armchair");
    EXPECT_EQ(content("failed_mesh.txt"), asTextFile("Earlier\nArmchair"));
}

TEST_F(MeshConversionTest, TellsFilesThatAreEmpty) {
    tools_.content.clear();
    convert("Chair");
    EXPECT_FALSE(exists("failed_mesh.txt")) << "an empty file counts as there";
    EXPECT_THAT(told(), ElementsAre("tool-output-empty Chair.mesh exit status 0: it said this",
                                    "tool-output-empty Chair.mesh_phy.obj exit status 0: it said this"));
}

TEST_F(MeshConversionTest, TellsToolsThatFailAndLeaveAFile) {
    tools_.result = {.end = ToolRun::End::crashed, .code = 6, .output = ""};
    convert("Chair");
    EXPECT_THAT(told(), ElementsAre("tool-failed Chair.mesh ended by signal 6",
                                    "tool-failed Chair.mesh_phy.obj ended by signal 6"));
}

TEST_F(MeshConversionTest, TellsToolsThatAreMissing) {
    reportMissingTools(folders_, settings_, report_);
    const fs::path tools = folders_.pluginFolder / "tolvex" / "ogrexmltools";
    EXPECT_THAT(told(), ElementsAre("tool-missing " + utf8Path(tools / "OgreXMLConverter.exe") + " ",
                                    "tool-missing " + utf8Path(tools / "meshprocessor.exe") + " "));
}

TEST_F(MeshConversionTest, TellsToolsThatCannotBeStartedByTheirPath) {
    settings_.generatePhysicalMeshes = false;
    folders_.pluginFolder = folder_.path() / pathOfUtf8("\u0431\u0438\u043d \u65e5");
    const fs::path tools = folders_.pluginFolder / "tolvex" / "ogrexmltools";
    fs::create_directories(tools);
    std::ofstream(tools / "OgreXMLConverter.exe") << "x";
    reportMissingTools(folders_, settings_, report_);
    if (hasNarrowForm(tools)) {
        EXPECT_THAT(told(), IsEmpty());
    } else {
        EXPECT_THAT(told(),
                    ElementsAre("tool-path-not-narrow " + utf8Path(tools / "OgreXMLConverter.exe") + " "));
    }
}

TEST_F(MeshConversionTest, NeedsOnlyTheToolsThatTheSettingsAskFor) {
    settings_.generatePhysicalMeshes = false;
    fs::create_directories(folders_.pluginFolder / "tolvex/ogrexmltools");
    std::ofstream(folders_.pluginFolder / "tolvex/ogrexmltools/OgreXMLConverter.exe") << "x";
    reportMissingTools(folders_, settings_, report_);
    EXPECT_THAT(told(), IsEmpty());
}

TEST_F(MeshConversionTest, PassesOnThatTheCollisionMeshCannotBeLookedFor) {
    folders_.resourcesFolder = std::string(5000, 'x');
    if (kIsWindows) {
        // Windows says of such a name that nothing is there.
        convert("Chair");
        EXPECT_THAT(told(),
                    ElementsAre(StartsWith("file-not-written "), StartsWith("mesh-not-converted "),
                                StartsWith("file-not-written "), StartsWith("collision-mesh-not-made ")));
        return;
    }
    try {
        convert("Chair");
        FAIL() << "no error";
    } catch (const fs::filesystem_error& error) {
        EXPECT_NE(std::string(error.what()).find("exists"), std::string::npos);
        EXPECT_EQ(error.path1().filename(), "Chair.mesh_phy.obj");
    }
}

}  // namespace
}  // namespace velinor
