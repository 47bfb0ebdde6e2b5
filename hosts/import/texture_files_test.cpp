#include "hosts/import/texture_files.h"

#include <gtest/gtest.h>

#include <fstream>

#include "base/text.h"
#include "platform/temporary_folder.h"
#include "tests/support/platform_text.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

class TextureFilesTest : public testing::Test {
  protected:
    TextureFilesTest() { fs::create_directories(folder_.path() / "scenes"); }

    // An empty file; `path` as seen from the scene's folder.
    void put(const std::string& path) {
        const fs::path file = folder_.path() / "scenes" / pathOfUtf8(path);
        fs::create_directories(file.parent_path());
        std::ofstream(file).put('x');
    }

    // What is found, as seen from the scene's folder; empty: nothing.
    std::string find(std::u16string_view name) const {
        const std::vector<fs::path> assets{folder_.path() / "assets"};
        const auto found = TextureFiles(folder_.path() / "scenes" / "room.fbx", names_, assets).find(name);
        if (!found) return "";
        EXPECT_TRUE(found->is_absolute()) << *found;
        return withSlashes(utf8Path(found->lexically_relative(folder_.path() / "scenes")));
    }

    TemporaryFolder folder_;
    TextureNames names_ = TextureNames::paths;
};

TEST_F(TextureFilesTest, APathIsTakenAgainstTheFolderOfTheScene) {
    put("a.png");
    put("tex/b.png");
    put("../other/c.png");
    EXPECT_EQ(find(u"a.png"), "a.png");
    EXPECT_EQ(find(u"./a.png"), "a.png");
    EXPECT_EQ(find(u".\\tex\\b.png"), "tex/b.png");
    EXPECT_EQ(find(u"./../other/c.png"), "../other/c.png");
    EXPECT_EQ(find(toUtf16Lossy(utf8Path(folder_.path() / "other" / "c.png"))), "../other/c.png");
    EXPECT_EQ(find(u"file://" + toUtf16Lossy(utf8Path(folder_.path() / "other" / "c.png"))),
              "../other/c.png");
}

TEST_F(TextureFilesTest, TheLastComponentIsLookedForInTheFoldersInTheirOrder) {
    // From the last place to the first: each one found comes before the one found so far.
    for (const std::string place : {"../assets/", "maps/", "Textures/", "textures/", "room.fbm/", ""}) {
        put(place + "wood.png");
        // Windows has one folder for the two names, which is found under the first.
        const std::string found = kIsWindows && place == "Textures/" ? "textures/" : place;
        EXPECT_EQ(find(u"D:\\work\\wood.png"), found + "wood.png");
        EXPECT_EQ(find(u"..\\..\\nowhere/wood.png"), found + "wood.png");
    }
    put("tex/wood.png");
    EXPECT_EQ(find(u"tex\\wood.png"), "tex/wood.png") << "the path itself comes first";
}

TEST_F(TextureFilesTest, APathThatBeginsWithASeparatorIsAlsoTakenAgainstTheFolderOfTheScene) {
    put("wood.png");
    put("tex/wood.png");
    put("../other/Oak.png");
    EXPECT_EQ(find(u"\\.\\tex\\wood.png"), "tex/wood.png") << "before the last component";
    EXPECT_EQ(find(u"/tex/wood.png"), "tex/wood.png");
    EXPECT_EQ(find(u"\\..\\other\\OAK.PNG"), kIsWindows ? "../other/OAK.PNG" : "../other/Oak.png");
    const fs::path absolute = folder_.path() / "other" / "Oak.png";
    put(utf8Path(absolute.relative_path()));
    EXPECT_EQ(find(toUtf16Lossy(utf8Path(absolute))), "../other/Oak.png") << "the path as it stands";
}

TEST_F(TextureFilesTest, LastTheCaseOfLettersDoesNotCount) {
    put("textures/Cwall02.jpg");
    put("tex/Oak.PNG");
    // Where the system takes the names for equal, the name that was asked for is the file's.
    EXPECT_EQ(find(u"CWALL02.JPG"), kIsWindows ? "textures/CWALL02.JPG" : "textures/Cwall02.jpg");
    EXPECT_EQ(find(u"tex/oak.png"), kIsWindows ? "tex/oak.png" : "tex/Oak.PNG");
    put("maps/CWALL02.JPG");
    EXPECT_EQ(find(u"CWALL02.JPG"), kIsWindows ? "textures/CWALL02.JPG" : "maps/CWALL02.JPG")
        << "one of the same case comes first";
    put("b.png");
    put("B.png");
    EXPECT_EQ(find(u"B.PNG"), kIsWindows ? "B.PNG" : "B.png") << "the first in the order of bytes";
}

TEST_F(TextureFilesTest, UrisOfGltfAreDecoded) {
    put("tex one.png");
    put("gr\xC3\xB6\xC3\x9F"
        "e.png");
    put("50%20off.png");
    EXPECT_EQ(find(u"tex%20one.png"), "") << "only in glTF";
    names_ = TextureNames::uris;
    EXPECT_EQ(find(u"tex%20one.png"), "tex one.png");
    EXPECT_EQ(find(u"gr%C3%B6%c3%9fe.png"),
              "gr\xC3\xB6\xC3\x9F"
              "e.png");
    EXPECT_EQ(find(u"50%20off.png"), "50%20off.png") << "as it stands, where nothing else is there";
    for (const std::u16string_view name : {u"%", u"%4", u"%zz.png", u"%00.png", u"%FF.png", u"%2F"})
        EXPECT_EQ(find(name), "") << toUtf8(name);
}

TEST_F(TextureFilesTest, WhatIsNoFileIsNotFound) {
    fs::create_directories(folder_.path() / "scenes" / "folder.png");
    std::u16string withZero = u"a.png";
    put("a.png");
    withZero += u'\0';
    for (const std::u16string& name :
         {std::u16string(), std::u16string(u"/"), std::u16string(u"."), std::u16string(u".."),
          std::u16string(u"folder.png"), std::u16string(u"/dev/null"), withZero,
          std::u16string(1 << 20, u'x'), std::u16string(u"\xD800.png")}) {
        EXPECT_EQ(find(name), "") << toUtf8(name.substr(0, 40));
    }
}

}  // namespace
}  // namespace velinor
