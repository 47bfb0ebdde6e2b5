#include "hosts/assimp/collada_marks.h"

#include <algorithm>
#include <charconv>
#include <string_view>

#include "hosts/assimp/file_pieces.h"

namespace velinor {
namespace {

constexpr std::size_t kLongestColladaMark = 64;

bool isZero(std::string_view rest) {
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t\r\n"), rest.size()));
    float number = 1;
    std::from_chars(rest.data(), rest.data() + rest.size(), number);
    return number == 0;
}

}  // namespace

ColladaMarks readColladaMarks(std::istream& file) {
    ColladaMarks marks;
    readInPieces(file, kLongestColladaMark, [&marks](std::string_view bytes, std::size_t end) {
        marks.hasUserProperties = marks.hasUserProperties || bytes.find("<user_properties>") < end;
        marks.hiddenNodes += countMarks(bytes, end, "<visibility>", isZero);
    });
    return marks;
}

}  // namespace velinor
