// The loaded plug-in: what it answers the host, and its exports of golden scenes.
#include "hosts/max/max_sdk.h"

#include <gmock/gmock.h>

#include <clocale>
#include <set>
#include <string>

#include "base/text.h"
#include "hosts/max/max_values.h"
#include "hosts/snapshot/snapshot_host.h"
#include "platform/temporary_folder.h"
#include "tests/max/golden_cases.h"
#include "tests/max/max_stage.h"
#include "tests/max/plug_in_library.h"
#include "tests/support/expected_package.h"
#include "tests/support/platform_text.h"
#include "tests/support/test_scene.h"
#include "tests/support/tree_compare.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

std::string utf8(const MCHAR* text) {
    return text == nullptr ? "(null)" : toUtf8(hostText(text));
}

SdkString textOfPath(const fs::path& path) {
    return maxString(path.u16string());
}

// One library for all tests, as in a running host.
const PlugInLibrary& plugIn() {
    static const PlugInLibrary library;
    return library;
}

TEST(PlugIn, AnswersAsALibrary) {
    EXPECT_EQ(utf8(plugIn().description()), "Velinor scene exporter");
    EXPECT_EQ(plugIn().numberOfClasses(), 1);
    EXPECT_EQ(plugIn().version(), 0x61A83E00U);
    EXPECT_EQ(plugIn().initialize(), 1);
    EXPECT_EQ(plugIn().shutdown(), 1);
    EXPECT_FALSE(plugIn().exports("CanAutoDefer"));
}

#ifdef _WIN32
TEST(PlugIn, AsksForTheLanguageOfTheHostWhenItIsLoaded) {
    const TemporaryFolder folder;
    const fs::path copy = folder.path() / "tolvex.dle";
    fs::copy_file(plugInFile(), copy);
    const int before = languagePackRequests();
    const PlugInLibrary another(copy);
    EXPECT_EQ(languagePackRequests(), before + 1);
}
#endif

TEST(PlugIn, HasOneDescriptorForGood) {
    EXPECT_NE(plugIn().classDesc(0), nullptr);
    EXPECT_EQ(plugIn().classDesc(0), plugIn().classDesc(0));
    EXPECT_EQ(plugIn().classDesc(1), nullptr);
    EXPECT_EQ(plugIn().classDesc(-1), nullptr);
}

TEST(PlugIn, DescribesItsClass) {
    ::ClassDesc& descriptor = *plugIn().classDesc(0);
    EXPECT_EQ(descriptor.IsPublic(), 1);
    EXPECT_EQ(descriptor.BeginCreate(nullptr), 0);
    EXPECT_EQ(descriptor.EndCreate(nullptr), 0);
    EXPECT_EQ(descriptor.OkToCreate(nullptr), 1);
    EXPECT_EQ(utf8(descriptor.ClassName()), "Velinor scene exporter");
    EXPECT_EQ(utf8(descriptor.NonLocalizedClassName()), "Velinor scene exporter");
    EXPECT_EQ(utf8(descriptor.InternalName()), "tolvex");
    EXPECT_EQ(descriptor.SuperClassID(), 0xA20U);
    EXPECT_EQ(descriptor.ClassID(), Class_ID(0xC685BBD1, 0x798E359E));
    EXPECT_EQ(utf8(descriptor.Category()), "Velinor");
    EXPECT_NE(descriptor.HInstance(), nullptr);
    EXPECT_FALSE(descriptor.UseOnlyInternalNameForMAXScriptExposure());
}

TEST(PlugIn, AnswersAsAnExporter) {
    const auto exporter = plugIn().exporter();
    ASSERT_NE(exporter, nullptr);
    EXPECT_EQ(exporter->ExtCount(), 1);
    EXPECT_EQ(utf8(exporter->Ext(0)), "JSX");
    EXPECT_EQ(utf8(exporter->Ext(7)), "JSX");
    EXPECT_EQ(utf8(exporter->LongDesc()), "Velinor scene descriptor .jsx and complimentary files");
    EXPECT_EQ(utf8(exporter->ShortDesc()), "Qen scene");
    EXPECT_EQ(utf8(exporter->AuthorName()), "Brevant Ltd.");
    EXPECT_EQ(utf8(exporter->CopyrightMessage()), "");
    EXPECT_EQ(utf8(exporter->OtherMessage1()), "");
    EXPECT_EQ(utf8(exporter->OtherMessage2()), "");
    EXPECT_EQ(exporter->Version(), 163U);
    EXPECT_EQ(exporter->SupportsOptions(0, 0), 1);
    EXPECT_EQ(exporter->SupportsOptions(5, 1), 1);
    exporter->ShowAbout(nullptr);
}

TEST(PlugIn, MakesANewExporterEachTime) {
    const auto first = plugIn().exporter();
    const auto second = plugIn().exporter();
    EXPECT_NE(first, nullptr);
    EXPECT_NE(first, second);
}

