// Images within scene files, hostile ones among them.
#include "hosts/assimp/bitmap_table.h"

#include "base/text.h"
#include "hosts/assimp/image_test_support.h"
#include "hosts/assimp/material_test_support.h"
#include "tests/support/platform_text.h"

namespace velinor {
namespace {

using Names = std::vector<std::string>;

class BitmapTableTest : public MaterialTest {
  protected:
    // The map of a texture of that name.
    std::string diffuse(const std::string& reference) {
        material().Clear();
        text("?mat.name", "M");
        texture(aiTextureType_DIFFUSE, reference);
        return slot(convert(), 1);
    }
};

TEST_F(BitmapTableTest, AnImageOfTheFileIsWrittenAndNamedByItsPath) {
    embedFile("..\\Desktop\\my wood.png", "bytes");
    EXPECT_EQ(diffuse("*0"), "Bitmap my_wood.png");
    EXPECT_EQ(imageNames(), Names{"my_wood.png"});
    EXPECT_EQ(imageBytes("my_wood.png"), "bytes");
    EXPECT_EQ(maps_[0].bitmap, toUtf16Lossy(utf8Path(images_.path() / "my_wood.png")));
    EXPECT_TRUE(notes_.notes().empty());
}

TEST_F(BitmapTableTest, AnImageIsAlsoFoundByTheLastComponentOfItsPath) {
    embedFile("..\\Desktop\\wood.png", "bytes");
    folder_.write("wood.png", "another");
    EXPECT_EQ(diffuse("C:/elsewhere/wood.png"), "Bitmap wood.png");
    EXPECT_EQ(imageBytes("wood.png"), "bytes") << "what the file holds comes before what lies beside it";
}

TEST_F(BitmapTableTest, OfImagesOfOneNameTheWholePathDecides) {
    embedFile("a\\wood.png", "first");
    embedFile("b\\wood.png", "second");
    diffuse("b/wood.png");
    EXPECT_EQ(imageBytes("wood.png"), "second");
    diffuse("c/wood.png");
    EXPECT_EQ(imageBytes("wood-2.png"), "first") << "no whole path fits";
}

TEST_F(BitmapTableTest, APathInGltfMeansAFileAndNoEmbeddedImage) {
    file_.format = FileFormat::gltf;
    embedFile("wood.png", "embedded");
    std::filesystem::create_directory(folder_.path() / "other");
    const auto file = folder_.write("other/wood.png", "beside");
    diffuse("other/wood.png");
    EXPECT_EQ(maps_.at(0).bitmap, toUtf16Lossy(utf8Path(std::filesystem::path(file).make_preferred())));
    EXPECT_EQ(diffuse("*0"), "Bitmap wood.png");
    EXPECT_EQ(imageBytes("wood.png"), "embedded");
}

TEST_F(BitmapTableTest, TwoImagesOfOneNameGetTwoFiles) {
    embedFile("a/wood.png", "first");
    embedFile("b/WOOD.png", "second");
    texture(aiTextureType_DIFFUSE, "*0");
    texture(aiTextureType_SPECULAR, "*1");
    texture(aiTextureType_AMBIENT, "*0");
    const SnapshotMaterial material = convert();
    EXPECT_EQ(slot(material, 0), slot(material, 1));
    EXPECT_NE(slot(material, 1), slot(material, 2));
    EXPECT_EQ(imageNames(), (Names{"WOOD-2.png", "wood.png"}));
    EXPECT_EQ(imageBytes("WOOD-2.png"), "second");
}

TEST_F(BitmapTableTest, AnImageWithoutANameTakesItsEndingFromItsFormatOrContent) {
    embedFile("", "\x89PNG etc");
    embedFile("", "\xFF\xD8\xFF etc");
    embedFile("Label", "unknown");
    embedFile("", "unknown");
    std::memcpy(scene_.mTextures[3]->achFormatHint, "tga", 4);
    EXPECT_EQ(diffuse("*0"), "Bitmap image0.png");
    EXPECT_EQ(diffuse("*1"), "Bitmap image1.jpg");
    EXPECT_EQ(diffuse("*2"), "Bitmap Label");
    EXPECT_EQ(diffuse("*3"), "Bitmap image3.tga");
}

TEST_F(BitmapTableTest, PixelsBecomeAPng) {
    embed("a.tga", std::string("\x03\x02\x01\xFF\x06\x05\x04\x09", 8), 2, 1);
    EXPECT_EQ(diffuse("*0"), "Bitmap a.png");
    EXPECT_EQ(samplesOf(imageBytes("a.png")), (Samples{2, 4, {1, 2, 3, 255, 4, 5, 6, 9}}));
}

TEST_F(BitmapTableTest, AReferenceToNoImageIsMissing) {
    embedFile("a.png", "bytes");
    for (const std::string reference :
         {"*99999", "*1", "*-1", "*", "*0x", "*4294967296", "*99999999999999999999"}) {
        EXPECT_EQ(diffuse(reference), "Bitmap " + reference);
        EXPECT_TRUE(isNoted("M", "image " + reference.substr(1) + " of the scene file")) << reference;
    }
    EXPECT_TRUE(imageNames().empty());
}

TEST_F(BitmapTableTest, EmptyAndGiantImagesAreNotedAndNotWritten) {
    const unsigned most = std::numeric_limits<unsigned>::max();
    embed("none.png", "", 0);
    embed("null.png", "", 100);
    embed("giant.png", "1234", most, most);
    embed("wide.png", "1234", most, 1);
    embed("wrap.png", "1234", 1U << 31U, 1U << 31U);
    for (unsigned i = 0; i < scene_.mNumTextures; ++i)
        diffuse("*" + std::to_string(i));
    for (const char* name : {"none", "null", "giant", "wide", "wrap"})
        EXPECT_TRUE(isNoted("M", std::string("\"") + name + ".png\" in the scene file cannot be used"))
            << name;
    EXPECT_TRUE(imageNames().empty());
}

TEST_F(BitmapTableTest, NoNameWritesOutsideTheFolder) {
    const std::string names[] = {"../../out.png",
                                 "/etc/out.png",
                                 "C:\\out.png",
                                 "..",
                                 "a/..",
                                 std::string("out\0/../../x.png", 16),
                                 std::string(1000, 'x') + ".png",
                                 "\xC4\xAF..\xC4\xAFout.png",
                                 ".hidden",
                                 "con|<>?*\".png"};
    unsigned count = 0;
    for (const std::string& name : names) {
        embedFile(name, "bytes");
        diffuse("*" + std::to_string(count));
        ++count;
        EXPECT_EQ(imageNames().size(), 1U) << name;
        for (const auto& entry : std::filesystem::directory_iterator(images_.path())) {
            const std::string written = utf8Path(entry.path().filename());
            EXPECT_EQ(written, sanitiseName(written));
            EXPECT_LT(written.size(), 200U);
            std::filesystem::remove(entry.path());
        }
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));
}

TEST_F(BitmapTableTest, WithoutAFolderImagesAreNamedAndNotWritten) {
    options_.imageFolder.reset();
    embedFile("a/wood.png", "bytes");
    EXPECT_EQ(diffuse("*0"), "Bitmap wood.png");
    EXPECT_TRUE(imageNames().empty());
    EXPECT_TRUE(notes_.notes().empty());
}

TEST_F(BitmapTableTest, AnImageThatCannotBeWrittenEndsTheImport) {
    options_.imageFolder = images_.path() / "none";
    embedFile("a/wood.png", "bytes");
    EXPECT_THROW(diffuse("*0"), std::filesystem::filesystem_error);
}

TEST_F(BitmapTableTest, AMissingBitmapKeepsItsNameAndIsNotedOnce) {
    texture(aiTextureType_DIFFUSE, "Textures\\albedo.png");
    texture(aiTextureType_SPECULAR, "Textures\\albedo.png");
    convert();
    ASSERT_EQ(maps_.size(), 1U);
    EXPECT_EQ(maps_[0].bitmap, u"Textures\\albedo.png");
    EXPECT_EQ(notes_.notes().size(), 1U);
    EXPECT_TRUE(isNoted("M",
                        "\"Textures\\albedo.png\" is missing: it was looked for at this path, and as "
                        "\"albedo.png\" in " +
                            utf8Path(folder_.path()) + ", its folders room.fbm, textures, Textures, maps"));
}

TEST_F(BitmapTableTest, AFoundBitmapIsNamedByItsAbsolutePath) {
    std::filesystem::create_directory(folder_.path() / "textures");
    folder_.write("textures/albedo.png", "x");
    diffuse("D:\\elsewhere\\Albedo.PNG");
    // On Windows a name is that of the file in any case, and stays as it is.
    const char* name = kIsWindows ? "Albedo.PNG" : "albedo.png";
    EXPECT_EQ(maps_[0].bitmap, toUtf16Lossy(utf8Path(folder_.path() / "textures" / name)));
}

}  // namespace
}  // namespace velinor
