// Every folder beside this file is a golden package: scene.scene.json is exported through the command, with
// the options of arguments.txt (one a line) where there is one, and must give the files of expected/ byte for
// byte. "{case}" in an option stands for the case's folder. why.txt says in one line why the case exists.
// TOLVEX_REWRITE_EXPECTED=1 in the environment writes what comes out into expected/ instead of comparing;
// read the difference before you commit it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "base/text.h"
#include "platform/temporary_folder.h"
#include "tests/support/expected_package.h"
#include "tests/support/platform_text.h"
#include "tests/support/run_command.h"
#include "tests/support/tree_compare.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> caseNames() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(TOLVEX_PACKAGE_CASES)) {
        if (entry.is_directory()) names.push_back(utf8Path(entry.path().filename()));
    }
    std::ranges::sort(names);
    return names;
}

std::vector<std::string> linesOf(const fs::path& file) {
    std::vector<std::string> lines;
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

// The options of a case, one a line of its arguments.txt.
std::vector<std::string> optionsOf(const fs::path& folder) {
    constexpr std::string_view kCase = "{case}";
    std::vector<std::string> options = linesOf(folder / "arguments.txt");
    for (std::string& option : options) {
        const std::size_t at = option.find(kCase);
        if (at != std::string::npos) option.replace(at, kCase.size(), utf8Path(folder));
    }
    return options;
}

bool isRewriteWanted() {
    const char* value = std::getenv("TOLVEX_REWRITE_EXPECTED");
    return value != nullptr && std::string(value) == "1";
}

// The sky that is shipped is in nearly every package. A line stands for it, so that it need not be beside
// every case.
Tree withoutDefaultSky(Tree package) {
    const auto sky = package.find("resources/default.dds");
    if (sky != package.end() && sky->second == installedFile("res/default.dds"))
        sky->second = "the default sky as it is shipped\n";
    return package;
}

class PackageTest : public testing::TestWithParam<std::string> {
  protected:
    fs::path folder = fs::path(TOLVEX_PACKAGE_CASES) / GetParam();

    // What the command makes of the case's scene.
    Tree exported() {
        const TemporaryFolder target;
        std::vector<std::string> arguments{"export", "--quiet"};
        const auto options = optionsOf(folder);
        arguments.insert(arguments.end(), options.begin(), options.end());
        arguments.push_back(utf8Path(folder / "scene.scene.json"));
        arguments.push_back(utf8Path(target.path() / "package.jsx"));
        const CommandResult result = runTolvex(arguments);
        EXPECT_EQ(result.status, 0) << result.err;
        return result.status == 0 ? withoutDefaultSky(readTree(target.path() / "package")) : Tree();
    }
};

TEST_P(PackageTest, IsAsExpected) {
    ASSERT_EQ(linesOf(folder / "why.txt").size(), 1U) << "one line that says why the case exists";
    const Tree actual = exported();
    if (isRewriteWanted()) {
        ASSERT_FALSE(kIsWindows) << "the expected files have the line ends of Linux: rewrite them there";
        fs::remove_all(folder / "expected");
        writeTree(folder / "expected", actual);
    }
    const auto difference = firstDifference(expectedHere(readTree(folder / "expected"), actual), actual);
    EXPECT_EQ(difference, std::nullopt) << *difference;
}

TEST_P(PackageTest, IsTheSameFromCbor) {
    const TemporaryFolder other;
    const fs::path cbor = other.path() / "scene.scene.cbor";
    for (const auto& file : fs::directory_iterator(folder)) {
        if (file.is_regular_file()) fs::copy(file, other.path());  // the bitmaps beside the scene
    }
    ASSERT_EQ(runTolvex({"snapshot", utf8Path(folder / "scene.scene.json"), utf8Path(cbor)}).status, 0);
    std::vector<std::string> arguments{"export", "--quiet"};
    const auto options = optionsOf(folder);
    arguments.insert(arguments.end(), options.begin(), options.end());
    arguments.push_back(utf8Path(cbor));
    arguments.push_back(utf8Path(other.path() / "package.jsx"));
    ASSERT_EQ(runTolvex(arguments).status, 0);
    const auto difference =
        firstDifference(exported(), withoutDefaultSky(readTree(other.path() / "package")));
    EXPECT_EQ(difference, std::nullopt) << *difference;
}

INSTANTIATE_TEST_SUITE_P(Case, PackageTest, testing::ValuesIn(caseNames()), [](const auto& parameter) {
    std::string name = parameter.param;
    std::ranges::replace(name, '-', '_');
    return name;
});

}  // namespace
}  // namespace velinor
