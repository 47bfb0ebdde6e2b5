// The ASE files of the model collection, all written by 3ds Max.
#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iostream>
#include <map>
#include <numbers>
#include <vector>

#include "hosts/ase/ase_lexer.h"
#include "hosts/ase/ase_test_support.h"
#include "hosts/ase/ase_text.h"
#include "hosts/snapshot/render_normals.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;
using host::IGameObject;
using host::Point3;

class AseModels : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(fs::is_directory(models()))
            << "the test models are missing in " << models()
            << ": install the package assimp-testmodels, or set TOLVEX_TEST_MODELS to their folder";
    }

    static fs::path models() { return fs::path(TOLVEX_TEST_MODELS) / "ASE"; }
    static ReadAse readModel(const fs::path& name) { return readAseFile(models() / name); }
};

void expectRow(const host::GMatrix::Row& row, float x, float y, float z) {
    EXPECT_EQ(row[0], x);
    EXPECT_EQ(row[1], y);
    EXPECT_EQ(row[2], z);
}

TEST_F(AseModels, NodesHaveTheRowsOfTheFile) {
    const ReadAse read = readModel("anim2.ASE");
    ASSERT_EQ(read.scene.nodes.size(), 6U);
    const host::GMatrix& box = read.node(u"Box02").worldTransform;
    expectRow(box[0], 0.7748F, 0, -0.0193F);
    expectRow(box[1], -0.0056F, 0.7418F, -0.2246F);
    expectRow(box[2], 0.0301F, 0.3655F, 1.2066F);
    expectRow(box[3], -45.457F, -12.7152F, 18.9634F);
    expectRow(read.node(u"Camera01").worldTransform[0], 0.4542F, -0.8829F, -0.1190F);
    expectRow(read.node(u"Camera01").worldTransform[3], -84.7152F, -0.4114F, 0);
    expectRow(read.node(u"FDirect01").worldTransform[2], 0, -0.8493F, 0.5278F);
    EXPECT_EQ(read.notesOf(utf8Path(models() / "anim2.ASE"), "animations"), 1);
}

TEST_F(AseModels, LightsHaveTheirTypesAndColours) {
    const ReadAse read = readModel("anim2.ASE");
    EXPECT_EQ(read.node(u"FDirect01").object->light, (host::LightState{host::DIRECT_LGT, {1, 1, 1}, 1}));
    EXPECT_EQ(read.node(u"FDirect02").object->light, (host::LightState{host::DIRECT_LGT, {1, 1, 1}, 1}));
    EXPECT_EQ(read.node(u"Sky01").object->light, (host::LightState{host::OMNI_LGT, {0.95F, 0.95F, 1}, 1}));
}

TEST_F(AseModels, ABoxHasEightVerticesSixIdsAndTextureCoordinates) {
    const ReadAse read = readModel("anim2.ASE");
    const SnapshotMesh& box = read.mesh(u"Box01");
    EXPECT_EQ(box.vertices.size(), 8U);
    EXPECT_NEAR(box.vertices[0].x, -23.0769 + 1.4245, 1e-5);
    EXPECT_NEAR(box.vertices[0].y, -15.0997 - 6.5527, 1e-5);
    EXPECT_THAT(box.materialIds, testing::ElementsAre(1, 1, 0, 0, 4, 4, 3, 3, 5, 5, 2, 2));
    EXPECT_THAT(box.smoothing, testing::ElementsAre(2, 2, 4, 4, 8, 8, 16, 16, 32, 32, 64, 64));
    EXPECT_EQ(box.maps.at(1).vertices.size(), 12U);
    EXPECT_EQ(box.maps.at(1).faces[0], (FaceIndices{9, 11, 10}));
    EXPECT_FALSE(read.node(u"Box01").material);
    // Turned and scaled in the world, and upright in its own space, as far as four decimals of the rows go.
    const std::vector<Point3>& other = read.mesh(u"Box02").vertices;
    EXPECT_NEAR(other[1].y, other[0].y, 3e-3);
    EXPECT_NEAR(other[1].z, other[0].z, 3e-3);
    EXPECT_NEAR(other[4].x, other[0].x, 3e-3);
}

