#include "geometry/xml_text.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace velinor {
namespace {

// So many "x" elements.
class Bulk final : public BulkChildren {
  public:
    explicit Bulk(int count) : count_(count) {}

    bool isEmpty() const override { return count_ == 0; }
    void writeXml(TextSink& text, std::size_t depth) const override {
        for (int i = 0; i < count_; ++i)
            text.write(std::string(depth, '\t') + "<x />\n");
    }

  private:
    int count_;
};

std::string xmlOf(const ElementTreeBuilder& tree) {
    StringSink sink;
    toXmlText(tree.elements(), sink);
    return sink.text();
}

TEST(XmlText, IsADeclarationForAnEmptyTree) {
    EXPECT_EQ(xmlOf({}), "<?xml version=\"1.0\"?>\n");
}

TEST(XmlText, IndentsWithTabsAndClosesEmptyElementsAtOnce) {
    ElementTreeBuilder tree;
    tree.addSibling("a", {{"z", "1"}, {"x", "2"}, {"y", "3"}});
    tree.addChild("b");
    tree.addChild("c");
    tree.ascend();
    tree.addSibling("d", {{"k", ""}});
    tree.ascend();
    tree.addSibling("e");
    EXPECT_EQ(xmlOf(tree),
              "<?xml version=\"1.0\"?>\n"
              "<a x=\"2\" y=\"3\" z=\"1\">\n"
              "\t<b>\n"
              "\t\t<c />\n"
              "\t</b>\n"
              "\t<d k=\"\" />\n"
              "</a>\n"
              "<e />\n");
}

TEST(XmlText, EscapesAttributes) {
    ElementTreeBuilder tree;
    tree.addSibling("a", {{"k", "<bulk />\n&\"'\t\xC3\xA9"}});
    tree.setChildren(std::make_unique<Bulk>(1));
    EXPECT_EQ(xmlOf(tree),
              "<?xml version=\"1.0\"?>\n"
              "<a k=\"&lt;bulk />&#10;&amp;&quot;'&#09;\xC3\xA9\">\n"
              "\t<x />\n"
              "</a>\n");
}

TEST(XmlText, WritesBulkChildrenInTheirPlace) {
    ElementTreeBuilder tree;
    tree.addSibling("a");
    tree.setChildren(std::make_unique<Bulk>(2));
    tree.addChild("b");
    tree.setChildren(std::make_unique<Bulk>(1));
    tree.addSibling("c");
    tree.setChildren(std::make_unique<Bulk>(0));
    EXPECT_EQ(xmlOf(tree),
              "<?xml version=\"1.0\"?>\n"
              "<a>\n"
              "\t<x />\n"
              "\t<x />\n"
              "\t<b>\n"
              "\t\t<x />\n"
              "\t</b>\n"
              "\t<c />\n"
              "</a>\n");
}

}  // namespace
}  // namespace velinor