// The golden packages are those of a dialog that was confirmed. It names the sky that is shipped where the
// user has chosen none; without it none is named, and none copied.
Tree asWithoutDialog(Tree package) {
    const std::string named = "cubic_texture default.dds";
    for (auto& [file, content] : package) {
        for (std::size_t at = content.find(named); at != std::string::npos; at = content.find(named))
            content.replace(at, named.size(), "cubic_texture ");
    }
    package.erase("resources/default.dds");
    return package;
}

class PlugInExport : public testing::TestWithParam<std::string> {};

TEST_P(PlugInExport, IsTheGoldenPackage) {
    const SceneSnapshot scene = goldenScene(GetParam());
    const auto host = makeSnapshotHost(scene, caseFolder(GetParam()));
    MaxStage stage(*host);
    const TemporaryFolder target;
    const auto exporter = plugIn().exporter();
    ASSERT_NE(exporter, nullptr);
    const SdkString name = textOfPath(target.path() / "package.jsx");
    EXPECT_EQ(exporter->DoExport(name.c_str(), nullptr, nullptr, 1, 0), 1);
    const Tree actual = readTree(target.path() / "package");
    const Tree golden = asWithoutDialog(readTree(caseFolder(GetParam()) / "expected"));
    const auto difference = firstDifference(expectedHere(golden, actual), actual);
    EXPECT_EQ(difference, std::nullopt) << *difference;
    EXPECT_TRUE(stage.messages.empty());
    EXPECT_EQ(stage.sdkScene.treatment.heldObjects, 0);
    EXPECT_EQ(stage.sdkScene.treatment.calls.back(), "release");
    EXPECT_FALSE(stage.stageCore.isBarShown);
}

INSTANTIATE_TEST_SUITE_P(Case, PlugInExport, testing::ValuesIn(goldenCasesWithoutOptions()),
                         [](const auto& parameter) { return testName(parameter.param); });

// A scene of a helper and a camera, exported into a folder of its own.
class PlugInExportTest : public testing::Test {
  protected:
    PlugInExportTest() {
        scene_.addHelper(u"room");
        given_ = scene_.makeHost();
        stage_ = std::make_unique<MaxStage>(*given_);
        exporter_ = plugIn().exporter();
    }

    int exportScene() { return exporter_->DoExport(name_.c_str(), nullptr, nullptr, 1, 0); }

    std::string log() const {
        std::string lines;
        for (const std::string& line : stage_->stageCore.log)
            lines += line + "\n";
        return lines;
    }

    bool isWritten(const char* file) const { return fs::exists(package_ / file); }

    TestScene scene_;
    std::unique_ptr<host::Host> given_;
    std::unique_ptr<MaxStage> stage_;
    std::unique_ptr<::SceneExport> exporter_;
    TemporaryFolder target_;
    fs::path package_ = target_.path() / "package";
    SdkString name_ = textOfPath(target_.path() / "package.jsx");
};

TEST_F(PlugInExportTest, GivesTheHostNoExporterWithoutMemory) {
    stage_->hasMemory = false;
    EXPECT_EQ(plugIn().classDesc(0)->Create(0), nullptr);
    stage_->hasMemory = true;
    EXPECT_NE(plugIn().exporter(), nullptr);
}

TEST_F(PlugInExportTest, SetsTheLocaleOfTheWholeProcess) {
#ifdef _WIN32
    ASSERT_NE(std::setlocale(LC_ALL, "German"), nullptr);
#else
    ASSERT_NE(std::setlocale(LC_ALL, "C.UTF-8"), nullptr);
#endif
    ASSERT_STRNE(std::setlocale(LC_ALL, nullptr), "C");
    EXPECT_EQ(exportScene(), 1);
    EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
}

TEST_F(PlugInExportTest, ShowsItsProgressInTheHostsBar) {
    EXPECT_EQ(exportScene(), 1);
    EXPECT_EQ(stage_->stageCore.barsShown, 1);
    EXPECT_FALSE(stage_->stageCore.isBarShown);
    EXPECT_NE(std::ranges::find(stage_->stageCore.titles, "Writing index.jsx"),
              stage_->stageCore.titles.end());
    EXPECT_NE(std::ranges::find(stage_->stageCore.percents, 100), stage_->stageCore.percents.end());
}

TEST_F(PlugInExportTest, StopsWhereTheUserStopsIt) {
    stage_->stageCore.updatesUntilStop = 1;
    EXPECT_EQ(exportScene(), 1);
    EXPECT_FALSE(isWritten("index.jsx"));
    EXPECT_EQ(stage_->stageCore.cancel, 0);
    EXPECT_FALSE(stage_->stageCore.isBarShown);
    EXPECT_EQ(stage_->sdkScene.treatment.calls.back(), "release");
    EXPECT_NE(log().find("the export was stopped"), std::string::npos) << log();
}

