// The frame of the document is a tree of elements. Vertices and faces, which are nearly all of the text, are
// never elements: each list writes itself where the tree becomes text. As elements they took 4 GB and 7 s for
// a mesh of a million vertices, this way 0.1 GB and 0.4 s.
#include "geometry/ogre_mesh_text.h"

#include <array>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
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

    // Where to write next, with room for `size` bytes, far fewer than the buffer has.
    char* room(std::size_t size) {
        if (buffer_.size() - used_ < size) flush();
        return buffer_.data() + used_;
    }

    // Passes on what is left. Not a matter of the destructor: a sink may throw.
    void finish() { flush(); }

    // Everything before `end` is written.
    void wroteUpTo(const char* end) { used_ = static_cast<std::size_t>(end - buffer_.data()); }

  private:
    static constexpr std::size_t kSize = std::size_t{1} << 16U;

    void flush() {
        sink_.write({buffer_.data(), used_});
        used_ = 0;
    }

    TextSink& sink_;
    std::vector<char> buffer_;
    std::size_t used_ = 0;
};

// Fixed text between numbers. A copy of fixed size, longer than the text, is much faster than one of just its
// size; what follows overwrites the rest.
class FixedText {
  public:
    static constexpr std::size_t kRoom = 48;

    explicit FixedText(std::string_view text) : size_(text.copy(text_.data(), kRoom)) {}

    char* write(char* out) const {
        std::memcpy(out, text_.data(), kRoom);
        return out + size_;
    }

  private:
    std::array<char, kRoom> text_{};
    std::size_t size_;
};

// The "vertex" elements of a vertex buffer.
class VertexElements final : public BulkChildren {
  public:
    explicit VertexElements(const MeshGeometry& geometry) : geometry_(geometry) {}

    bool isEmpty() const override { return geometry_.vertexList.size() == 0; }

    void writeXml(TextSink& sink, std::size_t depth) const override {
        const std::string tabs(depth, '\t');
        const FixedText vertexAndX(tabs + "<vertex>\n" + tabs + "\t<position x=\"");
        const FixedText y("\" y=\"");
        const FixedText z("\" z=\"");
        const FixedText normalAndX("\" />\n" + tabs + "\t<normal x=\"");
        const FixedText texCoordAndU("\" />\n" + tabs + "\t<texcoord u=\"");
        const FixedText v("\" v=\"");
        const FixedText end("\" />\n" + tabs + "</vertex>\n");
        constexpr std::size_t kRoom = 8 * (FixedText::kRoom + kFixed6FloatSize);
        TextBuffer text(sink);
        for (std::uint32_t i = 0; i < geometry_.vertexList.size(); ++i) {
            const MeshVertex vertex = geometry_.vertexList[i];
            char* out = text.room(kRoom);
            out = writeFixed6(vertexAndX.write(out), vertex.position.x);
            out = writeFixed6(y.write(out), vertex.position.y);
            out = writeFixed6(z.write(out), vertex.position.z);
            out = writeFixed6(normalAndX.write(out), vertex.normal.x);
            out = writeFixed6(y.write(out), vertex.normal.y);
            out = writeFixed6(z.write(out), vertex.normal.z);
            for (const int stored : geometry_.texCoordLayout.written) {
                const TexCoord value = stored == TexCoordLayout::kZero
                                           ? TexCoord{}
                                           : vertex.texCoords[static_cast<std::size_t>(stored)];
                text.wroteUpTo(out);
                out = text.room(kRoom);
                out = writeFixed6(texCoordAndU.write(out), value.u);
                out = writeFixed6(v.write(out), value.v);
            }
            text.wroteUpTo(end.write(out));
        }
        text.finish();
    }

  private:
    const MeshGeometry& geometry_;
};

// The "face" elements of one submesh. An index is a signed decimal integer.
class FaceElements final : public BulkChildren {
  public:
    FaceElements(const MeshGeometry& geometry, const std::vector<std::uint32_t>& faceNumbers)
        : geometry_(geometry), faceNumbers_(faceNumbers) {}

    bool isEmpty() const override { return faceNumbers_.empty(); }

    void writeXml(TextSink& sink, std::size_t depth) const override {
        const FixedText faceAndV1(std::string(depth, '\t') + "<face v1=\"");
        const FixedText v2("\" v2=\"");
        const FixedText v3("\" v3=\"");
        const FixedText end("\" />\n");
        constexpr std::size_t kDigits = 10;
        constexpr std::size_t kRoom = 4 * (FixedText::kRoom + kDigits);
        TextBuffer text(sink);
        for (const std::uint32_t number : faceNumbers_) {
            const auto& indices = geometry_.faces[number].indices;
            char* out = text.room(kRoom);
            out = writeDecimal(faceAndV1.write(out), indices[0]);
            out = writeDecimal(v2.write(out), indices[1]);
            out = writeDecimal(v3.write(out), indices[2]);
            text.wroteUpTo(end.write(out));
        }
        text.finish();
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
