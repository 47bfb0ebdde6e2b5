#include "platform/tool_runner.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fstream>
#include <stdexcept>

#include "platform/temporary_folder.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;
using End = ToolRun::End;

class ToolRunnerTest : public testing::Test {
  protected:
    // A program that is a shell script with this text.
    std::string script(const std::string& text, const std::string& name = "tool.exe") {
        const fs::path path = folder_.path() / name;
        std::ofstream(path) << "#!/bin/sh\n" << text;
        fs::permissions(path, fs::perms::owner_all);
        return path;
    }

    ToolRun run(const std::string& text, std::vector<std::string> arguments = {}) {
        arguments.insert(arguments.begin(), script(text));
        return SystemToolRunner().run({"", arguments});
    }

    TemporaryFolder folder_;
};

TEST_F(ToolRunnerTest, GivesExitStatusAndOutput) {
    const ToolRun run = this->run("echo out; echo err >&2; exit 3\n");
    EXPECT_EQ(run.end, End::exited);
    EXPECT_EQ(run.code, 3);
    EXPECT_EQ(run.output, "out\nerr\n");
    EXPECT_FALSE(hasSucceeded(run));
    EXPECT_EQ(describe(run), "exit status 3: out\nerr");
    EXPECT_TRUE(hasSucceeded(this->run("exit 0\n")));
}

TEST_F(ToolRunnerTest, PassesArgumentsAsTheyAre) {
    const std::vector<std::string> hostile{"a b",        "\"quoted\"", "$(touch x)", "; rm -rf x",
                                           "line\nfeed", "",           "'",          "*"};
    std::string expected;
    for (const std::string& argument : hostile)
        expected += "<" + argument + ">";
    EXPECT_EQ(run("for a in \"$@\"; do printf '<%s>' \"$a\"; done\n", hostile).output, expected);
}

TEST_F(ToolRunnerTest, StartsProgramsWhosePathLooksLikeACommand) {
    const std::string path = script("echo fine\n", "a b; $(exit 1) \"q\"");
    EXPECT_EQ(SystemToolRunner().run({"", {path}}).output, "fine\n");
}

TEST_F(ToolRunnerTest, TellsWhyAToolIsNotStarted) {
    const ToolRun missing = SystemToolRunner().run({"", {folder_.path() / "missing"}});
    EXPECT_EQ(missing.end, End::notStarted);
    EXPECT_EQ(describe(missing), "not started: No such file or directory");

    std::ofstream(folder_.path() / "plain") << "text";
    const ToolRun notExecutable = SystemToolRunner().run({"", {folder_.path() / "plain"}});
    EXPECT_EQ(notExecutable.end, End::notStarted);
    EXPECT_EQ(describe(notExecutable), "not started: Permission denied");

    EXPECT_EQ(SystemToolRunner().run({"", {folder_.path()}}).end, End::notStarted);
}

TEST_F(ToolRunnerTest, TellsSignals) {
    const ToolRun run = this->run("kill -SEGV $$\n");
    EXPECT_EQ(run.end, End::crashed);
    EXPECT_EQ(describe(run), "ended by signal 11");
}

TEST_F(ToolRunnerTest, KeepsTheBeginningOfMegabytesOfOutput) {
    const ToolRun run = this->run("echo first; head -c 5000000 /dev/zero; echo last >&2\n");
    EXPECT_EQ(run.end, End::exited);
    EXPECT_EQ(run.code, 0);
    EXPECT_TRUE(run.output.starts_with("first\n"));
    EXPECT_LT(run.output.size(), 10000U);
}

TEST_F(ToolRunnerTest, DoesNotWaitForWhatAToolLeavesRunning) {
    const pid_t left = std::stoi(run("sleep 600 & echo $!\n").output);
    EXPECT_EQ(::kill(left, SIGKILL), 0) << "it is still there";
}

TEST_F(ToolRunnerTest, WaitsForAToolThatClosesItsOutputEarly) {
    EXPECT_EQ(run("exec >/dev/null 2>&1; sleep 0.2; exit 4\n").code, 4);
}

TEST_F(ToolRunnerTest, GivesToolsNothingToRead) {
    EXPECT_EQ(run("cat; echo end\n").output, "end\n");
}

TEST_F(ToolRunnerTest, RunsToolsInTheFolderGiven) {
    const fs::path folder = folder_.path() / "inner";
    fs::create_directory(folder);
    const std::string tool = script("echo text > left-behind\n");
    EXPECT_TRUE(hasSucceeded(SystemToolRunner(folder).run({"", {tool}})));
    EXPECT_TRUE(fs::exists(folder / "left-behind"));
}

TEST_F(ToolRunnerTest, SeesTheEndOfToolsThatTheSystemForgetsAtOnce) {
    const auto before = std::signal(SIGCHLD, SIG_IGN);
    const ToolRun run = this->run("echo fine\n");
    std::signal(SIGCHLD, before);
    EXPECT_EQ(run.end, End::exited);
    EXPECT_EQ(run.output, "fine\n");
}

TEST_F(ToolRunnerTest, CanBeStoppedWhileAToolPrintsWithoutEnd) {
    const std::string tool = script("exec yes\n");
    SystemToolRunner runner(std::nullopt, [] { throw std::runtime_error("enough"); });
    EXPECT_THROW(runner.run({"", {tool}}), std::runtime_error);
}

TEST_F(ToolRunnerTest, EndsTheToolWhereWaitingIsBrokenOff) {
    const std::string tool = script("echo $$ > started; exec sleep 60\n");
    int calls = 0;
    SystemToolRunner runner(folder_.path(), [&] {
        ++calls;
        if (fs::exists(folder_.path() / "started")) throw std::runtime_error("enough");
    });
    EXPECT_THROW(runner.run({"", {tool}}), std::runtime_error);
    EXPECT_GT(calls, 0);
}

}  // namespace
}  // namespace velinor
