#include "plugin/exporter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "base/text.h"
#include "tests/support/platform_text.h"
#include "tests/support/test_scene.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

// A dialog that answers as told.
class ScriptedDialog final : public OptionsDialog {
  public:
    DialogResult run(ExportSettings& settings, Report& /*report*/) override {
        ++shown;
        settings.exportLights = false;
        return result;
    }
    DialogResult result = DialogResult::confirmed;
    int shown = 0;
};

// Makes the file that a command names last, and notes the end of its name.
class ScriptedTools final : public ToolRunner {
  public:
    ToolRun run(const ToolCommand& command) override {
        const fs::path output(command.arguments.back());
        made.push_back(utf8Path(output.filename()));
        std::ofstream(output) << (fs::exists(command.arguments[command.arguments[1] == "-d3d" ? 3 : 2])
                                      ? "made"
                                      : "");
        return {};
    }
    std::vector<std::string> made;
};

class ExporterTest : public testing::Test {
  protected:
    void SetUp() override {
        folder_ = fs::temp_directory_path() / (std::string("tolvex_exporter_") +
                                               testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(folder_);
        const fs::path installed = folder_ / "Plugins/tolvex";
        fs::create_directories(installed / "ogrexmltools");
        fs::create_directories(installed / "res");
        for (const char* name :
             {"ogrexmltools/OgreXMLConverter.exe", "ogrexmltools/meshprocessor.exe", "res/default.dds"}) {
            std::ofstream(installed / name) << name;
        }
    }
    void TearDown() override { fs::remove_all(folder_); }

    // Exports scene_ to "room.jsx" in the folder of this test.
    int run(int suppressPrompts, const ExportSettings& settings = withDefaultMaps()) {
        const auto host = scene_.makeHost();
        tolvex exporter({*host, report_, progress_, tools_, &dialog_, folder_ / "host"});
        exporter.settings = settings;
        const std::u16string name = *toUtf16(utf8Path(folder_ / "room.jsx"));
        return exporter.DoExport(name.c_str(), nullptr, nullptr, suppressPrompts, 0);
    }

    static ExportSettings withDefaultMaps() {
        ExportSettings settings;
        settings.customEnvironmentMap = settings.customReflectionMap = "default.dds";
        return settings;
    }

    // The codes of what was told.
    std::vector<std::string_view> told() const {
        std::vector<std::string_view> codes;
        for (const ReportEntry& entry : report_.entries())
            codes.push_back(message(entry.id).code);
        return codes;
    }

    std::string content(const char* name) const {
        std::ostringstream text;
        text << std::ifstream(folder_ / "room" / name).rdbuf();
        return text.str();
    }

    TestScene scene_;
    ScriptedDialog dialog_;
    ScriptedTools tools_;
    Report report_;
    NoProgress progress_;
    fs::path folder_;
};

TEST_F(ExporterTest, AnswersTheHostsQuestions) {
    const auto host = scene_.makeHost();
    tolvex exporter({*host, report_, progress_, tools_, nullptr, {}});
    EXPECT_EQ(exporter.ExtCount(), 1);
    EXPECT_EQ(std::u16string(exporter.Ext(0)), u"JSX");
    EXPECT_EQ(std::u16string(exporter.Ext(7)), u"JSX");
    EXPECT_EQ(std::u16string(exporter.ShortDesc()), u"Qen scene");
    EXPECT_EQ(std::u16string(exporter.LongDesc()), u"Velinor scene descriptor .jsx and complimentary files");
    EXPECT_EQ(std::u16string(exporter.AuthorName()), u"Brevant Ltd.");
    EXPECT_EQ(exporter.Version(), 163U);
    EXPECT_EQ(exporter.SupportsOptions(0, 1), 1);
    EXPECT_EQ(exporter.settings, ExportSettings{});
}

TEST_F(ExporterTest, WritesThePackageOfAnEmptyScene) {
    EXPECT_EQ(run(1), 1);
    EXPECT_EQ(content("index.jsx"), "<root>\n</root>\n\n");
    EXPECT_EQ(content("webtables.json"), "[]\n");
    EXPECT_TRUE(content("where.json").ends_with("\n}\n"));
    for (const char* name : {"misc", "resources", "thumbs"}) {
        EXPECT_TRUE(fs::is_directory(folder_ / "room" / name)) << name;
    }
    EXPECT_TRUE(content("resources/FXUnlitSkyboxCubic.material").ends_with("}\n\n"));
    EXPECT_EQ(content("resources/default.dds"), "res/default.dds");
    ASSERT_EQ(report_.written().size(), 5U);
    EXPECT_EQ(report_.written()[0], (WrittenFile{folder_ / "room/index.jsx", kIsWindows ? 19U : 16U}));
    EXPECT_FALSE(fs::exists(folder_ / "room.jsx"));
}

TEST_F(ExporterTest, ShowsNoDialogWhereThePromptsAreSuppressed) {
    scene_.addLight(u"Lamp", {});
    EXPECT_EQ(run(1), 1);
    EXPECT_EQ(dialog_.shown, 0);
    EXPECT_NE(content("index.jsx").find("<light"), std::string::npos);
}

TEST_F(ExporterTest, UsesWhatTheDialogChose) {
    scene_.addLight(u"Lamp", {});
    EXPECT_EQ(run(0), 1);
    EXPECT_EQ(dialog_.shown, 1);
    EXPECT_EQ(content("index.jsx").find("<light"), std::string::npos);
}

TEST_F(ExporterTest, WritesNothingWhereTheDialogIsCancelled) {
    dialog_.result = DialogResult::cancelled;
    EXPECT_EQ(run(0), 1);
    EXPECT_FALSE(fs::exists(folder_ / "room"));
    EXPECT_TRUE(report_.written().empty());
}

TEST_F(ExporterTest, GoesOnWhereTheDialogCannotBeShown) {
    dialog_.result = DialogResult::notCreated;
    EXPECT_EQ(run(0), 1);
    EXPECT_TRUE(fs::exists(folder_ / "room/index.jsx"));
    ASSERT_EQ(report_.entries().size(), 1U);
    EXPECT_EQ(report_.entries()[0].id, MessageId::dialogNotShown);
}

TEST_F(ExporterTest, WritesWebtablesAlsoWhereTheyAreOff) {
    scene_.addMesh(u"Webtable_1");
    ExportSettings settings;
    settings.exportWebtables = false;
    run(1, settings);
    EXPECT_NE(content("webtables.json").find("\"index\": 1"), std::string::npos);
}

TEST_F(ExporterTest, DoesNotReadTheSpareFlagsAndTheStoredOnes) {
    scene_.addMesh(u"Mesh");
    run(1);
    const std::string index = content("index.jsx");
    const std::string where = content("where.json");
    fs::remove_all(folder_ / "room");
    ExportSettings settings;
    settings.spareFlagA = settings.spareFlagB = settings.exportWebtables = false;
    settings.exportAnimation = settings.exportBones = true;
    run(1, settings);
    EXPECT_EQ(content("index.jsx"), index);
    EXPECT_EQ(content("where.json"), where);
}

TEST_F(ExporterTest, RepeatsAnExportByteForByte) {
    const auto parent = scene_.addMesh(u"Chair [a: 1]");
    scene_.addLight(u"Sun", {2, {1, 0.5F, 0.25F}, 1}, parent);
    run(1);
    const std::string index = content("index.jsx");
    fs::remove_all(folder_ / "room");
    run(1);
    EXPECT_EQ(content("index.jsx"), index);
}

TEST_F(ExporterTest, StartsEachOfSeveralExportsAnew) {
    scene_.addHelper(u"Helper");
    scene_.addMesh(u"Webtable_1");
    const auto host = scene_.makeHost();
    tolvex exporter({*host, report_, progress_, tools_, nullptr, folder_ / "host"});
    const std::u16string name = *toUtf16(utf8Path(folder_ / "room.jsx"));
    exporter.DoExport(name.c_str(), nullptr, nullptr, 1, 0);
    const std::string index = content("index.jsx");
    const std::string panels = content("webtables.json");
    fs::remove_all(folder_ / "room");
    exporter.DoExport(name.c_str(), nullptr, nullptr, 1, 0);
    EXPECT_EQ(content("index.jsx"), index);
    EXPECT_EQ(content("webtables.json"), panels);
}

TEST_F(ExporterTest, RefusesToReplaceAFullPackage) {
    run(1);
    try {
        run(1);
        FAIL() << "no exception";
    } catch (const fs::filesystem_error& error) {
        EXPECT_NE(std::string(error.what()).find("remove"), std::string::npos);
        EXPECT_EQ(error.path1(), folder_ / "room");
    }
    EXPECT_EQ(content("index.jsx"), "<root>\n</root>\n\n");
}

// Leaves an intermediate mesh in the package while the export runs, as the mesh phase does.
class LeavesIntermediateMesh final : public Progress {
  public:
    explicit LeavesIntermediateMesh(fs::path package) : package_(std::move(package)) {}
    void beginPhase(std::string_view name, std::uint64_t /*total*/) override {
        if (name != "Writing index.jsx") return;
        std::ofstream(package_ / "resources/a.mesh.xml") << "x";
        std::ofstream(package_ / "where.json") << std::string(100000, 'x');  // to be overwritten
    }
    void advance(std::uint64_t /*amount*/) override {}

