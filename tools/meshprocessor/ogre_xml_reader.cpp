#include "tools/meshprocessor/ogre_xml_reader.h"

#include <expat.h>

#include <cerrno>
#include <charconv>
#include <cmath>
#include <exception>
#include <fstream>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "base/text.h"

// The elements that count:
//
//   <mesh>
//     <sharedgeometry vertexcount="N">
//       <vertexbuffer> <vertex> <position x="" y="" z=""/> ... </vertex> ... </vertexbuffer> ...
//     </sharedgeometry>
//     <submeshes>
//       <submesh operationtype="triangle_list" usesharedvertices="true">
//         <faces count="N"> <face v1="" v2="" v3=""/> ... </faces>
//       </submesh> ...
//     </submeshes>
//   </mesh>
//
// The parser is a streaming one. A mesh of 10,000,000 triangles is 1.3 GB of text, and its document tree
// would take several times that; its points and faces take 180 MB.

namespace velinor {
namespace {

enum class Element : unsigned char {
    document,
    mesh,
    sharedGeometry,
    vertexBuffer,
    vertex,
    position,
    submeshes,
    submesh,
    ownGeometry,
    faces,
    face,
    other,
};

struct Child {
    Element parent;
    std::string_view name;
    Element element;
};
constexpr Child kChildren[] = {
    {Element::vertexBuffer, "vertex", Element::vertex},
    {Element::vertex, "position", Element::position},
    {Element::faces, "face", Element::face},
    {Element::document, "mesh", Element::mesh},
    {Element::mesh, "sharedgeometry", Element::sharedGeometry},
    {Element::sharedGeometry, "vertexbuffer", Element::vertexBuffer},
    {Element::mesh, "submeshes", Element::submeshes},
    {Element::submeshes, "submesh", Element::submesh},
    {Element::submesh, "faces", Element::faces},
    {Element::submesh, "geometry", Element::ownGeometry},
};

Element childOf(Element parent, std::string_view name) {
    for (const Child& child : kChildren) {
        if (child.parent == parent && child.name == name) return child.element;
    }
    return Element::other;
}

std::string quoted(std::string_view text) {
    constexpr std::size_t kLongest = 60;
    if (text.size() > kLongest) return '"' + printable(text.substr(0, kLongest)) + "...\"";
    return '"' + printable(text) + '"';
}

// The attributes of an element, as the parser gives them: name, value, name, value, null.
class Attributes {
  public:
    Attributes(std::string_view element, const XML_Char** pairs) : element_(element), pairs_(pairs) {}

    std::optional<std::string_view> find(std::string_view name) const {
        for (const XML_Char** pair = pairs_; *pair != nullptr; pair += 2) {
            if (*pair == name) return pair[1];
        }
        return std::nullopt;
    }

    float coordinate(std::string_view name) const {
        const std::string_view text = required(name);
        double value = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (error == std::errc::invalid_argument || end != text.data() + text.size())
            throw MeshError(place(name) + " is " + quoted(text) + ", not a number");
        if (error != std::errc() || !std::isfinite(value) ||
            std::abs(value) > double{std::numeric_limits<float>::max()})
            throw MeshError(place(name) + " is " + quoted(text) + ", not a finite 32-bit number");
        return static_cast<float>(value) + 0.0F;  // a negative zero becomes zero: they are one point
    }

    std::uint32_t index(std::string_view name) const { return whole(name, required(name)); }

    std::optional<std::uint32_t> count(std::string_view name) const {
        const std::optional<std::string_view> text = find(name);
        return text ? std::optional(whole(name, *text)) : std::nullopt;
    }

  private:
    std::string_view required(std::string_view name) const {
        const std::optional<std::string_view> text = find(name);
        if (!text) throw MeshError(place(name) + " is missing");
        return *text;
    }

    std::uint32_t whole(std::string_view name, std::string_view text) const {
        std::uint32_t value = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (error != std::errc() || end != text.data() + text.size())
            throw MeshError(place(name) + " is " + quoted(text) + ", not a whole number of 0 to 4294967295");
        return value;
    }

    std::string place(std::string_view name) const {
        return "attribute " + std::string(name) + " of <" + std::string(element_) + ">";
    }

    std::string_view element_;
    const XML_Char** pairs_;
};

void compareCount(std::string_view what, std::optional<std::uint32_t> told, std::size_t found) {
    if (told && *told != found)
        throw MeshError(std::to_string(*told) + " " + std::string(what) + " are announced, but there are " +
                        std::to_string(found));
}

// Builds the mesh from the elements as they open and close.
class MeshBuilder {
  public:
    void open(std::string_view name, const XML_Char** pairs) {
        const Element element = childOf(open_.back(), name);
        if (open_.back() == Element::document && element != Element::mesh)
            throw MeshError("the outermost element is <" + printable(name) + ">, not <mesh>");
        open_.push_back(element);
        start(element, Attributes(name, pairs));
    }

    void close() {
        const Element element = open_.back();
        open_.pop_back();
        if (element == Element::sharedGeometry) compareCount("vertices", vertexCount_, mesh_.points.size());
        if (element == Element::faces) compareCount("faces", faceCount_, mesh_.faces.size() - facesBefore_);
    }

    TriangleMesh take() { return std::move(mesh_); }

