#include "descriptors/jsx_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

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

// A random walk of the cursor, the same for both builders.
template <class Builder, class Add>
void wander(unsigned seed, Builder& builder, Add add) {
    std::mt19937 random(seed);
    if (seed % 2 == 0) add(builder, false, "root", 0);
    for (int step = 0; step < 60; ++step) {
        const unsigned choice = random() % 5;
        const std::string name = "e" + std::to_string(step);
        if (choice == 0) {
            builder.ascend();
        } else {
            add(builder, choice <= 2, name, static_cast<int>(random() % 3));
        }
    }
}

TEST(JsxWriter, WritesTheTextOfTheTreeThatTheSameStepsBuild) {
    const char* const keys[] = {"...", "a="};
    for (unsigned seed = 0; seed < 2000; ++seed) {
        ElementTreeBuilder tree;
        wander(seed, tree,
               [&](ElementTreeBuilder& builder, bool isChild, const std::string& name, int count) {
                   Attributes attributes;
                   for (int i = 0; i < count; ++i)
                       attributes[keys[i]] = name;
                   if (isChild) {
                       builder.addChild(name, attributes);
                   } else {
                       builder.addSibling(name, attributes);
                   }
               });
        StringSink sink;
        JsxWriter writer(sink, 1);
        wander(seed, writer, [&](JsxWriter& builder, bool isChild, const std::string& name, int count) {
            std::vector<JsxAttribute> attributes;
            for (int i = 0; i < count; ++i)
                attributes.push_back({keys[i], name});
            if (isChild) {
                builder.addChild(name, attributes);
            } else {
                builder.addSibling(name, attributes);
            }
        });
        writer.finish();
        ASSERT_EQ(sink.text(), rendered(tree, 1)) << "seed " << seed;
    }
}

// The text of a tree by plain recursion.
std::string plainly(const ElementList& elements, int depth) {
    std::string text;
    const std::string tabs(static_cast<std::size_t>(depth), '\t');
    for (const Element& element : elements) {
        text += tabs + "<" + element.name;
        for (const auto& [key, value] : element.attributes) {
            text += "\n\t" + tabs + (key == "..." ? "{...{ " + value + " }}" : key + value);
        }
        text += ">\n" + plainly(element.children, depth + 1) + tabs + "</" + element.name + ">\n";
    }
    return text;
}

TEST(RenderJsx, AgreesWithPlainRecursion) {
    for (unsigned seed = 0; seed < 500; ++seed) {
        ElementTreeBuilder tree;
        wander(seed, tree, [](ElementTreeBuilder& builder, bool isChild, const std::string& name, int count) {
            const Attributes attributes = count == 0 ? Attributes{} : Attributes{{"...", name}, {"k=", name}};
            if (isChild) {
                builder.addChild(name, attributes);
            } else {
                builder.addSibling(name, attributes);
            }
        });
        ASSERT_EQ(rendered(tree), plainly(tree.elements(), 0)) << "seed " << seed;
    }
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
