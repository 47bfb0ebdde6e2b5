// What only systems with shell scripts and signals have; the rest is in tool_runner_test.cpp.
#include "platform/tool_runner.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fstream>

#include "platform/temporary_folder.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;
using End = ToolRun::End;

class PosixToolRunnerTest : public testing::Test {
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

TEST_F(PosixToolRunnerTest, StartsProgramsWhosePathLooksLikeACommand) {
    const std::string path = script("echo fine\n", "a b; $(exit 1) \"q\"");
    EXPECT_EQ(SystemToolRunner().run({"", {path}}).output, "fine\n");
}

TEST_F(PosixToolRunnerTest, TellsThatAFileIsNoProgram) {
    std::ofstream(folder_.path() / "plain") << "text";
    const ToolRun notExecutable = SystemToolRunner().run({"", {folder_.path() / "plain"}});
    EXPECT_EQ(notExecutable.end, End::notStarted);
    EXPECT_EQ(describe(notExecutable), "not started: Permission denied");
}

TEST_F(PosixToolRunnerTest, TellsSignals) {
    const ToolRun run = this->run("kill -SEGV $$\n");
    EXPECT_EQ(run.end, End::crashed);
    EXPECT_EQ(describe(run), "ended by signal 11");
}

TEST_F(PosixToolRunnerTest, DoesNotWaitForWhatAToolLeavesRunning) {
    const pid_t left = std::stoi(run("sleep 600 & echo $!\n").output);
    EXPECT_EQ(::kill(left, SIGKILL), 0) << "it is still there";
}

TEST_F(PosixToolRunnerTest, WaitsForAToolThatClosesItsOutputEarly) {
    EXPECT_EQ(run("exec >/dev/null 2>&1; sleep 0.2; exit 4\n").code, 4);
}

TEST_F(PosixToolRunnerTest, SeesTheEndOfToolsThatTheSystemForgetsAtOnce) {
    const auto before = std::signal(SIGCHLD, SIG_IGN);
    const ToolRun run = this->run("echo fine\n");
    std::signal(SIGCHLD, before);
    EXPECT_EQ(run.end, End::exited);
    EXPECT_EQ(run.output, "fine\n");
}

}  // namespace
}  // namespace velinor