  private:
    fs::path package_;
};

TEST_F(ExporterTest, CleansIntermediateMeshesWithAndWithoutMaterials) {
    for (const bool exportMaterials : {true, false}) {
        for (const bool cleanExportFolder : {true, false}) {
            const auto host = scene_.makeHost();
            LeavesIntermediateMesh progress(folder_ / "room");
            tolvex exporter({*host, report_, progress, tools_, nullptr, folder_ / "host"});
            exporter.settings.exportMaterials = exportMaterials;
            exporter.settings.cleanExportFolder = cleanExportFolder;
            const std::u16string name = *toUtf16(utf8Path(folder_ / "room.jsx"));
            exporter.DoExport(name.c_str(), nullptr, nullptr, 1, 0);
            EXPECT_EQ(fs::exists(folder_ / "room/resources/a.mesh.xml"), !cleanExportFolder)
                << exportMaterials;
            EXPECT_EQ(content("where.json").find("xxx"), std::string::npos) << "overwritten, not appended to";
            fs::remove_all(folder_ / "room");
        }
    }
}

TEST_F(ExporterTest, TellsOfADescriptorThatCannotBeWritten) {
    // The package folder is made by the exporter itself, so the only way in is a host that gets in its way.
    scene_.addHelper(u"Helper");
    class MeddlingProgress final : public Progress {
      public:
        explicit MeddlingProgress(fs::path package) : package_(std::move(package)) {}
        void beginPhase(std::string_view name, std::uint64_t /*total*/) override {
            if (name == "Collecting nodes") fs::create_directory(package_ / "index.jsx");
        }
        void advance(std::uint64_t /*amount*/) override {}

      private:
        fs::path package_;
    } progress(folder_ / "room");
    const auto host = scene_.makeHost();
    tolvex exporter({*host, report_, progress, tools_, nullptr, folder_ / "host"});
    const std::u16string name = *toUtf16(utf8Path(folder_ / "room.jsx"));
    exporter.settings = withDefaultMaps();
    EXPECT_EQ(exporter.DoExport(name.c_str(), nullptr, nullptr, 1, 0), 1);
    ASSERT_EQ(report_.entries().size(), 1U);
    EXPECT_EQ(report_.entries()[0],
              (ReportEntry{MessageId::fileNotWritten, utf8Path(folder_ / "room" / "index.jsx"),
                           kIsWindows ? "Permission denied" : "Is a directory"}));
    EXPECT_EQ(content("webtables.json"), "[]\n");
}

TEST_F(ExporterTest, WritesAllMeshesBeforeTheFirstIsConverted) {
    // The scripted tools write "made" only where the file is there that they are to read.
    scene_.addMesh(u"First");
    scene_.addMesh(u"Second one");
    run(1);
    EXPECT_THAT(tools_.made, ElementsAre("First.mesh", "First.mesh_phy.obj", "Second_one.mesh",
                                         "Second_one.mesh_phy.obj"));
    for (const char* name : {"First.mesh", "Second_one.mesh", "Second_one.mesh_phy.obj"}) {
        EXPECT_EQ(content((std::string("resources/") + name).c_str()), "made") << name;
    }
    EXPECT_FALSE(fs::exists(folder_ / "room/resources/First.mesh.xml"));
    EXPECT_THAT(told(), Contains("mesh-name-changed"));
}

TEST_F(ExporterTest, WritesAScriptForEachMaterialInUse) {
    scene_.addMesh(u"Wall");
    scene_.value.materials = {{.className = u"Standard", .name = u"Brick Wall"},
                              {.className = u"Standard", .name = u"Spare"}};
    scene_.value.nodes[0].material = 0;
    run(1);
    EXPECT_TRUE(content("resources/Brick_Wall.material").starts_with("material Brick_Wall\n"));
    EXPECT_TRUE(fs::exists(folder_ / "room/resources/000000000000.png"));
    EXPECT_FALSE(fs::exists(folder_ / "room/resources/Spare.material"));
}

TEST_F(ExporterTest, WritesNeitherScriptsNorSkyWithoutMaterials) {
    scene_.addMesh(u"Wall");
    scene_.value.materials = {{.className = u"Standard", .name = u"Brick"}};
    scene_.value.nodes[0].material = 0;
    ExportSettings settings = withDefaultMaps();
    settings.exportMaterials = false;
    run(1, settings);
    EXPECT_TRUE(fs::exists(folder_ / "room/resources/Wall.mesh"));
    EXPECT_FALSE(fs::exists(folder_ / "room/resources/Brick.material"));
    EXPECT_FALSE(fs::exists(folder_ / "room/resources/FXUnlitSkyboxCubic.material"));
    EXPECT_FALSE(fs::exists(folder_ / "room/resources/default.dds"));
    EXPECT_FALSE(fs::exists(folder_ / "room/resources/Wall.mesh.xml")) << "cleaning goes on";
}

TEST_F(ExporterTest, TellsMissingToolsFirst) {
    fs::remove_all(folder_ / "Plugins/tolvex/ogrexmltools");
    scene_.addMesh(u"Wall");
    run(1);
    EXPECT_EQ(told()[0], "tool-missing");
    EXPECT_EQ(told()[1], "tool-missing");
    ExportSettings settings = withDefaultMaps();
    settings.exportGeometry = false;
    fs::remove_all(folder_ / "room");
    report_ = {};
    run(1, settings);
    EXPECT_THAT(told(), Not(Contains("tool-missing"))) << "none is needed";
}

TEST_F(ExporterTest, TellsMeshesThatShareAFile) {
    scene_.addMesh(u"a b");
    scene_.addMesh(u"a_b");
    run(1);
    EXPECT_THAT(told(), Contains("mesh-name-shared"));
}

TEST_F(ExporterTest, TellsMeshesThatAreNamedAndNotThere) {
    // The master of the group is hidden, so nobody writes the mesh that its instance names.
    scene_.addMesh(u"Instance");
    scene_.addMesh(u"Master");
    scene_.value.nodes[1].hidden = true;
    const InstanceList group(std::vector<SnapshotRef>{0, 1});
    scene_.value.nodes[0].instances = scene_.value.nodes[1].instances = group;
    run(1);
    EXPECT_THAT(report_.entries(),
                Contains(ReportEntry{MessageId::meshFileMissing, "Master.mesh", "named by node Instance"}));
}

TEST_F(ExporterTest, TellsThatCollisionMeshesAreNamedAllTheSame) {
    scene_.addMesh(u"Wall");
    ExportSettings settings = withDefaultMaps();
    settings.generatePhysicalMeshes = false;
    run(1, settings);
    EXPECT_THAT(tools_.made, ElementsAre("Wall.mesh"));
    EXPECT_THAT(report_.entries(),
                Contains(ReportEntry{MessageId::collisionMeshesOff, "index.jsx", "1 mesh"}));
}

}  // namespace
}  // namespace velinor
