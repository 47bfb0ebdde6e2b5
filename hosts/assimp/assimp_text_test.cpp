#include "hosts/assimp/assimp_text.h"

#include <gtest/gtest.h>

#include "hosts/assimp/assimp_format.h"

namespace velinor {
namespace {

TEST(TextureName, IsUtf8OrWindows1252WithTheEntitiesOfAsciiFbxDecoded) {
    SourceFile source;
    EXPECT_EQ(textureName("gr\xC3\xBC", source), u"gr\u00FC");
    EXPECT_EQ(textureName("gr\xFC", source), u"gr\u00FC");
    EXPECT_EQ(textureName("a&quot;b", source), u"a&quot;b");
    source.isAsciiFbx = true;
    EXPECT_EQ(textureName("a&quot;b", source), u"a\"b");
}

}  // namespace
}  // namespace velinor
