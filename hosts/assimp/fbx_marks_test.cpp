#include "hosts/assimp/fbx_marks.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "hosts/assimp/assimp_test_support.h"

namespace velinor {
namespace {

FbxMarks fbxMarksIn(const std::string& bytes) {
    std::istringstream stream(bytes);
    return readFbxMarks(stream);
}

// A text of a binary file: its size, its bytes.
std::string text(const std::string& bytes) {
    return std::string("S") + static_cast<char>(bytes.size()) + std::string(3, '\0') + bytes;
}

std::string object(const char* name, const char* kind, const char* subKind) {
    return text(name + std::string("\0\1", 2) + kind) + text(subKind);
}

std::string visibility(double value) {
    std::string bytes = text("Visibility") + text("Visibility") + text("") + text("A") + "D";
    return bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

TEST(FbxMarks, AreFoundInText) {
    EXPECT_EQ(fbxMarksIn("Model: 1, \"Model::AnimCurve\", \"Mesh\" {\n\tP: \"Visibility\", \"Visibility\", "
                         "\"\", \"A\",1\n}"),
              FbxMarks());
    EXPECT_TRUE(fbxMarksIn("\tAnimationCurve: 7, \"AnimCurve::\", \"\" {").hasAnimation);
    EXPECT_FALSE(fbxMarksIn("\tAnimationCurveNode: 7, \"AnimCurveNode::T\", \"\" {").hasAnimation);
    EXPECT_TRUE(fbxMarksIn("\tDeformer: 7, \"SubDeformer::\", \"Cluster\" {").hasSkin);
    EXPECT_EQ(fbxMarksIn("\tCollectionExclusive: 7, \"DisplayLayer::a\", \"DisplayLayer\" {\n"
                         "\tCollectionExclusive: 8, \"DisplayLayer::b\", \"DisplayLayer\" {\n")
                  .displayLayers,
              2U);
    EXPECT_EQ(fbxMarksIn("\tP: \"Visibility\", \"Visibility\", \"\", \"A\",0\n"
                         "\tP: \"Visibility\", \"Visibility\", \"\", \"A\",0.5\r\n"
                         "\tP: \"Visibility\", \"Visibility\", \"\", \"A+\", 0.0\r\n\tP: \"Other\", \"int\", "
                         "\"\", \"\",0\n")
                  .hiddenNodes,
              2U);
}

TEST(FbxMarks, AreFoundInBinary) {
    EXPECT_TRUE(fbxMarksIn(object("", "AnimCurve", "")).hasAnimation);
    EXPECT_FALSE(fbxMarksIn(object("T", "AnimCurveNode", "")).hasAnimation);
    EXPECT_TRUE(fbxMarksIn(object("c", "SubDeformer", "Cluster")).hasSkin);
    EXPECT_FALSE(fbxMarksIn(object("c", "SubDeformer", "BlendShapeChannel")).hasSkin);
    EXPECT_EQ(
        fbxMarksIn(object("a", "DisplayLayer", "DisplayLayer") + object("b", "DisplayLayer", "DisplayLayer"))
            .displayLayers,
        2U);
    EXPECT_EQ(fbxMarksIn(visibility(0) + visibility(1) + visibility(0)).hiddenNodes, 2U);
}

TEST(FbxMarks, ACutFileHasWhatIsWhole) {
    const std::string whole = visibility(0);
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_EQ(fbxMarksIn(whole.substr(0, size)), FbxMarks()) << size;
    const std::string line = "P: \"Visibility\", \"Visibility\", \"";
    EXPECT_EQ(fbxMarksIn(line), FbxMarks());
}

TEST(FbxMarks, AreCountedOnceWhereverTheyLie) {
    constexpr std::size_t kPiece = std::size_t{1} << 20U;
    for (const std::size_t before :
         {kPiece - 300, kPiece - 256, kPiece - 40, kPiece - 1, kPiece, 2 * kPiece - 260}) {
        EXPECT_EQ(fbxMarksIn(std::string(before, 'x') + visibility(0) + std::string(kPiece, 'x')).hiddenNodes,
                  1U)
            << before;
    }
}

class FbxMarksOfModels : public ModelTest {
  protected:
    static FbxMarks marksOf(const char* name) {
        std::ifstream file(models() / "FBX" / name, std::ios::binary);
        return readFbxMarks(file);
    }
};

TEST_F(FbxMarksOfModels, TellAnimationsSkinsAndLayers) {
    EXPECT_EQ(marksOf("animation_with_skeleton.fbx"), (FbxMarks{true, true, 0, 0}));
    EXPECT_EQ(marksOf("huesitos.fbx"), (FbxMarks{true, true, 0, 0}));
    EXPECT_EQ(marksOf("spider.fbx"), FbxMarks());
    EXPECT_EQ(marksOf("phong_cube.fbx"), FbxMarks());
    EXPECT_EQ(marksOf("embedded_ascii/box.FBX"), FbxMarks());
    EXPECT_EQ(marksOf("box_orphant_embedded_texture.fbx"), (FbxMarks{false, false, 0, 1}));
}

}  // namespace
}  // namespace velinor
