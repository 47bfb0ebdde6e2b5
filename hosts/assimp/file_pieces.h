// Looking for marks in files of any size.
#pragma once

#include <cstddef>
#include <istream>
#include <string>
#include <string_view>

namespace velinor {

// Hands the bytes of `file` to visit(bytes, end), a piece at a time: marks that begin before `end` are this
// piece's, and `longestMark` bytes follow each of them unless the file ends.
template <typename Visit>
void readInPieces(std::istream& file, std::size_t longestMark, Visit visit) {
    constexpr std::size_t kPiece = std::size_t{1} << 20U;
    std::string bytes;
    while (file) {
        const std::size_t kept = bytes.size();
        bytes.resize(kept + kPiece);
        file.read(bytes.data() + kept, kPiece);
        bytes.resize(kept + static_cast<std::size_t>(file.gcount()));
        const std::size_t end = file ? bytes.size() - longestMark : bytes.size();
        visit(std::string_view(bytes), end);
        bytes.erase(0, end);
    }
}

// How often `mark` begins within the first `end` bytes, where `isMeant` says so of what follows it.
template <typename IsMeant>
std::size_t countMarks(std::string_view bytes, std::size_t end, std::string_view mark, IsMeant isMeant) {
    std::size_t count = 0;
    for (std::size_t at = bytes.find(mark); at < end; at = bytes.find(mark, at + mark.size()))
        count += isMeant(bytes.substr(at + mark.size())) ? 1 : 0;
    return count;
}

}  // namespace velinor
