// The commands that README.md shows, run as it shows them.
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "tests/cli/command_test_support.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

constexpr char kProgram[] = "build/bin/tolvex ";
constexpr char kFolderInReadme[] = "/home/you/tolvex";

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

TEST(Readme, ShowsWhatItsCommandsPrint) {
    const TemporaryFolder folder;
    fs::copy(fs::path(TOLVEX_SOURCE_DIR) / "examples", folder.path() / "examples");
    const std::vector<Example> examples = examplesOf(fs::path(TOLVEX_SOURCE_DIR) / "README.md");
    ASSERT_EQ(examples.size(), 2U);
    for (const Example& example : examples) {
        CommandInput input;
        input.folder = folder.path();
        const CommandResult result = runTolvex(example.arguments, input);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(replaced(result.out, folder.path().string(), kFolderInReadme), example.output);
    }
}

}  // namespace
}  // namespace velinor
