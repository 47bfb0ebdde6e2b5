// A property or an object in the two forms of the file, "..." standing for a text that may be empty:
//
//   text    P: "Visibility", "Visibility", "", "A",0
//           AnimationCurve: 123, "AnimCurve::...", "" {
//   binary  S <10> Visibility S <10> Visibility S <0> S <1> A D <number>     <n>: 32 bits, the number: 64
//           S <n> ... <0> <1> AnimCurve S                                   <0> <1>: bytes between name and
//           kind
#include "hosts/assimp/fbx_marks.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "hosts/assimp/file_pieces.h"

namespace velinor {
namespace {

using namespace std::string_view_literals;

// No mark with what belongs to it is longer.
constexpr std::size_t kLongestFbxMark = 256;

constexpr std::string_view kTextCurve = "\"AnimCurve::"sv;
constexpr std::string_view kBinaryCurve = "\0\1AnimCurveS"sv;
constexpr std::string_view kTextCluster = "\", \"Cluster\" {"sv;
constexpr std::string_view kBinaryCluster = "\0\1SubDeformerS\7\0\0\0Cluster"sv;
constexpr std::string_view kTextLayer = "\", \"DisplayLayer\" {"sv;
constexpr std::string_view kBinaryLayer = "\0\1DisplayLayerS"sv;
constexpr std::string_view kTextVisibility = "P: \"Visibility\", \"Visibility\", \""sv;
constexpr std::string_view kBinaryVisibility = "S\12\0\0\0VisibilityS\12\0\0\0VisibilityS"sv;

// `", "A",0`: a text, and a number up to the end of the line.
bool isZeroInText(std::string_view rest) {
    rest = rest.substr(0, rest.find_first_of("\r\n"));
    const std::size_t comma = rest.rfind(',');
    if (comma == std::string_view::npos) return false;
    rest.remove_prefix(comma + 1);
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t"), rest.size()));
    float number = 1;
    std::from_chars(rest.data(), rest.data() + rest.size(), number);
    return number == 0;
}

// The rest of a text, its size first; then a text; then a number.
bool isZeroInBinary(std::string_view rest) {
    for (int texts = 0; texts < 2; ++texts) {
        std::uint32_t size = 0;
        if (rest.size() < sizeof size) return false;
        std::memcpy(&size, rest.data(), sizeof size);
        if (rest.size() - sizeof size <= size) return false;
        rest.remove_prefix(sizeof size + size);
        const char next = texts == 0 ? 'S' : 'D';
        if (rest.front() != next) return false;
        rest.remove_prefix(1);
    }
    double number = 1;
    if (rest.size() < sizeof number) return false;
    std::memcpy(&number, rest.data(), sizeof number);
    return number == 0;
}

// The marks that begin within the first `end` bytes.
void addMarks(std::string_view bytes, std::size_t end, FbxMarks& marks) {
    const auto any = [](std::string_view) { return true; };
    const auto isThere = [&](std::string_view mark) { return bytes.find(mark) < end; };
    marks.hasAnimation = marks.hasAnimation || isThere(kTextCurve) || isThere(kBinaryCurve);
    marks.hasSkin = marks.hasSkin || isThere(kTextCluster) || isThere(kBinaryCluster);
    marks.displayLayers +=
        countMarks(bytes, end, kTextLayer, any) + countMarks(bytes, end, kBinaryLayer, any);
    marks.hiddenNodes += countMarks(bytes, end, kTextVisibility, isZeroInText) +
                         countMarks(bytes, end, kBinaryVisibility, isZeroInBinary);
}

}  // namespace

FbxMarks readFbxMarks(std::istream& file) {
    FbxMarks marks;
    readInPieces(file, kLongestFbxMark,
                 [&marks](std::string_view bytes, std::size_t end) { addMarks(bytes, end, marks); });
    return marks;
}

}  // namespace velinor
