// Every file of the model collection, in another process: read or refused with a message, nothing else.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <vector>

#include "base/text.h"
#include "hosts/assimp/assimp_test_support.h"
#include "platform/isolated_run.h"
#include "platform/temporary_folder.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kRead = "read";
constexpr std::string_view kRefused = "refused";

std::string tryToRead(const fs::path& file) {
    try {
        const std::string fault = faultOf(readScene(file).scene);
        return fault.empty() ? std::string(kRead) : "unsound: " + fault;
    } catch (const SceneError& error) {
        const std::string message = error.what();
        const bool isGood =
            message.starts_with(utf8Path(file) + ": ") && message.find('\n') == std::string::npos;
        return isGood ? std::string(kRefused) : "bad message: " + message;
    }
}

std::string contentOf(const fs::path& file) {
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
}

// The library's OpenGEX reader prints a line of its own.
bool mayPrint(const fs::path& file) {
    return file.extension() == ".ogex";
}

std::vector<std::string> linesOf(std::string_view text) {
    std::istringstream stream{std::string(text)};
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

// What a file comes to, and what was printed meanwhile into `folder`.
std::string outcomeOf(const fs::path& file, const fs::path& folder) {
    const std::string out = (folder / "out").string();
    const std::string err = (folder / "err").string();
    if (std::freopen(out.c_str(), "w", stdout) == nullptr ||
        std::freopen(err.c_str(), "w", stderr) == nullptr)
        return "no output files";
    const std::string outcome = tryToRead(file);
    std::fflush(stdout);
    std::fflush(stderr);
    const std::string printed = contentOf(out) + contentOf(err);
    return printed.empty() || mayPrint(file) ? outcome : outcome + ", printing " + printed;
}

const IsolationLimits kLimits;

// Reads the files that the input lists, a line each after that of a folder, and sends how each ended.
const IsolatedWork kReadFiles("read-model-files", [](std::string_view input, const SendMessage& send) {
    const std::vector<std::string> lines = linesOf(input);
    for (std::size_t i = 1; i < lines.size(); ++i) {
        send(outcomeOf(pathOfUtf8(lines[i]), pathOfUtf8(lines[0])));
        renewProcessorTime(kLimits);
    }
});

// How each of the files ends. One that ends the process is followed by another process for the rest.
std::vector<std::string> outcomesOf(const std::vector<fs::path>& files) {
    const TemporaryFolder folder;
    std::vector<std::string> outcomes;
    while (outcomes.size() < files.size()) {
        std::string input = utf8Path(folder.path()) + '\n';
        for (std::size_t i = outcomes.size(); i < files.size(); ++i)
            input += utf8Path(files[i]) + '\n';
        const IsolatedRun run = runIsolated(
            kReadFiles, input, [&outcomes](std::string_view outcome) { outcomes.emplace_back(outcome); },
            kLimits);
        if (outcomes.size() < files.size()) outcomes.push_back("ended the process: " + run.cause);
    }
    return outcomes;
}

TEST_F(ModelTest, EveryFileIsReadOrRefusedAndNothingIsPrinted) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(models())) {
        if (entry.is_regular_file() && canReadWithAssimp(entry.path())) files.push_back(entry.path());
    }
    const std::vector<std::string> outcomes = outcomesOf(files);
    ASSERT_EQ(outcomes.size(), files.size());
    int read = 0;
    for (std::size_t i = 0; i < files.size(); ++i) {
        read += outcomes[i] == kRead ? 1 : 0;
        EXPECT_TRUE(outcomes[i] == kRead || outcomes[i] == kRefused) << files[i] << ": " << outcomes[i];
    }
    std::printf("%d files read of %zu\n", read, files.size());
    // On every system the same ones.
    EXPECT_EQ(read, 321);
}

// Here and not among the other refusals: the library's reader of this format loses the memory of the missing
// nodes.
TEST_F(ModelTest, FilesWhoseNodeTreeHasAHoleAreRefused) {
    for (const std::string& outcome :
         outcomesOf({models() / "RAW/WithColor.raw", models() / "RAW/WithTexture.raw"})) {
        EXPECT_EQ(outcome, kRefused);
    }
}

}  // namespace
}  // namespace velinor