  private:
    void start(Element element, const Attributes& attributes) {
        switch (element) {
            case Element::position:
                addPoint(attributes);
                break;
            case Element::face:
                addFace(attributes);
                break;
            case Element::sharedGeometry:
                vertexCount_ = attributes.count("vertexcount");
                break;
            case Element::faces:
                faceCount_ = attributes.count("count");
                facesBefore_ = mesh_.faces.size();
                break;
            case Element::submesh:
                checkKind(attributes);
                break;
            case Element::ownGeometry:
                throw MeshError(
                    "the submesh has vertices of its own; write the mesh with shared vertices only");
            default:
                break;
        }
    }

    void addPoint(const Attributes& attributes) {
        if (mesh_.points.size() == std::numeric_limits<std::int32_t>::max())
            throw MeshError("the mesh has more than 2147483647 vertices; split it");
        mesh_.points.push_back(
            {attributes.coordinate("x"), attributes.coordinate("y"), attributes.coordinate("z")});
    }

    void addFace(const Attributes& attributes) {
        const Face face{attributes.index("v1"), attributes.index("v2"), attributes.index("v3")};
        for (const std::uint32_t index : face) {
            if (index >= mesh_.points.size())
                throw MeshError("the face refers to vertex " + std::to_string(index) +
                                ", but the shared geometry before it has " +
                                std::to_string(mesh_.points.size()) + " vertices, counted from 0");
        }
        mesh_.faces.push_back(face);
    }

    static void checkKind(const Attributes& attributes) {
        const std::string_view kind = attributes.find("operationtype").value_or("triangle_list");
        if (kind != "triangle_list")
            throw MeshError("the submesh is a " + quoted(kind) + "; only \"triangle_list\" can be used");
    }

    TriangleMesh mesh_;
    std::vector<Element> open_{Element::document};
    std::optional<std::uint32_t> vertexCount_;
    std::optional<std::uint32_t> faceCount_;
    std::size_t facesBefore_ = 0;
};

// The parser with the builder behind it. Exceptions wait until the parser, which is C, has returned.
class Parser {
  public:
    explicit Parser(const std::filesystem::path& file)
        : name_(printable(utf8Path(file))), parser_(XML_ParserCreate(nullptr), XML_ParserFree) {
        if (!parser_) throw std::bad_alloc();
        XML_SetUserData(parser_.get(), this);
        XML_SetElementHandler(
            parser_.get(),
            [](void* self, const XML_Char* name, const XML_Char** attributes) {
                static_cast<Parser*>(self)->guarded(
                    [&](MeshBuilder& builder) { builder.open(name, attributes); });
            },
            [](void* self, const XML_Char*) {
                static_cast<Parser*>(self)->guarded([](MeshBuilder& builder) { builder.close(); });
            });
    }

    // Where the next piece goes, at least `size` bytes long.
    char* buffer(int size) {
        void* bytes = XML_GetBuffer(parser_.get(), size);
        if (bytes == nullptr) throw std::bad_alloc();
        return static_cast<char*>(bytes);
    }

    void parse(int size, bool isLast) {
        const XML_Status status = XML_ParseBuffer(parser_.get(), size, isLast ? XML_TRUE : XML_FALSE);
        if (failure_) std::rethrow_exception(failure_);
        if (status != XML_STATUS_OK)
            throw MeshError(placed(XML_ErrorString(XML_GetErrorCode(parser_.get()))));
    }

    TriangleMesh take() { return builder_.take(); }

  private:
    template <class Work>
    void guarded(const Work& work) {
        if (failure_) return;
        try {
            work(builder_);
        } catch (const MeshError& error) {
            // The parser knows the place only as long as it is here.
            failure_ = std::make_exception_ptr(MeshError(placed(error.what())));
            XML_StopParser(parser_.get(), XML_FALSE);
        } catch (...) {
            failure_ = std::current_exception();
            XML_StopParser(parser_.get(), XML_FALSE);
        }
    }

    // `text` with file, line and column before it.
    std::string placed(const std::string& text) const {
        return name_ + ":" + std::to_string(XML_GetCurrentLineNumber(parser_.get())) + ":" +
               std::to_string(XML_GetCurrentColumnNumber(parser_.get()) + 1) + ": " + text;
    }

    std::string name_;
    std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser_;
    MeshBuilder builder_;
    std::exception_ptr failure_;
};

[[noreturn]] void failToRead(const std::filesystem::path& file) {
    const int error = errno;
    throw MeshError(printable(utf8Path(file)) + ": " +
                    (error != 0 ? std::generic_category().message(error) : std::string("cannot be read")) +
                    "; check the path of -import");
}

}  // namespace

TriangleMesh readOgreXml(const std::filesystem::path& file) {
    errno = 0;
    if (std::filesystem::is_directory(file)) {
        errno = EISDIR;
        failToRead(file);
    }
    std::ifstream stream(file, std::ios::binary);
    if (!stream) failToRead(file);
    Parser parser(file);
    constexpr int kPiece = 1 << 20;
    while (!stream.eof()) {
        errno = 0;
        stream.read(parser.buffer(kPiece), kPiece);
        if (stream.bad() || (stream.fail() && !stream.eof())) failToRead(file);
        parser.parse(static_cast<int>(stream.gcount()), stream.eof());
    }
    return parser.take();
}

}  // namespace velinor
