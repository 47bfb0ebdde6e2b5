#include "tests/support/tree_compare.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include "base/text.h"
#include "tests/support/platform_text.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

std::string lineAt(const std::string& text, std::size_t start) {
    if (start >= text.size()) return "(end of file)";
    const std::size_t end = text.find('\n', start);
    return end == std::string::npos ? text.substr(start) + " (no line end)" : text.substr(start, end - start);
}

std::string differenceIn(const std::string& file, const std::string& expected, const std::string& actual) {
    const auto at = std::ranges::mismatch(expected, actual).in1;
    const auto line = 1 + std::count(expected.begin(), at, '\n');
    const auto place = static_cast<std::size_t>(at - expected.begin());
    const std::size_t before = place == 0 ? std::string::npos : expected.rfind('\n', place - 1);
    const std::size_t start = before == std::string::npos ? 0 : before + 1;
    return file + ":" + std::to_string(line) + ":\n  expected: " + lineAt(expected, start) +
           "\n  actual:   " + lineAt(actual, start);
}

}  // namespace

Tree readTree(const fs::path& folder) {
    Tree tree;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file()) continue;
        std::ostringstream text;
        text << std::ifstream(entry.path(), std::ios::binary).rdbuf();
        tree[withSlashes(utf8Path(entry.path().lexically_relative(folder)))] = text.str();
    }
    return tree;
}

void writeTree(const fs::path& folder, const Tree& tree) {
    for (const auto& [file, content] : tree) {
        fs::create_directories((folder / pathOfUtf8(file)).parent_path());
        std::ofstream(folder / pathOfUtf8(file), std::ios::binary) << content;
    }
}

std::optional<std::string> firstDifference(const Tree& expected, const Tree& actual) {
    for (const auto& [file, content] : expected) {
        const auto found = actual.find(file);
        if (found == actual.end()) return file + ": is missing";
        if (found->second != content) return differenceIn(file, content, found->second);
    }
    for (const auto& [file, content] : actual) {
        if (!expected.contains(file)) return file + ": is there and was not expected";
    }
    return std::nullopt;
}

}  // namespace velinor
