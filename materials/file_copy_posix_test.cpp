// What only POSIX systems have: links for everybody, pipes, limits of file sizes; the rest is in
// file_copy_test.cpp.
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

#include "materials/file_copy_test_support.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;
using Outcome = FileCopy::Outcome;

TEST_F(FileCopyTest, LeavesALinkToItsOwnSource) {
    writeFile(source_, "text");
    fs::create_symlink(source_, target_);
    EXPECT_EQ(copy(source_, target_).outcome, Outcome::alreadyThere);
    EXPECT_EQ(readFile(source_), "text");
    EXPECT_TRUE(fs::is_symlink(target_));
}

TEST_F(FileCopyTest, TakesNoPipesDevicesAndLoops) {
    writeFile(target_, "before");
    ASSERT_EQ(mkfifo((folder_ / "pipe").c_str(), 0600), 0);
    fs::create_symlink("loop", folder_ / "loop");
    EXPECT_EQ(copy(folder_ / "pipe", target_), (FileCopy{Outcome::unreadable, "it is no regular file", 0}));
    EXPECT_EQ(copy("/dev/zero", target_), (FileCopy{Outcome::unreadable, "it is no regular file", 0}));
    EXPECT_EQ(copy(folder_ / "loop", target_).outcome, Outcome::unreadable);
    EXPECT_EQ(readFile(target_), "before");
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

}  // namespace
}  // namespace velinor
