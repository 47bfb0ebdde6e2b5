#include "tools/meshprocessor/obj_writer.h"

#include <gtest/gtest.h>

#include <fstream>
#include <limits>
#include <sstream>

#include "platform/temporary_folder.h"
#include "tests/support/platform_text.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

std::string contentOf(const fs::path& file) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

std::size_t entriesOf(const fs::path& folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

TEST(ObjWriter, WritesEachShapeWithItsOwnPoints) {
    const TemporaryFolder folder;
    const std::vector<Point> points{{0, 0, 0}, {1, 0, 0}, {9, 9, 9}, {0, 0.5F, -0.25F}, {0, 0, 1e-20F}};
    writeObj(folder.path() / "a.obj", points, {{"part_1", {{0, 1, 3}}}, {"part_2", {{4, 3, 1}}}});
    EXPECT_EQ(contentOf(folder.path() / "a.obj"),
              asTextFile("o part_1\nv 0 0 0\nv 1 0 0\nv 0 0.5 -0.25\nf 1 2 3\n"
                         "o part_2\nv 1 0 0\nv 0 0.5 -0.25\nv 0 0 1e-20\nf 6 5 4\n"));
    EXPECT_EQ(entriesOf(folder.path()), 1U);
}

TEST(ObjWriter, WritesNumbersThatReadBackEqual) {
    const TemporaryFolder folder;
    using Limits = std::numeric_limits<float>;
    const std::vector<Point> points{{0.1F, 1.0F / 3, 16777217.0F},
                                    {Limits::max(), Limits::min(), Limits::denorm_min()},
                                    {-123456.789F, 1e10F, -1e-7F}};
    writeObj(folder.path() / "a.obj", points, {{"mesh", {{0, 1, 2}}}});
    std::istringstream lines(contentOf(folder.path() / "a.obj"));
    std::string line;
    std::getline(lines, line);
    for (const Point& point : points) {
        std::string keyword;
        lines >> keyword;
        for (const float number : point) {
            std::string text;
            lines >> text;
            EXPECT_EQ(std::strtof(text.c_str(), nullptr), number) << text;
        }
    }
}

TEST(ObjWriter, LeavesNothingWhereItCannotWrite) {
    const TemporaryFolder folder;
    const std::vector<Point> points{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    EXPECT_THROW(writeObj(folder.path() / "none" / "a.obj", points, {{"mesh", {{0, 1, 2}}}}), MeshError);
    fs::create_directory(folder.path() / "folder.obj");
    std::ofstream(folder.path() / "folder.obj" / "inside") << "x";
    EXPECT_THROW(writeObj(folder.path() / "folder.obj", points, {{"mesh", {{0, 1, 2}}}}), MeshError);
    EXPECT_EQ(entriesOf(folder.path()), 1U);
}

}  // namespace
}  // namespace velinor
