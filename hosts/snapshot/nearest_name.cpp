#include "hosts/snapshot/nearest_name.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace velinor {
namespace {

constexpr std::size_t kMostEdits = 2;

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// The number of letters to insert, drop or replace to make one of the other.
std::size_t editDistance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> row(to.size() + 1);
    for (std::size_t j = 0; j <= to.size(); ++j)
        row[j] = j;
    for (std::size_t i = 1; i <= from.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= to.size(); ++j) {
            const std::size_t replaced = diagonal + (lower(from[i - 1]) == lower(to[j - 1]) ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row[to.size()];
}

}  // namespace

std::string_view nearestName(std::string_view name, std::span<const std::string_view> known) {
    std::string_view nearest;
    std::size_t fewest = std::min(kMostEdits, name.size() / 2) + 1;
    for (const std::string_view candidate : known) {
        if (std::max(name.size(), candidate.size()) - std::min(name.size(), candidate.size()) > kMostEdits)
            continue;
        const std::size_t edits = editDistance(name, candidate);
        if (edits >= fewest) continue;
        fewest = edits;
        nearest = candidate;
    }
    return nearest;
}

}  // namespace velinor
