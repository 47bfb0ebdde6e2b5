// Links of the documents lead to files that exist.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string_view>
#include <vector>

namespace velinor {
namespace {

namespace fs = std::filesystem;

// The targets of the inline links "[text](target)" of a document, without places inside a file and without
// links that leave the project.
std::vector<std::string> localLinksOf(std::string_view text) {
    std::vector<std::string> targets;
    constexpr std::string_view kBeforeTarget = "](";
    for (std::size_t at = text.find(kBeforeTarget); at != std::string_view::npos;
         at = text.find(kBeforeTarget, at + 1)) {
        const std::size_t begin = at + kBeforeTarget.size();
        const std::string_view target = text.substr(begin, text.find_first_of(")# \n", begin) - begin);
        if (!target.empty() && target.find("://") == std::string_view::npos) targets.emplace_back(target);
    }
    return targets;
}

std::vector<fs::path> documents() {
    const fs::path root = TOLVEX_SOURCE_DIR;
    std::vector<fs::path> found;
    for (const fs::path& folder : {root, root / "docs", root / "benchmarks"}) {
        for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
            if (entry.path().extension() == ".md") found.push_back(entry.path());
        }
    }
    return found;
}

TEST(DocumentLinks, LeadToFiles) {
    std::size_t links = 0;
    for (const fs::path& document : documents()) {
        std::ostringstream text;
        text << std::ifstream(document).rdbuf();
        for (const std::string& target : localLinksOf(text.str())) {
            ++links;
            EXPECT_TRUE(fs::exists(document.parent_path() / target))
                << document << " links to " << target << ", which does not exist";
        }
    }
    EXPECT_GT(links, 10U);
}

TEST(DocumentLinks, AreFoundInText) {
    EXPECT_EQ(
        localLinksOf("see [a](docs/a.md), [b](b.md#place) and [c](#here); [d](https://example.org/d)\n[e](e"),
        (std::vector<std::string>{"docs/a.md", "b.md", "e"}));
}

}  // namespace
}  // namespace velinor
