#include "materials/file_copy.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <functional>

#include "materials/materials_test_support.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;
using Outcome = FileCopy::Outcome;

class FileCopyTest : public testing::Test {
  protected:
    FileCopy copy(const fs::path& source, const fs::path& target) {
        return copyWholeFile(source, target, progress_);
    }
    // The operation word and the paths of the error that `action` ends with.
    static std::string errorOf(const std::function<void()>& action) {
        try {
            action();
        } catch (const fs::filesystem_error& error) {
            std::string text = error.what();
            const std::string prefix = "filesystem error: ";
            if (text.starts_with(prefix)) text.erase(0, prefix.size());
            return text.substr(0, text.find(": ")) + " " + error.path1().filename().string() + " " +
                   error.path2().filename().string();
        }
        return "no error";
    }
    std::vector<std::string> names() const {
        std::vector<std::string> found;
        for (const auto& entry : fs::directory_iterator(folder_))
            found.push_back(entry.path().filename().string());
        std::ranges::sort(found);
        return found;
    }

    TemporaryFolder temporary_;
    fs::path folder_ = temporary_.path();
    fs::path source_ = folder_ / "source";
    fs::path target_ = folder_ / "target";
    NoProgress progress_;
};

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
    fs::create_symlink(source_, target_);
    for (const fs::path& target : {source_, folder_ / "." / "source", target_}) {
        EXPECT_EQ(copy(source_, target).outcome, Outcome::alreadyThere);
        EXPECT_EQ(readFile(source_), "text");
    }
    EXPECT_TRUE(fs::is_symlink(target_));
}

TEST_F(FileCopyTest, FollowsLinksOfTheSourceOnly) {
    writeFile(folder_ / "a", "a");
    writeFile(folder_ / "b", "b");
    fs::create_symlink(folder_ / "a", source_);
    fs::create_symlink(folder_ / "b", target_);
    EXPECT_EQ(copy(source_, target_).outcome, Outcome::done);
    EXPECT_EQ(readFile(target_), "a");
    EXPECT_FALSE(fs::is_symlink(target_));
    EXPECT_EQ(readFile(folder_ / "b"), "b");
}

TEST_F(FileCopyTest, TellsWhySourcesCannotBeCopied) {
    writeFile(target_, "before");
    fs::create_directory(folder_ / "folder");
    ASSERT_EQ(mkfifo((folder_ / "pipe").c_str(), 0600), 0);
    fs::create_symlink("loop", folder_ / "loop");
    EXPECT_EQ(copy(folder_ / "nowhere", target_).outcome, Outcome::missing);
    EXPECT_EQ(copy("", target_).outcome, Outcome::missing);
    EXPECT_EQ(copy(std::string("a\0b", 3), target_).outcome, Outcome::missing);
    EXPECT_EQ(copy(std::string(1 << 20, 'x'), target_).outcome, Outcome::missing);
    EXPECT_EQ(copy(folder_ / "folder", target_), (FileCopy{Outcome::unreadable, "it is a folder", 0}));
    EXPECT_EQ(copy(folder_ / "pipe", target_), (FileCopy{Outcome::unreadable, "it is no regular file", 0}));
    EXPECT_EQ(copy("/dev/zero", target_), (FileCopy{Outcome::unreadable, "it is no regular file", 0}));
    EXPECT_EQ(copy(folder_ / "loop", target_).outcome, Outcome::unreadable);
    EXPECT_EQ(readFile(target_), "before");
    EXPECT_FALSE(fs::exists(folder_ / ".tolvex-copy"));
}

// Regular files whose reading fails: readable by nobody, and, for those who may read everything, one whose
// first page lies outside any memory.
TEST_F(FileCopyTest, TellsOfSourcesThatCannotBeRead) {
    fs::path unreadable = source_;
    writeFile(source_, "secret");
    fs::permissions(source_, fs::perms::none);
    if (geteuid() == 0) unreadable = "/proc/self/mem";
    writeFile(target_, "before");
    const FileCopy result = copy(unreadable, target_);
    EXPECT_EQ(result.outcome, Outcome::unreadable);
    EXPECT_NE(result.reason, "");
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

// The longest file that this process may write.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &before_); }

  private:
    rlimit before_{};
};

TEST_F(FileCopyTest, LeavesNoCutOffFileOnAFullDisk) {
    writeFile(source_, std::string(1 << 20, 'x'));
    writeFile(target_, "before");
    for (const rlim_t bytes : {rlim_t{0}, rlim_t{1000}, rlim_t{1} << 19U, (rlim_t{1} << 20U) - 1}) {
        const FileSizeLimit limit(bytes);
        EXPECT_EQ(errorOf([&] { copy(source_, target_); }), "copy source target") << bytes;
    }
    EXPECT_EQ(readFile(target_), "before");
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
              "exists " + std::string(300, 'x') + " ");
}

}  // namespace
}  // namespace velinor
