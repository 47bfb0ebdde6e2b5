#include "cli/resource_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "cli/ogre_mesh_test_support.h"
#include "platform/temporary_folder.h"

namespace velinor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kSky = "material FXUnlitSkyboxCubic\n{\n}\n\n";

// A folder with what a mesh "Chair" of the material "Brick" needs. A test changes one thing.
class ResourceCheckTest : public testing::Test {
  protected:
    ResourceCheckTest() {
        write("Chair.mesh", TestMesh().bytes());
        write("Chair.mesh_phy.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
        write("Brick.material", scriptOf("Brick", "wall.png"));
        write("FXUnlitSkyboxCubic.material", kSky);
        write("wall.png", "pixels");
    }

    static std::string scriptOf(const std::string& material, const std::string& texture) {
        return "material " + material + "\n{\n\ttexture " + texture + "\n}\n\n";
    }

    void write(const std::string& file, const std::string& content) const {
        std::ofstream(folder_.path() / file, std::ios::binary) << content;
    }
    void remove(const char* file) const { ASSERT_TRUE(std::filesystem::remove(folder_.path() / file)); }

    // The findings, a line each, when index.jsx names the meshes `names` in lines 1, 2, ...
    static std::vector<std::string> linesOf(const std::vector<PackageFault>& list) {
        std::vector<std::string> lines;
        for (const PackageFault& fault : list)
            lines.push_back(fault.file + ": " + fault.text);
        return lines;
    }
    void check(const std::vector<std::string>& names = {"Chair"}) {
        PackageFindings findings;
        ResourceCheck resources(folder_.path(), findings);
        for (std::size_t i = 0; i < names.size(); ++i) {
            resources.checkMesh(i + 1, names[i] + ".mesh");
            resources.checkCollisionMesh(i + 1, names[i] + ".mesh_phy.obj");
        }
        resources.finish();
        faults_ = linesOf(findings.faults);
        notes_ = linesOf(findings.notes);
    }

    std::vector<std::string> faults_;
    std::vector<std::string> notes_;

  private:
    TemporaryFolder folder_;
};

TEST_F(ResourceCheckTest, FindsNothingInAWholeFolder) {
    write("Chair.mesh.xml", "left behind");
    check();
    EXPECT_THAT(faults_, IsEmpty());
    EXPECT_THAT(notes_, IsEmpty());
}

TEST_F(ResourceCheckTest, FindsFilesThatAreNotThereAtEachMention) {
    remove("Chair.mesh_phy.obj");
    write("failed_physics.txt", "Chair\n");
    check({"Chair", "Chair"});
    EXPECT_THAT(faults_,
                ElementsAre("index.jsx: line 1: the file resources/Chair.mesh_phy.obj does not exist",
                            "index.jsx: line 2: the file resources/Chair.mesh_phy.obj does not exist"));
}

TEST_F(ResourceCheckTest, NotesThatCollisionMeshesWereNotWanted) {
    remove("Chair.mesh_phy.obj");
    check({"Chair", "Chair"});
    EXPECT_THAT(faults_, IsEmpty());
    EXPECT_THAT(
        notes_,
        ElementsAre("resources: no collision mesh is here, index.jsx names 2; the package was exported "
                    "without collision meshes"));
}

TEST_F(ResourceCheckTest, FindsFilesUnderTheirSanitisedNames) {
    write("Big_Box.mesh", TestMesh().bytes());
    remove("Chair.mesh");
    check({"Big Box"});
    EXPECT_THAT(faults_,
                ElementsAre("index.jsx: line 1: the file resources/Big Box.mesh_phy.obj does not exist"));
    EXPECT_THAT(notes_,
                ElementsAre("index.jsx: line 1: \"Big Box.mesh\" is the file resources/Big_Box.mesh"));
}

TEST_F(ResourceCheckTest, NeverLeavesTheFolder) {
    write(".._Chair.mesh", TestMesh().bytes());
    check({"../Chair"});
    EXPECT_THAT(faults_, ElementsAre("index.jsx: line 1: \"../Chair.mesh_phy.obj\" is no file name"));
    EXPECT_THAT(notes_,
                ElementsAre("index.jsx: line 1: \"../Chair.mesh\" is the file resources/.._Chair.mesh"));
}

TEST_F(ResourceCheckTest, FindsFilesOfNamesBeyondAscii) {
    write("T__r.mesh", TestMesh().bytes());
    write("T__r.mesh_phy.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    check({"T\xC3\xBCr", "T\xFCr"});  // in UTF-8 and, as instances have it, by low bytes
    EXPECT_THAT(faults_, IsEmpty());
    EXPECT_EQ(notes_.size(), 4U);
}

TEST_F(ResourceCheckTest, FindsDamagedMeshesOnce) {
    write("Chair.mesh", "");
    write("Chair.mesh_phy.obj", "v 0 0 0\nf 1 1 2\n");
    check({"Chair", "Chair"});
    EXPECT_THAT(
        faults_,
        ElementsAre("resources/Chair.mesh: is empty: the converter makes such files of meshes without faces",
                    "resources/Chair.mesh_phy.obj: line 2: a face names the point 2, there are 1 above it"));
}

TEST_F(ResourceCheckTest, FindsMaterialsWithoutAScript) {
    remove("Brick.material");
    check();
    EXPECT_THAT(faults_, ElementsAre("resources/Chair.mesh: the material \"Brick\" has no script"));
}

TEST_F(ResourceCheckTest, OnlyNotesMaterialsThatNeverGetAScript) {
    write("Chair.mesh", changedMesh([](TestMesh& mesh) { mesh.material = "default"; }).bytes());
    check();
    EXPECT_THAT(faults_, IsEmpty());
    EXPECT_THAT(
        notes_,
        ElementsAre(
            "resources/Chair.mesh: the material \"default\" has no script: it stands for no material"));

    write("Chair.mesh", changedMesh([](TestMesh& mesh) { mesh.material = "Odd"; }).bytes());
    write("Odd.material_properties", "colour\n\n");
    check();
    EXPECT_THAT(faults_, IsEmpty());
    EXPECT_THAT(notes_,
                ElementsAre("resources/Chair.mesh: the material \"Odd\" has no script: materials of its "
                            "class are not exported"));
}

TEST_F(ResourceCheckTest, NotesAPackageWithoutMaterials) {
    remove("Brick.material");
    remove("FXUnlitSkyboxCubic.material");
    check();
    EXPECT_THAT(faults_, IsEmpty());
    EXPECT_THAT(notes_,
                ElementsAre("resources: no material script declares a material, 1 in use; the package was "
                            "exported without materials"));
    check({});
    EXPECT_THAT(notes_, IsEmpty());
}

TEST_F(ResourceCheckTest, FindsAMissingSky) {
    remove("FXUnlitSkyboxCubic.material");
    check();
    EXPECT_THAT(faults_, ElementsAre("resources: no script declares the sky FXUnlitSkyboxCubic"));
}

TEST_F(ResourceCheckTest, FindsTexturesThatAreMissingOrEmpty) {
    write("Brick.material",
          "material Brick\n{\n\ttexture none.png\n\tcubic_texture empty.dds combinedUVW\n\ttexture "
          "../wall.png\n}\n");
    write("empty.dds", "");
    check();
    EXPECT_THAT(faults_,
                ElementsAre("resources/Brick.material: line 3: the texture resources/none.png does not exist",
                            "resources/Brick.material: line 4: the texture resources/empty.dds is empty",
                            "resources/Brick.material: line 5: the texture resources/../wall.png does not "
                            "exist"));
}

TEST_F(ResourceCheckTest, FindsScriptsThatOgreDoesNotTake) {
    write("Brick.material", scriptOf("Brick", "my wall.png"));
    write("Other.material", scriptOf("Brick", "wall.png"));
    write("Nothing.material", "\n");
    check();
    EXPECT_THAT(
        faults_,
        ElementsAre("resources/Brick.material: line 3: the texture name \"my wall.png\" holds a blank, which "
                    "OGRE does not read as part of a name; rename the file",
                    "resources/Nothing.material: declares no material",
                    "resources/Other.material: line 1: the material \"Brick\" is in "
                    "resources/Brick.material, too"));
}

}  // namespace
}  // namespace velinor
