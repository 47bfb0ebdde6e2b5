// The built program, run as the exporter runs it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <map>
#include <sstream>

#include "base/text.h"
#include "platform/temporary_folder.h"
#include "tests/support/run_command.h"
#include "tools/meshprocessor/mesh_test_support.h"
#include "tools/meshprocessor/orientation.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;

struct ObjFile {
    std::vector<Point> points;
    std::vector<std::string> names;
    std::vector<Faces> shapes;
};

ObjFile readObj(const fs::path& file) {
    ObjFile obj;
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);) {
        std::istringstream words(line);
        std::string keyword;
        words >> keyword;
        if (keyword == "o") {
            obj.names.emplace_back();
            words >> obj.names.back();
            obj.shapes.emplace_back();
        } else if (keyword == "v") {
            Point& point = obj.points.emplace_back();
            words >> point[0] >> point[1] >> point[2];
        } else if (keyword == "f") {
            Face& face = obj.shapes.back().emplace_back();
            words >> face[0] >> face[1] >> face[2];
            for (std::uint32_t& corner : face)
                --corner;
        } else {
            ADD_FAILURE() << line;
        }
        EXPECT_FALSE(words.fail()) << line;
    }
    for (const Faces& faces : obj.shapes) {
        for (const Face& face : faces) {
            for (const std::uint32_t corner : face)
                EXPECT_LT(corner, obj.points.size());
        }
    }
    return obj;
}

class Program : public testing::Test {
  protected:
    CommandResult run(const std::vector<std::string>& arguments, const CommandInput& input = {}) const {
        return runProgram(TOLVEX_MESHPROCESSOR, arguments, input);
    }
    CommandResult process(const std::string& xml, std::vector<std::string> shape,
                          const CommandInput& input = {}) const {
        std::ofstream(input_, std::ios::binary) << xml;
        shape.insert(shape.begin(), {"-import", utf8Path(input_)});
        shape.insert(shape.end(), {"-saveCollisionShapes", utf8Path(output_)});
        return run(shape, input);
    }
    // The shapes of `mesh`; the run must succeed.
    ObjFile shapesOf(const TriangleMesh& mesh, const std::vector<std::string>& shape) const {
        const CommandResult result = process(ogreXmlOf(mesh), shape);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(std::count(result.out.begin(), result.out.end(), '\n'), 1) << result.out;
        EXPECT_EQ(entries(), (std::vector<std::string>{"a.mesh.xml", "a.mesh_phy.obj"}));
        return readObj(output_);
    }
    // What stands in the folder.
    std::vector<std::string> entries() const {
        std::vector<std::string> names;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder_.path()))
            names.push_back(utf8Path(entry.path().filename()));
        std::sort(names.begin(), names.end());
        return names;
    }

    TemporaryFolder folder_;
    fs::path input_ = folder_.path() / "a.mesh.xml";
    fs::path output_ = folder_.path() / "a.mesh_phy.obj";
};

const std::vector<std::vector<std::string>>& allShapes() {
    static const std::vector<std::vector<std::string>> shapes{{},
                                                              {"-meshDecimation", "10", "10", "0.01"},
                                                              {"-meshDecimation", "10", "10", "0.2"},
                                                              {"-meshDecimation", "10", "10", "0.000000"},
                                                              {"-convexDecomposition", "8000", "32"},
                                                              {"-convexHull"}};
    return shapes;
}

TEST_F(Program, MakesABoxOfABoxWithEveryOption) {
    for (const bool isInsideOut : {false, true}) {
        for (const std::vector<std::string>& shape : allShapes()) {
            const TriangleMesh box = boxMesh({-1, 0, 0}, {1, 3, 0.5F});
            const ObjFile obj = shapesOf(isInsideOut ? insideOut(box) : box, shape);
            ASSERT_EQ(obj.shapes.size(), 1U);
            EXPECT_EQ(obj.points.size(), 8U);
            EXPECT_EQ(obj.shapes[0].size(), 12U);
            EXPECT_DOUBLE_EQ(signedVolume(obj.points, obj.shapes[0]), 3);
            EXPECT_TRUE(isClosed(obj.shapes[0]));
        }
    }
}

TEST_F(Program, TellsWhatItDid) {
    const std::string box = ogreXmlOf(boxMesh());
    EXPECT_EQ(process(box, {}).out,
              utf8Path(output_) + ": 12 faces, 8 vertices -> 1 shape, 12 faces, 8 vertices\n");
    EXPECT_EQ(
        process(box, {"-convexHull"}).out,
        utf8Path(output_) +
            ": 12 faces, 8 vertices -> 1 shape, 12 faces, 8 vertices; largest deviation 0 of the extent\n");
    EXPECT_THAT(process(ogreXmlOf(lShapeMesh()), {"-convexHull"}).out,
                HasSubstr("largest deviation 0.25 of the extent"));
}

