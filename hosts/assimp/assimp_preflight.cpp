#include "hosts/assimp/assimp_preflight.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <optional>
#include <string_view>
#include <system_error>

#include "base/text.h"
#include "hosts/snapshot/scene_error.h"

namespace velinor {
namespace {

constexpr std::size_t kBeginning = 16384;

// The first bytes of the file. Throws SceneError where there are none.
std::string readBeginning(const std::filesystem::path& file, const std::string& shown) {
    std::error_code error;
    const auto status = std::filesystem::status(file, error);
    if (!std::filesystem::exists(status)) throw SceneError(shown + ": there is no such file");
    if (std::filesystem::is_directory(status)) throw SceneError(shown + ": is a folder, not a scene file");
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw SceneError(shown + ": cannot be opened; check the permissions of the file");
    std::string beginning(kBeginning, '\0');
    stream.read(beginning.data(), static_cast<std::streamsize>(beginning.size()));
    beginning.resize(static_cast<std::size_t>(stream.gcount()));
    if (beginning.empty()) throw SceneError(shown + ": the file is empty");
    return beginning;
}

std::string lowerCaseEnding(const std::filesystem::path& file) {
    std::string ending = utf8Path(file.extension());
    for (char& c : ending)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return ending;
}

bool isTextEnding(std::string_view ending) {
    constexpr std::string_view kTextEndings[] = {".obj", ".dae", ".xml", ".x3d", ".gltf"};
    return std::ranges::find(kTextEndings, ending) != std::end(kTextEndings);
}

bool isUtf16(std::string_view bytes) {
    if (bytes.size() < 2) return false;
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) return true;
    return (bytes[0] == '\0') != (bytes[1] == '\0');
}

// The next word of `text`, which loses it; empty at the end. "#" begins a remark up to the end of the line.
std::string_view nextWord(std::string_view& text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    for (;;) {
        text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
        if (!text.starts_with('#')) break;
        text.remove_prefix(std::min(text.find('\n'), text.size()));
    }
    const std::string_view word = text.substr(0, text.find_first_of(kBlanks));
    text.remove_prefix(word.size());
    return word;
}

std::optional<std::uint64_t> asCount(std::string_view word) {
    std::uint64_t count = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), count);
    if (word.empty() || end != word.data() + word.size()) return std::nullopt;
    // More than 64 bits hold is more than any file holds.
    return error == std::errc::result_out_of_range ? UINT64_MAX : count;
}

struct PromisedCounts {
    std::optional<std::uint64_t> vertices;
    std::optional<std::uint64_t> faces;
    std::optional<std::size_t> textBody = {};  // where the lines of an ASCII PLY file begin
    std::uint64_t linesBeforeFaces = 0;        // among those
};

// OFF: "OFF", the number of vertices, that of faces.
PromisedCounts offCounts(std::string_view text) {
    if (nextWord(text).find("OFF") == std::string_view::npos) return {};
    PromisedCounts counts;
    counts.vertices = asCount(nextWord(text));
    counts.faces = asCount(nextWord(text));
    return counts;
}

// The next line of `text`, which loses it.
std::string_view nextLine(std::string_view& text) {
    const std::string_view line = text.substr(0, text.find_first_of("\r\n"));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return line;
}

// PLY: a header with lines "element vertex N" and "element face N".
PromisedCounts plyCounts(std::string_view text) {
    const std::size_t size = text.size();
    bool isAscii = false;
    PromisedCounts counts;
    while (!text.empty()) {
        std::string_view line = nextLine(text);
        const std::string_view word = nextWord(line);
        if (word == "end_header") {
            if (isAscii) counts.textBody = size - text.size();
            break;
        }
        if (word == "format") isAscii = nextWord(line) == "ascii";
        if (word != "element") continue;
        const std::string_view what = nextWord(line);
        const auto count = asCount(nextWord(line));
        if (what == "vertex") counts.vertices = count;
        if (what == "face") counts.faces = count;
        if (!counts.faces) counts.linesBeforeFaces += count.value_or(0);
    }
    return counts;
}

// The lines from `start` on that are not blank.
std::uint64_t linesFrom(std::size_t start, const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    stream.seekg(static_cast<std::streamoff>(start));
    std::uint64_t lines = 0;
    bool isInLine = false;
    for (std::istreambuf_iterator<char> c(stream), end; c != end; ++c) {
        if (*c == '\r' || *c == '\n') {
            isInLine = false;
        } else if (!isInLine && *c != ' ' && *c != '\t') {
            isInLine = true;
            ++lines;
        }
    }
    return lines;
}

// The faces that follow the header of an ASCII PLY file, each on a line as all its elements are.
std::optional<std::uint64_t> plyFacesHeld(const std::filesystem::path& file, const PromisedCounts& counts) {
    if (!counts.faces || !counts.textBody) return std::nullopt;
    const std::uint64_t lines = linesFrom(*counts.textBody, file);
    return std::min(lines - std::min(lines, counts.linesBeforeFaces), *counts.faces);
}

// Every vertex and every face takes a byte at the very least.
void refuseTooShort(std::optional<std::uint64_t> count, const char* what, std::uint64_t size,
                    const std::string& shown) {
    if (!count || *count <= size) return;
    throw SceneError(shown + ": the file is damaged or cut off: it promises " + std::to_string(*count) + " " +
                     what + " and has " + std::to_string(size) + " bytes");
}

PromisedCounts promisedCounts(const std::filesystem::path& file, std::string_view beginning) {
    const std::string ending = lowerCaseEnding(file);
    if (ending == ".off") return offCounts(beginning);
    if (ending == ".ply") return plyCounts(beginning);
    return {};
}

void refuseEmptyPromises(const std::filesystem::path& file, const PromisedCounts& counts,
                         const std::string& shown) {
    std::error_code error;
    const std::uint64_t size = std::filesystem::file_size(file, error);
    if (error) return;  // no regular file; its size is not known
    refuseTooShort(counts.vertices, "vertices", size, shown);
    refuseTooShort(counts.faces, "faces", size, shown);
}

}  // namespace

SourceFile examineSceneFile(const std::filesystem::path& file) {
    SourceFile source;
    source.path = file;
    source.shown = printable(utf8Path(file));
    source.stem = utf8Path(file.stem());
    const std::string beginning = readBeginning(file, source.shown);
    if (!canReadWithAssimp(file)) {
        throw SceneError(source.shown + ": scene files of the ending \"" +
                         printable(utf8Path(file.extension())) + "\" cannot be read");
    }
    if (isTextEnding(lowerCaseEnding(file)) && isUtf16(beginning)) {
        throw SceneError(source.shown + ": the file is UTF-16 text, which cannot be read; save it as UTF-8");
    }
    const PromisedCounts counts = promisedCounts(file, beginning);
    refuseEmptyPromises(file, counts, source.shown);
    source.promisedFaces = counts.faces;
    source.heldFaces = plyFacesHeld(file, counts);
    source.isAsciiFbx = !beginning.starts_with("Kaydara FBX Binary");
    return source;
}

}  // namespace velinor
