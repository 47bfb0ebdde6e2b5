#include "descriptors/jsx_text.h"

#include <gtest/gtest.h>

namespace velinor {
namespace {

std::string rendered(const ElementTreeBuilder& builder, int depth = 0) {
    StringSink sink;
    renderJsx(builder.elements(), depth, sink);
    return sink.text();
}

TEST(RenderJsx, WritesNothingForNoElements) {
    EXPECT_EQ(rendered(ElementTreeBuilder()), "");
}

TEST(RenderJsx, AlwaysWritesAClosingTag) {
    ElementTreeBuilder builder;
    builder.addSibling("root");
    EXPECT_EQ(rendered(builder), "<root>\n</root>\n");
}

TEST(RenderJsx, WritesEachAttributeOnALineOfItsOwn) {
    ElementTreeBuilder builder;
    builder.addSibling("root");
    builder.addChild("mesh", {{"b=", "\"<&>\""}, {"...", "url: 'a.mesh'"}, {"a=", "1"}});
    EXPECT_EQ(rendered(builder),
              "<root>\n"
              "\t<mesh\n"
              "\t\t{...{ url: 'a.mesh' }}\n"
              "\t\ta=1\n"
              "\t\tb=\"<&>\">\n"
              "\t</mesh>\n"
              "</root>\n");
}

TEST(RenderJsx, StartsAtTheDepthGiven) {
    ElementTreeBuilder builder;
    builder.addSibling("a", {{"k=", "v"}});
    builder.addSibling("b");
    EXPECT_EQ(rendered(builder, 2), "\t\t<a\n\t\t\tk=v>\n\t\t</a>\n\t\t<b>\n\t\t</b>\n");
}

// Counts what it is given, and remembers how large one piece was at most.
class CountingSink final : public TextSink {
  public:
    void write(std::string_view text) override {
        bytes += text.size();
        largest = std::max(largest, text.size());
    }
    std::size_t bytes = 0;
    std::size_t largest = 0;
};

TEST(RenderJsx, WritesADeepTreeInPieces) {
    constexpr std::size_t kDepth = 20000;
    ElementTreeBuilder builder;
    builder.addSibling("a");
    for (std::size_t i = 1; i < kDepth; ++i)
        builder.addChild("a");
    CountingSink sink;
    renderJsx(builder.elements(), 0, sink);
    // "<a>\n" and "</a>\n" each behind as many tabs as the element is deep.
    EXPECT_EQ(sink.bytes, kDepth * 9 + kDepth * (kDepth - 1));
    EXPECT_LT(sink.largest, std::size_t{1} << 20U);
}

}  // namespace
}  // namespace velinor
