#include "hosts/assimp/image_folder.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "hosts/assimp/assimp_test_support.h"

namespace velinor {
namespace {

class ImageFolderTest : public testing::Test {
  protected:
    std::string name(std::u16string_view wished, std::string_view ending = "png") {
        const std::filesystem::path file = images_.unusedFile(wished, ending);
        EXPECT_EQ(file.parent_path(), folder_.path()) << file;
        return utf8Path(file.filename());
    }

    ScratchFolder folder_;
    ImageFolder images_{folder_.path()};
};

TEST_F(ImageFolderTest, ANameIsSpeltAsAPackageSpellsIt) {
    EXPECT_EQ(name(u"wood"), "wood.png");
    EXPECT_EQ(name(u"a/b\\my wood"), "my_wood.png");
    EXPECT_EQ(name(u"gr\u00F6\u00DFe"), "gr__e.png");
    EXPECT_EQ(name(u"\u0141\u00F3d\u017A"), "A_dz.png") << "the low bytes of each character";
    EXPECT_EQ(name(u"plain", ""), "plain");
}

TEST_F(ImageFolderTest, NoNameLeadsOutOfTheFolder) {
    const std::u16string cases[] = {
        u"..",      u".",        u"../../x", u"/etc/passwd",           u"C:\\x\\..",
        u".hidden", u"\u012F..", u"",        std::u16string(1, u'\0'), u"a/"};
    for (const std::u16string& wished : cases) {
        const std::string given = name(wished);
        EXPECT_EQ(given.find_first_of("/\\"), std::string::npos) << given;
        EXPECT_NE(given.front(), '.') << given;
    }
}

TEST_F(ImageFolderTest, ALongNameIsCut) {
    EXPECT_LT(name(std::u16string(1 << 20, u'x')).size(), 255U);
}

TEST_F(ImageFolderTest, NamesDifferByMoreThanCase) {
    folder_.write("there.png", "old");
    EXPECT_EQ(name(u"wood"), "wood.png");
    EXPECT_EQ(name(u"Wood"), "Wood-2.png");
    EXPECT_EQ(name(u"wood"), "wood-3.png");
    EXPECT_EQ(name(u"wood", "jpg"), "wood.jpg");
    EXPECT_EQ(name(u"there"), "there-2.png");
}

TEST_F(ImageFolderTest, ManyImagesOfOneNameTakeLinearTime) {
    std::set<std::string> names;
    for (int i = 0; i < 20000; ++i)
        names.insert(name(u"same"));
    EXPECT_EQ(names.size(), 20000U);
}

TEST_F(ImageFolderTest, WritesEachByteAndNotOverAFile) {
    const std::string bytes("a\0b\r\n", 5);
    ImageFolder::write(folder_.path() / "a.png", bytes);
    EXPECT_EQ(std::filesystem::file_size(folder_.path() / "a.png"), bytes.size());
    EXPECT_THROW(ImageFolder::write(folder_.path() / "a.png", bytes), std::filesystem::filesystem_error);
    EXPECT_THROW(ImageFolder::write(folder_.path() / "none" / "a.png", bytes),
                 std::filesystem::filesystem_error);
}

TEST(ImageEnding, IsAKnownOneInSmallLetters) {
    EXPECT_EQ(imageEnding(u"a.PNG"), "png");
    EXPECT_EQ(imageEnding(u"D:\\a.b\\c.Jpeg"), "jpeg");
    for (const std::u16string_view name : {u"", u"a", u".", u"a.exe", u"a.png/b", u"a.verylong"})
        EXPECT_EQ(imageEnding(name), "") << toUtf8(name);
    EXPECT_EQ(withoutImageEnding(u"x/a.PNG"), u"x/a");
    EXPECT_EQ(withoutImageEnding(u"a.v2"), u"a.v2");
}

}  // namespace
}  // namespace velinor
