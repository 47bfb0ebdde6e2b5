// The commands that README.md shows, run as it shows them. A line "..." there stands for lines left out.
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "tests/cli/command_test_support.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

constexpr char kProgram[] = "build/bin/tolvex ";
constexpr char kFolderInReadme[] = "/home/you/tolvex";
constexpr std::string_view kLeftOut = "...\n";

struct Example {
    std::vector<std::string> arguments;
    std::string output;
};

// The "$ command" lines of the console blocks, each with the lines below it.
std::vector<Example> examplesOf(const fs::path& document) {
    std::vector<Example> examples;
    std::ifstream lines(document);
    bool isInBlock = false;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("```")) {
            isInBlock = line == "```console";
        } else if (isInBlock && line.starts_with("$ ")) {
            EXPECT_TRUE(line.substr(2).starts_with(kProgram)) << line;
            std::istringstream words(line.substr(2 + std::string(kProgram).size()));
            Example example;
            for (std::string word; words >> word;)
                example.arguments.push_back(word);
            examples.push_back(example);
        } else if (isInBlock) {
            examples.back().output += line + "\n";
        }
    }
    return examples;
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    const std::size_t at = text.find(from);
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

// The first part of `expected` that `output` lacks where it should be; nothing where it fits.
std::optional<std::string> missingPart(std::string_view output, std::string_view expected) {
    std::size_t from = 0;
    for (bool isFirst = true;; isFirst = false) {
        const std::size_t gap = expected.find(kLeftOut);
        const bool isLast = gap == std::string_view::npos;
        const std::string_view part = expected.substr(0, gap);
        std::size_t at = isFirst ? 0 : output.find(part, from);
        if (isLast && !isFirst && output.size() >= part.size()) at = output.size() - part.size();
        if (at == std::string_view::npos || at < from || output.substr(at, part.size()) != part)
            return std::string(part);
        from = at + part.size();
        if (isLast) return from == output.size() ? std::nullopt : std::optional(std::string(part));
        expected.remove_prefix(gap + kLeftOut.size());
    }
}

TEST(Readme, LinesLeftOutMayBeAny) {
    EXPECT_EQ(missingPart("a\nb\nc\n", "a\nb\nc\n"), std::nullopt);
    EXPECT_EQ(missingPart("a\nb\nc\n", "a\n...\nc\n"), std::nullopt);
    EXPECT_EQ(missingPart("a\nb\nc\nb\n", "...\nb\n...\n"), std::nullopt);
    EXPECT_EQ(missingPart("a\nb\n", "b\n...\n"), "b\n");
    EXPECT_EQ(missingPart("a\nb\nc\n", "a\n...\nb\n"), "b\n");
    EXPECT_EQ(missingPart("a\nb\n", "a\n"), "a\n");
    EXPECT_EQ(missingPart("a\n", "a\n...\na\n"), "a\n");
}

TEST(Readme, ShowsWhatItsCommandsPrint) {
    const TemporaryFolder folder;
    fs::copy(fs::path(TOLVEX_SOURCE_DIR) / "examples", folder.path() / "examples",
             fs::copy_options::recursive);
    const std::vector<Example> examples = examplesOf(fs::path(TOLVEX_SOURCE_DIR) / "README.md");
    ASSERT_EQ(examples.size(), 2U);
    for (const Example& example : examples) {
        CommandInput input;
        input.folder = folder.path();
        const CommandResult result = runTolvex(example.arguments, input);
        EXPECT_EQ(result.status, 0) << result.err;
        const std::string output = replaced(result.out, utf8Path(folder.path()), kFolderInReadme);
        EXPECT_EQ(missingPart(output, example.output), std::nullopt) << output;
    }
}

}  // namespace
}  // namespace velinor