TEST_F(PlugInExportTest, IsNotStoppedByAnOlderRequest) {
    stage_->stageCore.cancel = 1;
    EXPECT_EQ(exportScene(), 1);
    EXPECT_TRUE(isWritten("where.json"));
}

TEST_F(PlugInExportTest, WorksWithoutBarAndLog) {
    stage_->stageCore.refusesBar = true;
    stage_->stageCore.hasLog = false;
    stage_->stageCore.updatesUntilStop = 1;
    EXPECT_EQ(exportScene(), 1);
    EXPECT_TRUE(isWritten("where.json"));
    EXPECT_TRUE(stage_->stageCore.log.empty());
}

TEST_F(PlugInExportTest, WritesFilesAndMessagesToTheHostsLog) {
    scene_.value.nodes[0].hidden = true;
    EXPECT_EQ(exportScene(), 1);
    EXPECT_NE(log().find("where.json: "), std::string::npos) << log();
    EXPECT_NE(log().find("4 Velinor scene exporter: room: the node is hidden."), std::string::npos) << log();
    EXPECT_TRUE(stage_->messages.empty());
}

TEST_F(PlugInExportTest, LetsFileSystemErrorsReachTheHost) {
    fs::create_directories(package_ / "occupied");
    try {
        exportScene();
        ADD_FAILURE() << "nothing is thrown";
    } catch (const fs::filesystem_error& error) {
        EXPECT_NE(std::string(error.what()).find("filesystem error: remove: "), std::string::npos)
            << error.what();
        EXPECT_EQ(error.path1(), package_);
    }
    EXPECT_FALSE(stage_->stageCore.isBarShown);
    EXPECT_THAT(log(), testing::HasSubstr(
                           "1 Velinor scene exporter: tolvex: the export broke off, so the package is not "
                           "complete (remove: " +
                           utf8Path(package_) + ": "));
    EXPECT_THAT(log(), testing::HasSubstr("; a folder with other files is there: choose another name).\n"));
    fs::remove(package_ / "occupied");
    EXPECT_EQ(exportScene(), 1);
}

TEST_F(PlugInExportTest, TellsWhatToDoAboutAPackageThatIsThere) {
    EXPECT_EQ(exportScene(), 1);
    stage_->stageCore.log.clear();
    EXPECT_THROW(exportScene(), fs::filesystem_error);
    EXPECT_THAT(log(), testing::HasSubstr("(remove: " + utf8Path(package_) + ": "));
    EXPECT_THAT(log(), testing::HasSubstr(
                           "; a package is there already: delete the folder or choose another name).\n"));
    EXPECT_EQ(log().find("--overwrite"), std::string::npos) << log();
    EXPECT_TRUE(isWritten("index.jsx"));
}

TEST_F(PlugInExportTest, LetsTheHostsOwnErrorsThrough) {
    stage_->sdkScene.oddities.hasEmptyInstanceList = true;
    EXPECT_THROW(exportScene(), ::TabOutOfRangeException);
    EXPECT_FALSE(stage_->stageCore.isBarShown);
    EXPECT_EQ(stage_->sdkScene.treatment.calls.back(), "release");
}

TEST_F(PlugInExportTest, SaysWhyThereIsNoScene) {
    stage_->sdkScene.oddities.isNotEnumerated = true;
    EXPECT_EQ(exportScene(), 1);
    EXPECT_TRUE(isWritten("index.jsx"));
    EXPECT_NE(log().find("the host could not enumerate its scene"), std::string::npos) << log();
}

TEST_F(PlugInExportTest, WritesNothingWithoutAFileName) {
    EXPECT_EQ(exporter_->DoExport(nullptr, nullptr, nullptr, 1, 0), 1);
    EXPECT_NE(log().find("the host names no file"), std::string::npos) << log();
}

TEST_F(PlugInExportTest, StartsEachExportAnew) {
    EXPECT_EQ(exportScene(), 1);
    const Tree first = readTree(package_);
    const std::string firstLog = log();
    fs::remove_all(package_);
    stage_->stageCore.log.clear();
    EXPECT_EQ(exportScene(), 1);
    EXPECT_EQ(firstDifference(first, readTree(package_)), std::nullopt);
    EXPECT_EQ(log(), firstLog);
}

TEST_F(PlugInExportTest, TakesNamesOfAllAlphabets) {
    package_ = target_.path() / u"карта 日本";
    name_ = textOfPath(target_.path() / u"карта 日本.jsx");
    EXPECT_EQ(exportScene(), 1);
    // On Windows only those of its code page: the tools take no others.
    EXPECT_EQ(isWritten("index.jsx"), !kIsWindows) << log();
    EXPECT_EQ(fs::exists(package_), !kIsWindows);
    EXPECT_EQ(log().find("code page") != std::string::npos, kIsWindows) << log();
}

}  // namespace
}  // namespace velinor
