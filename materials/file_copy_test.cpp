#include "materials/file_copy.h"

#include "materials/file_copy_test_support.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;
using Outcome = FileCopy::Outcome;

TEST_F(FileCopyTest, HoldsEveryByte) {
    for (const std::size_t size :
         {std::size_t{0}, std::size_t{1}, std::size_t{1} << 18U, std::size_t{1000001}}) {
        std::string bytes;
        for (std::size_t i = 0; i < size; ++i)
            bytes.push_back(static_cast<char>(i * 31 % 251));
        writeFile(source_, bytes);
        EXPECT_EQ(copy(source_, target_), (FileCopy{Outcome::done, "", size}));
        EXPECT_EQ(readFile(target_), bytes) << size;
        EXPECT_TRUE(haveSameContent(source_, target_, progress_));
    }
    EXPECT_EQ(names(), (std::vector<std::string>{"source", "target"}));
}

TEST_F(FileCopyTest, ReplacesAnExistingFile) {
    writeFile(source_, "new");
    writeFile(target_, "an older, longer text");
    EXPECT_EQ(copy(source_, target_).outcome, Outcome::done);
    EXPECT_EQ(readFile(target_), "new");
}

TEST_F(FileCopyTest, LeavesAFileThatIsItsOwnTarget) {
    writeFile(source_, "text");
    for (const fs::path& target : {source_, folder_ / "." / "source"}) {
        EXPECT_EQ(copy(source_, target).outcome, Outcome::alreadyThere);
        EXPECT_EQ(readFile(source_), "text");
    }
}

TEST_F(FileCopyTest, TellsWhySourcesCannotBeCopied) {
    writeFile(target_, "before");
    fs::create_directory(folder_ / "folder");
    EXPECT_EQ(copy(folder_ / "nowhere", target_).outcome, Outcome::missing);
    EXPECT_EQ(copy("", target_).outcome, Outcome::missing);
    EXPECT_EQ(copy(std::string("a\0b", 3), target_).outcome, Outcome::missing);
    EXPECT_EQ(copy(std::string(1 << 20, 'x'), target_).outcome, Outcome::missing);
    EXPECT_EQ(copy(folder_ / "folder", target_), (FileCopy{Outcome::unreadable, "it is a folder", 0}));
    EXPECT_EQ(readFile(target_), "before");
    EXPECT_FALSE(fs::exists(folder_ / ".tolvex-copy"));
}

TEST_F(FileCopyTest, ThrowsWhereTheTargetCannotBeWritten) {
    writeFile(source_, "text");
    fs::create_directory(target_);
    EXPECT_EQ(errorOf([&] { copy(source_, target_); }), "copy source target");
    EXPECT_EQ(errorOf([&] { copy(source_, folder_ / "nowhere" / "x"); }), "copy source x");
    EXPECT_EQ(errorOf([&] { copy(source_, folder_ / "source" / "x"); }), "copy source x");
    EXPECT_EQ(errorOf([&] { copy(source_, folder_ / std::string(300, 'x')); }),
              "copy source " + std::string(300, 'x'));
    EXPECT_EQ(names(), (std::vector<std::string>{"source", "target"}));
}

TEST_F(FileCopyTest, CanBeStoppedWithoutATrace) {
    struct Stop {};
    class Stopping final : public Progress {
      public:
        void beginPhase(std::string_view, std::uint64_t) override {}
        void advance(std::uint64_t amount) override {
            EXPECT_EQ(amount, 0U);
            throw Stop();
        }
    };
    writeFile(source_, "text");
    Stopping stopping;
    EXPECT_THROW(copyWholeFile(source_, target_, stopping), Stop);
    EXPECT_EQ(names(), (std::vector<std::string>{"source"}));
}

TEST_F(FileCopyTest, ComparesContents) {
    const std::string large(600000, 'x');
    const std::string nearly = large.substr(1) + "y";
    writeFile(folder_ / "a", large);
    writeFile(folder_ / "same", large);
    writeFile(folder_ / "nearly", nearly);
    writeFile(folder_ / "longer", large + "x");
    EXPECT_TRUE(haveSameContent(folder_ / "a", folder_ / "same", progress_));
    for (const char* other : {"nearly", "longer", "nowhere", "."})
        EXPECT_FALSE(haveSameContent(folder_ / "a", folder_ / other, progress_)) << other;
}

TEST_F(FileCopyTest, TellsWhetherTargetsExist) {
    writeFile(target_, "");
    EXPECT_TRUE(targetExists(target_));
    EXPECT_TRUE(targetExists(folder_));
    EXPECT_FALSE(targetExists(source_));
    EXPECT_EQ(errorOf([&] { targetExists(folder_ / std::string(300, 'x')); }),
              kIsWindows ? "no error" : "exists " + std::string(300, 'x') + " ")
        << "Windows says of such a name that nothing is there";
}

}  // namespace
}  // namespace velinor