TEST_F(Program, NamesTheShapes) {
    EXPECT_EQ(shapesOf(lShapeMesh(), {}).names, (std::vector<std::string>{"mesh"}));
    EXPECT_EQ(shapesOf(lShapeMesh(), {"-convexHull"}).names, (std::vector<std::string>{"part_1"}));
    EXPECT_EQ(shapesOf(lShapeMesh(), {"-convexDecomposition", "8000", "32"}).names,
              (std::vector<std::string>{"part_1", "part_2"}));
}

TEST_F(Program, MakesConvexParts) {
    const ObjFile obj = shapesOf(torusMesh(16), {"-convexDecomposition", "8000", "32"});
    EXPECT_GT(obj.shapes.size(), 3U);
    for (const Faces& part : obj.shapes) {
        EXPECT_LT(unevenness(obj.points, part), 3e-4);
        EXPECT_GT(signedVolume(obj.points, part), 0);
    }
}

TEST_F(Program, DecimatesASphere) {
    const ObjFile fine = shapesOf(sphereMesh(60), {"-meshDecimation", "10", "10", "0.01"});
    const ObjFile coarse = shapesOf(sphereMesh(60), {"-meshDecimation", "10", "10", "0.2"});
    EXPECT_LT(fine.shapes.at(0).size(), 2000U);
    EXPECT_LT(coarse.shapes.at(0).size(), fine.shapes.at(0).size() / 4);
    EXPECT_GE(coarse.shapes.at(0).size(), 10U);
    for (const ObjFile* obj : {&fine, &coarse}) {
        EXPECT_TRUE(isClosed(obj->shapes[0]));
        EXPECT_GT(signedVolume(obj->points, obj->shapes[0]), 1);
    }
}

TEST_F(Program, TakesOddMeshesWithEveryOption) {
    const TriangleMesh box = boxMesh();
    TriangleMesh fin = box;  // three faces at an edge
    fin.points.push_back({2, 2, 2});
    fin.faces.push_back({0, 1, 8});
    TriangleMesh doubled = box;
    doubled.faces.insert(doubled.faces.end(), box.faces.begin(), box.faces.end());
    TriangleMesh slivers = box;
    slivers.points.push_back({0, -0.5F, -0.5F});
    slivers.faces.insert(slivers.faces.end(), {{0, 8, 4}, {1, 1, 2}, {3, 3, 3}});
    TriangleMesh huge = boxMesh({-3e38F, -3e38F, -3e38F}, {3e38F, 3e38F, 3e38F});
    const std::map<std::string, TriangleMesh> meshes{
        {"flat", gridMesh(12, [](float, float) { return 3.0F; })},
        {"askew", gridMesh(12, [](float x, float y) { return 0.3F * x - 0.7F * y; })},
        {"bumpy", gridMesh(12, [](float x, float y) { return 0.2F * std::sin(9 * x) * std::cos(7 * y); })},
        {"one face", {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}}}},
        {"two boxes", together(box, boxMesh({5, 5, 5}, {6, 6, 6}))},
        {"overlapping boxes", together(box, boxMesh({0, 0, 0}, {1, 1, 1}))},
        {"boxes at an edge", together(box, boxMesh({0.5F, 0.5F, -0.5F}, {1, 1, 0.5F}))},
        {"fin", fin},
        {"doubled", doubled},
        {"slivers", slivers},
        {"huge", huge},
        {"far", boxMesh({1e6F, 1e6F, 1e6F}, {1e6F + 1, 1e6F + 1, 1e6F + 1})},
        {"needle", boxMesh({0, 0, 0}, {10000, 0.01F, 0.01F})},
    };
    for (const auto& [name, mesh] : meshes) {
        for (const std::vector<std::string>& shape : allShapes()) {
            SCOPED_TRACE(name + " " + (shape.empty() ? "" : shape[0]));
            const ObjFile obj = shapesOf(mesh, shape);
            ASSERT_GE(obj.shapes.size(), 1U);
            for (const Faces& faces : obj.shapes) {
                EXPECT_FALSE(faces.empty());
                if (isClosed(faces)) {
                    EXPECT_GE(signedVolume(obj.points, faces), 0);
                }
            }
            for (const Point& point : obj.points) {
                for (const float number : point)
                    EXPECT_TRUE(std::isfinite(number));
            }
        }
    }
}

