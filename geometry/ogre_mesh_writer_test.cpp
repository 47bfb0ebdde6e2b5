#include "geometry/ogre_mesh_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <limits>
#include <sstream>

#include "hosts/snapshot/snapshot_host.h"
#include "platform/temporary_folder.h"
#include "tests/support/platform_text.h"

namespace velinor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class OgreMeshWriterTest : public testing::Test {
  protected:
    // Makes a scene of one node with that mesh, and writes it as "Chair".
    bool write(SnapshotMesh mesh, std::int32_t type = host::IGameObject::IGAME_MESH) {
        scene_.meshes.push_back(std::move(mesh));
        SnapshotObject object{.type = type};
        if (type == host::IGameObject::IGAME_MESH) object.mesh = 0;
        scene_.nodes.push_back({.name = u"Chair", .material = material_, .object = object});
        scene_.roots.push_back(0);
        host_ = makeSnapshotHost(scene_, "");
        const MeshWriterContext context{resources_, settings_, *host_, materials_, report_, progress_};
        return writeOgreMesh(context, *host_->GetIGameInterface()->GetTopLevelNode(0), "Chair");
    }

    std::string file() const {
        std::ifstream stream(resources_ / "Chair.mesh.xml", std::ios::binary);
        return (std::ostringstream() << stream.rdbuf()).str();
    }

    std::vector<std::string_view> told() const {
        std::vector<std::string_view> codes;
        for (const ReportEntry& entry : report_.entries())
            codes.push_back(message(entry.id).code);
        return codes;
    }

    static SnapshotMesh triangle(float size = 1) {
        return {.vertices = {{0, 0, 0}, {size, 0, 0}, {0, size, 0}}, .faces = {{0, 1, 2}}};
    }

    TemporaryFolder folder_;
    std::filesystem::path resources_ = folder_.path();
    SceneSnapshot scene_;
    std::optional<SnapshotRef> material_;
    std::unique_ptr<host::Host> host_;
    ExportSettings settings_;
    MaterialMap materials_;
    Report report_;
    NoProgress progress_;
};

TEST_F(OgreMeshWriterTest, EndsTheFileWithAFurtherLineFeed) {
    EXPECT_TRUE(write(triangle()));
    EXPECT_TRUE(file().starts_with(asTextFile("<?xml version=\"1.0\"?>\n<mesh>\n")));
    EXPECT_TRUE(file().ends_with(asTextFile("</mesh>\n\n")));
    EXPECT_THAT(told(), ElementsAre("mesh-without-material"));
    EXPECT_THAT(report_.written(), IsEmpty()) << "it will be removed";
}

TEST_F(OgreMeshWriterTest, CountsTheFileAsWrittenOnlyWhereItStays) {
    settings_.cleanExportFolder = false;
    write(triangle());
    EXPECT_THAT(report_.written(), ElementsAre(WrittenFile{resources_ / "Chair.mesh.xml", file().size()}));
}

TEST_F(OgreMeshWriterTest, ReplacesAFileThatIsThere) {
    std::ofstream(resources_ / "Chair.mesh.xml") << std::string(100000, 'x');
    write(triangle());
    EXPECT_TRUE(file().ends_with(asTextFile("</mesh>\n\n")));
    EXPECT_EQ(file().find('x' + std::string(3, 'x')), std::string::npos);
}

TEST_F(OgreMeshWriterTest, NotesTheMaterial) {
    scene_.materials.push_back({.className = u"Standard", .name = u"Oak #1"});
    material_ = 0;
    write(triangle());
    EXPECT_NE(file().find("<submesh material=\"Oak__1\""), std::string::npos);
    ASSERT_EQ(materials_.size(), 1U);
    EXPECT_EQ(materials_.begin()->second, (MaterialGroup{{"Oak__1", ""}}));
}

TEST_F(OgreMeshWriterTest, LeavesOutWhatIsNoMesh) {
    EXPECT_TRUE(write({}, host::IGameObject::IGAME_SPLINE));
    EXPECT_THAT(told(), ElementsAre("mesh-not-triangles"));
    EXPECT_FALSE(std::filesystem::exists(resources_ / "Chair.mesh.xml"));
}

TEST_F(OgreMeshWriterTest, TellsAFileThatCannotBeWritten) {
    resources_ /= "missing";
    EXPECT_TRUE(write(triangle()));
    EXPECT_THAT(told(), ElementsAre("mesh-without-material", "file-not-written"));
}

TEST_F(OgreMeshWriterTest, TellsAMeshWithoutFaces) {
    write({.vertices = {{0, 0, 0}}});
    EXPECT_THAT(told(), ElementsAre("mesh-empty", "mesh-without-material"));
}

TEST_F(OgreMeshWriterTest, TellsExtentsThatSixDecimalsDoNotHold) {
    write(triangle(0.009F));
    EXPECT_THAT(told(), ElementsAre("mesh-small", "mesh-without-material"));
}

TEST_F(OgreMeshWriterTest, TellsExtentsThatFloatsDoNotHold) {
    write(triangle(2e5F));
    EXPECT_THAT(told(), ElementsAre("mesh-large", "mesh-without-material"));
}

TEST_F(OgreMeshWriterTest, TellsVerticesThatAreNowhere) {
    SnapshotMesh mesh = triangle();
    mesh.vertices[1].x = std::numeric_limits<float>::quiet_NaN();
    mesh.vertices[2].y = std::numeric_limits<float>::infinity();
    write(mesh);
    EXPECT_THAT(told(), ElementsAre("mesh-not-finite", "mesh-without-material"));
    EXPECT_EQ(report_.entries()[0].detail, "2 of 3 vertices");
    EXPECT_NE(file().find("nan\""), std::string::npos) << "what the host gives is written";
}

}  // namespace
}  // namespace velinor
