#include "hosts/assimp/collada_marks.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace velinor {
namespace {

ColladaMarks colladaMarksIn(const std::string& text) {
    std::istringstream stream(text);
    return readColladaMarks(stream);
}

TEST(ColladaMarks, TellUserPropertiesAndHiddenNodes) {
    EXPECT_EQ(colladaMarksIn(""), ColladaMarks());
    EXPECT_EQ(colladaMarksIn("<visibility>1.000000</visibility><visibility> 0.5</visibility>"),
              ColladaMarks());
    EXPECT_EQ(colladaMarksIn("<visibility>0.000000</visibility>\n<visibility>\n0</visibility><visibility>"),
              (ColladaMarks{false, 2}));
    EXPECT_EQ(colladaMarksIn(
                  "<technique profile=\"OpenCOLLADA\"><user_properties>a = 1</user_properties></technique>"),
              (ColladaMarks{true, 0}));
}

TEST(ColladaMarks, AreCountedOnceWhereverTheyLie) {
    constexpr std::size_t kPiece = std::size_t{1} << 20U;
    for (const std::size_t before : {kPiece - 70, kPiece - 64, kPiece - 5, kPiece}) {
        const std::string text =
            std::string(before, ' ') + "<visibility>0</visibility>" + std::string(kPiece, ' ');
        EXPECT_EQ(colladaMarksIn(text), (ColladaMarks{false, 1})) << before;
    }
}

}  // namespace
}  // namespace velinor