TEST_F(Program, LeavesNoFileOfAMeshThatIsNone) {
    const std::string box = ogreXmlOf(boxMesh());
    const auto with = [&box](const std::string& from, const std::string& to) {
        std::string text = box;
        return text.replace(text.find(from), from.size(), to);
    };
    const std::map<std::string, std::string> faults{
        {"", ":1:1: no element found"},
        {"<mesh/>", ": the mesh has no face with an area; nothing can collide with it"},
        {ogreXmlOf({{{0, 0, 0}, {1, 1, 1}}, {}}), ": the mesh has no face with an area"},
        {ogreXmlOf({{{0, 0, 0}, {0, 0, 0}, {0, 0, 0}}, {{0, 1, 2}}}), ": the mesh has no face with an area"},
        {ogreXmlOf({{{0, 0, 0}, {1, 1, 1}, {2, 2, 2}}, {{0, 1, 2}}}), ": all faces of the mesh are lines"},
        {with("y=\"-0.5", "y=\"nan"), ":6:5: attribute y of <position> is \"nan00000\", not a number"},
        {with("y=\"-0.500000", "y=\"inf"), ":6:5: attribute y of <position> is \"inf\", not a finite"},
        {with("v2=\"1\"", "v2=\"1000\""), ":42:5: the face refers to vertex 1000, but"},
        {box.substr(0, 700), ":22:5: unclosed token"},
    };
    for (const auto& [xml, fault] : faults) {
        for (const std::vector<std::string>& shape : allShapes()) {
            const CommandResult result = process(xml, shape);
            EXPECT_EQ(result.status, 1) << xml;
            EXPECT_EQ(result.out, "");
            EXPECT_THAT(result.err, StartsWith("meshprocessor: " + utf8Path(input_) + fault));
            EXPECT_EQ(entries(), (std::vector<std::string>{"a.mesh.xml"}));
        }
    }
}

#ifndef _WIN32  // which has no limit of file sizes
TEST_F(Program, LeavesNoFileOnAFullDisk) {
    const CommandResult full = process(ogreXmlOf(torusMesh(30)), {}, onFullDisk(20'000));
    EXPECT_EQ(full.status, 1);
    EXPECT_THAT(full.err, StartsWith("meshprocessor: " + utf8Path(output_) + ": cannot be written: "));
    EXPECT_EQ(entries(), (std::vector<std::string>{"a.mesh.xml"}));
}
#endif

TEST_F(Program, LeavesNoFileWhereItCannotWrite) {
    output_ = folder_.path() / "none" / "a.obj";
    const CommandResult none = process(ogreXmlOf(boxMesh()), {});
    EXPECT_EQ(none.status, 1);
    EXPECT_THAT(none.err, HasSubstr("a.obj: cannot be written: No such file or directory; check"));
    EXPECT_EQ(entries(), (std::vector<std::string>{"a.mesh.xml"}));
}

TEST_F(Program, KeepsTheOldFileWhenItFails) {
    std::ofstream(output_) << "old";
    EXPECT_EQ(process("<mesh/>", {}).status, 1);
    EXPECT_EQ(fs::file_size(output_), 3U);
    EXPECT_EQ(process(ogreXmlOf(boxMesh()), {}).status, 0);
    EXPECT_EQ(readObj(output_).points.size(), 8U);
}

TEST_F(Program, RefusesWrongArguments) {
    const std::string file = utf8Path(input_);
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {},
             {"-import"},
             {"-import", file},
             {"-export", file},
             {"-import", file, "-meshDecimation", "10", "-saveCollisionShapes", utf8Path(output_)},
             {"-import", file, "-meshDecimation", "a", "b", "c", "-saveCollisionShapes",
              utf8Path(output_)}}) {
        const CommandResult result = run(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, StartsWith("meshprocessor: "));
        EXPECT_THAT(result.err, HasSubstr("\nusage: meshprocessor -import FILE"));
    }
    std::ofstream(input_) << ogreXmlOf(boxMesh());
    const CommandResult same = run({"-import", file, "-saveCollisionShapes", file});
    EXPECT_EQ(same.status, 2);
    EXPECT_THAT(same.err, HasSubstr("name the same file"));
}

TEST_F(Program, TellsOfAMissingFile) {
    const CommandResult result =
        run({"-import", utf8Path(input_), "-saveCollisionShapes", utf8Path(output_)});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "meshprocessor: " + utf8Path(input_) +
                              ": No such file or directory; check the path of -import\n");
}

TEST_F(Program, PrintsHelp) {
    const CommandResult result = run({"--help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, StartsWith("usage: meshprocessor -import FILE"));
}

}  // namespace
}  // namespace velinor