TEST_F(AseModels, ABodyHasItsMeshesHelpersAndHierarchy) {
    const ReadAse read = readModel("MotionCaptureROM.ase");
    EXPECT_EQ(read.scene.nodes.size(), 31U);
    EXPECT_EQ(read.scene.roots.size(), 1U);
    std::map<std::int32_t, int> types;
    std::size_t triangles = 0;
    std::uint32_t groups = 0;
    for (const SnapshotNode& node : read.scene.nodes)
        ++types[node.object->type];
    for (const SnapshotMesh& mesh : read.scene.meshes) {
        triangles += mesh.faces.size();
        for (const std::uint32_t mask : mesh.smoothing)
            groups |= mask;
    }
    EXPECT_EQ(types,
              (std::map<std::int32_t, int>{{IGameObject::IGAME_MESH, 26}, {IGameObject::IGAME_HELPER, 5}}));
    EXPECT_EQ(triangles, 2016U);
    EXPECT_EQ(groups, 0x1FFFFU) << "groups 1 to 17";
    EXPECT_EQ(read.node(u"Bip01 KopfNub").object->className, u"Dummy");
}

TEST_F(AseModels, ThreeEncodingsAreRead) {
    const ReadAse bytes = readModel("ThreeCubesGreen.ASE");
    ASSERT_EQ(bytes.scene.materials.size(), 3U);
    EXPECT_EQ(bytes.material(u"02 - Default").diffuse, (Point3{0.6510F, 0.2902F, 0}));
    EXPECT_EQ(bytes.material(u"02 - Default").glossiness, 0.1F);
    EXPECT_EQ(bytes.node(u"Quader01").material, 0U);
    EXPECT_TRUE(readModel("ThreeCubesGreen_UTF16LE.ASE").scene == bytes.scene);
    const ReadAse bigEndian = readModel("ThreeCubesGreen_UTF16BE.ASE");
    EXPECT_TRUE(bigEndian.scene.meshes == bytes.scene.meshes);
    EXPECT_EQ(bigEndian.mesh(u"\u65E5\u672C\u8A9E").faces.size(), 12U);
    EXPECT_EQ(bigEndian.material(u"\u30AB\u30BF\u30AB\u30CA2").diffuse, (Point3{0.4F, 0.6314F, 0}));
}

TEST_F(AseModels, TargetsOfCamerasAreNotTheCameras) {
    const ReadAse read = readModel("TargetCameraAnim.ase");
    expectRow(read.node(u"Camera01").worldTransform[3], -65.8677F, 16.1213F, 0);
    expectRow(read.node(u"Camera01").worldTransform[1], 0, 0, 1);
}

TEST_F(AseModels, AMovedTextureIsFoundAndTold) {
    const fs::path file = "TestUVTransform/UVTransform_ScaleUV2x_Rotate45.ASE";
    const ReadAse read = readModel(file);
    ASSERT_EQ(read.scene.maps.size(), 1U);
    EXPECT_EQ(read.scene.maps[0].className, u"Bitmap");
    EXPECT_EQ(lastPathComponent(read.scene.maps[0].bitmap), u"UVTransformTestImg.png");
    EXPECT_THAT(read.material(u"QuakQuak").textureMaps, testing::ElementsAre(SnapshotTextureMap{1, 0}));
    EXPECT_EQ(read.notesOf(utf8Path(models() / file), "moved, turned or scaled"), 1);
    EXPECT_EQ(readModel("TestUVTransform/UVTransform_Normal.ASE")
                  .notesOf(utf8Path(models() / "TestUVTransform/UVTransform_Normal.ASE"), "moved"),
              0);
}

// The normals of one mesh as the file lists them.
struct FileNormals {
    std::vector<Point3> faces;
    std::vector<std::array<Point3, 3>> corners;
};

Point3 pointOf(AseLexer& lexer) {
    const float x = lexer.number();
    const float y = lexer.number();
    return {x, y, lexer.number()};
}

// Of all MESH_NORMALS blocks, in order. Whoever opens a block is none of their business.
std::vector<FileNormals> normalsOf(const AseText& text) {
    std::vector<FileNormals> all;
    std::string_view rest = text.text();
    for (std::size_t at = rest.find("*MESH_NORMALS"); at != std::string_view::npos;
         at = rest.find("*MESH_NORMALS")) {
        rest.remove_prefix(at);
        AseLexer lexer(rest, "normals");
        lexer.next();
        lexer.enter("MESH_NORMALS");
        FileNormals& normals = all.emplace_back();
        std::size_t corner = 0;
        while (const auto keyword = lexer.next()) {
            lexer.integer(0, UINT32_MAX);
            if (*keyword == "MESH_FACENORMAL") {
                normals.faces.push_back(pointOf(lexer));
                normals.corners.emplace_back();
                corner = 0;
            } else {
                normals.corners.back().at(corner++) = pointOf(lexer);
            }
        }
        rest.remove_prefix(lexer.position());
    }
    return all;
}

