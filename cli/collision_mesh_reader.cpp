#include "cli/collision_mesh_reader.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include "cli/text_lines.h"

namespace velinor {
namespace {

constexpr std::string_view kPassedOver[] = {"vn", "vt", "o", "g", "s", "mtllib", "usemtl"};

class ObjReader {
  public:
    CollisionMesh read(std::string_view text) {
        while (!text.empty()) {
            ++line_;
            readLine(takeLine(text));
        }
        if (mesh_.faces == 0) throw CollisionMeshError("has no faces: nothing can be hit");
        return mesh_;
    }

  private:
    [[noreturn]] void fail(const std::string& text) const {
        throw CollisionMeshError("line " + std::to_string(line_) + ": " + text);
    }

    void readLine(std::string_view line) {
        const std::string_view keyword = takeWord(line);
        if (keyword.empty() || keyword.starts_with('#')) return;
        if (keyword == "v") {
            readPoint(line);
        } else if (keyword == "f") {
            readFace(line);
        } else if (std::ranges::find(kPassedOver, keyword) == std::end(kPassedOver)) {
            fail("\"" + std::string(keyword.substr(0, 100)) + "\" is not known in a collision mesh");
        }
    }

    void readPoint(std::string_view line) {
        for (int axis = 0; axis < 3; ++axis) {
            const std::string_view word = takeWord(line);
            float number = 0;
            const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
            const bool isNumber = error == std::errc() && end == word.data() + word.size();
            if (!isNumber || !std::isfinite(number)) fail("a point needs three finite numbers");
        }
        if (!takeWord(line).empty()) fail("a point has more than three numbers");
        ++mesh_.points;
    }

    void readFace(std::string_view line) {
        int corners = 0;
        for (std::string_view word = takeWord(line); !word.empty(); word = takeWord(line)) {
            checkCorner(word);
            corners = std::min(corners + 1, 3);
        }
        if (corners < 3) fail("a face needs three corners");
        ++mesh_.faces;
    }

    // A corner is a number from 1 and, after slashes, numbers of a texture coordinate and a normal. Negative
    // numbers count back from the last point.
    void checkCorner(std::string_view corner) const {
        const std::string_view word = corner.substr(0, corner.find('/'));
        std::int64_t number = 0;
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
        const bool isNumber = error == std::errc() && end == word.data() + word.size();
        const auto points = static_cast<std::int64_t>(mesh_.points);
        if (!isNumber || number == 0 || number > points || number < -points) {
            fail("a face names the point " + std::string(word.substr(0, 100)) + ", there are " +
                 std::to_string(points) + " above it");
        }
    }

    CollisionMesh mesh_;
    std::size_t line_ = 0;
};

}  // namespace

CollisionMesh readCollisionMesh(std::string_view text) {
    if (text.empty()) throw CollisionMeshError("is empty");
    return ObjReader().read(text);
}

}  // namespace velinor
