#include "descriptors/element_tree.h"

#include <gtest/gtest.h>

#include <vector>

namespace velinor {
namespace {

// The tree on one line: "a(b c(d))".
std::string outline(const ElementList& elements) {
    std::string text;
    for (const Element& element : elements) {
        if (!text.empty()) text += ' ';
        text += element.name;
        if (!element.children.empty()) text += '(' + outline(element.children) + ')';
    }
    return text;
}

TEST(ElementTreeBuilder, AddsSiblingsAtTheTopLevel) {
    ElementTreeBuilder builder;
    builder.addSibling("a");
    builder.addSibling("b");
    EXPECT_EQ(outline(builder.elements()), "a b");
}

TEST(ElementTreeBuilder, AddsTheFirstChildByDescendingAndTheNextAsSiblings) {
    ElementTreeBuilder builder;
    builder.addSibling("root");
    builder.addChild("a");
    builder.addSibling("b");
    builder.addChild("c");
    builder.addSibling("d");
    EXPECT_EQ(outline(builder.elements()), "root(a b(c d))");
}

TEST(ElementTreeBuilder, ClosesALevelWithOneAscend) {
    ElementTreeBuilder builder;
    builder.addSibling("root");
    builder.addChild("a");
    builder.addChild("a1");
    builder.ascend();
    builder.addSibling("b");
    builder.addChild("b1");
    builder.addChild("b11");
    builder.ascend();
    builder.ascend();
    builder.addSibling("c");
    builder.ascend();
    builder.addSibling("second");
    EXPECT_EQ(outline(builder.elements()), "root(a(a1) b(b1(b11)) c) second");
}

TEST(ElementTreeBuilder, AppendsToTheClosedListAfterAnAscend) {
    ElementTreeBuilder builder;
    builder.addSibling("root");
    builder.addChild("node");
    builder.addChild("mesh");
    builder.ascend();
    builder.addChild("child");
    builder.addSibling("child2");
    builder.ascend();
    builder.addSibling("node2");
    EXPECT_EQ(outline(builder.elements()), "root(node(mesh child child2) node2)");
}

TEST(ElementTreeBuilder, NestsTooDeepWhereAnAscendIsForgotten) {
    ElementTreeBuilder builder;
    builder.addSibling("root");
    builder.addChild("a");
    builder.addChild("a1");
    builder.addSibling("b");
    EXPECT_EQ(outline(builder.elements()), "root(a(a1 b))");
}

TEST(ElementTreeBuilder, PutsChildrenBelowTheSiblingAddedLast) {
    ElementTreeBuilder builder;
    builder.addSibling("root");
    builder.addChild("light");
    builder.addChild("l");
    builder.ascend();
    builder.addSibling("helper");
    builder.addChild("l");
    builder.ascend();
    builder.addChild("child");
    builder.ascend();
    builder.addSibling("next");
    EXPECT_EQ(outline(builder.elements()), "root(light(l) helper(l child) next)");
}

TEST(ElementTreeBuilder, StaysAtTheTopLevel) {
    ElementTreeBuilder builder;
    builder.ascend();
    builder.addSibling("a");
    builder.ascend();
    builder.ascend();
    builder.addSibling("b");
    EXPECT_EQ(outline(builder.elements()), "a b");
}

TEST(ElementTreeBuilder, TreatsAChildOfTheEmptyTopLevelAsASibling) {
    ElementTreeBuilder builder;
    builder.addChild("a");
    builder.addSibling("b");
    EXPECT_EQ(outline(builder.elements()), "a b");
}

TEST(ElementTreeBuilder, TakesAReadyMadeListOfChildren) {
    ElementList vertices;
    for (const char* name : {"v0", "v1", "v2"})
        vertices.append(name, {});
    ElementTreeBuilder builder;
    builder.addSibling("mesh");
    Element& buffer = builder.addChild("buffer");
    builder.setChildren(vertices);
    builder.addSibling("submeshes");
    EXPECT_TRUE(vertices.empty());
    EXPECT_EQ(outline(builder.elements()), "mesh(buffer(v0 v1 v2) submeshes)");
    for (const Element& vertex : buffer.children)
        EXPECT_EQ(vertex.parent, &buffer.children);
}

TEST(Element, KeepsOneValueForAKeyTheOneSetLast) {
    ElementTreeBuilder builder;
    Element& element = builder.addSibling("a", {{"k", "1"}});
    element.attributes["k"] = "2";
    EXPECT_EQ(element.attributes, (Attributes{{"k", "2"}}));
}

TEST(Element, OrdersAttributesByBytes) {
    ElementTreeBuilder builder;
    Element& element = builder.addSibling("a");
    for (const char* key : {"z", "x", "y", "\xC3\xA9", "B", "...", "a=", "a-="})
        element.attributes[key] = "";
    std::vector<std::string> keys;
    for (const auto& [key, value] : element.attributes)
        keys.push_back(key);
    EXPECT_EQ(keys, (std::vector<std::string>{"...", "B", "a-=", "a=", "x", "y", "z", "\xC3\xA9"}));
}

TEST(Element, StaysWhereItIsWhileItsListGrows) {
    ElementTreeBuilder builder;
    Element& first = builder.addSibling("first");
    for (int i = 0; i < 100000; ++i)
        builder.addSibling("next");
    EXPECT_EQ(&first, &*builder.elements().begin());
    EXPECT_EQ(builder.elements().size(), 100001U);
}

TEST(ElementTree, HoldsAndDestroysAChainOfAMillionElements) {
    ElementTreeBuilder builder;
    builder.addSibling("root");
    for (int i = 0; i < 1000000; ++i)
        builder.addChild("node");
    const ElementList* level = &builder.elements();
    int depth = 0;
    for (; !level->empty(); level = &level->begin()->children)
        ++depth;
    EXPECT_EQ(depth, 1000001);
}

}  // namespace
}  // namespace velinor