double degreesBetween(const Point3& a, const Point3& b) {
    const double cross[3] = {double{a.y} * b.z - double{a.z} * b.y, double{a.z} * b.x - double{a.x} * b.z,
                             double{a.x} * b.y - double{a.y} * b.x};
    const double dot = double{a.x} * b.x + double{a.y} * b.y + double{a.z} * b.z;
    return std::atan2(std::sqrt(cross[0] * cross[0] + cross[1] * cross[1] + cross[2] * cross[2]), dot) * 180 /
           std::numbers::pi;
}

// The normal that a face has at a vertex: the one that shares a group with it, or its own.
Point3 cornerNormal(const SnapshotMesh& mesh, const RenderNormals& normals, std::uint32_t face,
                    std::uint32_t vertex) {
    Point3 found = faceNormal(mesh, face);
    for (const host::RNormal& normal : normals.of(vertex)) {
        if ((normal.smGroup & mesh.smoothing[face]) != 0) found = normal.normal;
    }
    return found;
}

struct NormalCheck {
    std::size_t meshes = 0;     // compared
    std::size_t otherPose = 0;  // whose vertices are not those that the file's own face normals were made of
    std::size_t corners = 0;
    double worst = 0;  // degrees
};

// Some meshes of the body stand otherwise than when their normals were computed: their own face normals tell.
bool isInPoseOfItsNormals(const SnapshotMesh& mesh, const FileNormals& normals) {
    constexpr double kMostDegrees = 0.5;
    for (std::uint32_t f = 0; f < mesh.faces.size(); ++f) {
        if (degreesBetween(faceNormal(mesh, f), normals.faces[f]) > kMostDegrees) return false;
    }
    return true;
}

NormalCheck compareNormals(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    const AseText text({std::istreambuf_iterator<char>(stream), {}});
    const std::vector<FileNormals> listed = normalsOf(text);
    const ReadAse read = readAseFile(file);
    NormalCheck check;
    EXPECT_EQ(listed.size(), read.scene.meshes.size());
    for (std::size_t m = 0; m < std::min(listed.size(), read.scene.meshes.size()); ++m) {
        const SnapshotMesh& mesh = read.scene.meshes[m];
        EXPECT_EQ(listed[m].faces.size(), mesh.faces.size());
        if (!isInPoseOfItsNormals(mesh, listed[m])) {
            ++check.otherPose;
            continue;
        }
        ++check.meshes;
        const RenderNormals normals(mesh);
        for (std::uint32_t f = 0; f < mesh.faces.size(); ++f) {
            for (std::size_t k = 0; k < 3; ++k) {
                const Point3 ours = cornerNormal(mesh, normals, f, mesh.faces[f][k]);
                check.worst = std::max(check.worst, degreesBetween(ours, listed[m].corners[f][k]));
                ++check.corners;
            }
        }
    }
    return check;
}

// The file's normals are what 3ds Max itself computed, so they tell whether positions, faces, smoothing
// groups and the rule for normals are right together. Four decimals of a position are what limits them.
TEST_F(AseModels, ComputedNormalsAreThoseOfTheFile) {
    struct Case {
        const char* file;
        std::size_t meshes;
        std::size_t otherPose;
        double mostDegrees;
    };
    for (const Case& c : {
             Case{"MotionCaptureROM.ase", 16, 10, 0.1},
             Case{"RotatingCube.ASE", 1, 0, 0.01},
             Case{"anim.ASE", 2, 0, 0.01},
             Case{"anim2.ASE", 2, 0, 0.01},
             Case{"CameraRollAnim.ase", 1, 0, 0.01},
             Case{"CameraRollAnimWithChildObject.ase", 2, 0, 0.01},
             Case{"TargetCameraAnim.ase", 1, 0, 0.01},
         }) {
        SCOPED_TRACE(c.file);
        const NormalCheck check = compareNormals(models() / c.file);
        std::cout << c.file << ": " << check.corners << " corners of " << check.meshes
                  << " meshes, worst angle " << check.worst << " degrees\n";
        EXPECT_EQ(check.meshes, c.meshes);
        EXPECT_EQ(check.otherPose, c.otherPose);
        EXPECT_LE(check.worst, c.mostDegrees);
    }
}

}  // namespace
}  // namespace velinor
