#include "platform/tool_runner.h"

#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>

#include "base/text.h"
#include "platform/copy_file_over.h"
#include "platform/path_text.h"
#include "platform/temporary_folder.h"
#include "tests/support/quoting.h"

#ifdef _WIN32
#include <windows.h>

#include "platform/system_message.h"
#endif

namespace velinor {
namespace {

namespace fs = std::filesystem;
using End = ToolRun::End;

// The sample tool with these arguments.
ToolCommand sampleTool(const std::vector<std::string>& arguments,
                       const fs::path& program = fs::path(TOLVEX_SAMPLE_TOOL)) {
    ToolCommand command;
    command.arguments = arguments;
    command.arguments.insert(command.arguments.begin(), narrowPath(program));
    command.commandLine = quotedCommandLine(command.arguments);
    return command;
}

ToolRun run(const std::vector<std::string>& arguments) {
    return SystemToolRunner().run(sampleTool(arguments));
}

TEST(ToolRunner, GivesExitStatusAndOutput) {
    const ToolRun failed = run({"out", "first", "err", "second", "exit", "3"});
    EXPECT_EQ(failed.end, End::exited);
    EXPECT_EQ(failed.code, 3);
    EXPECT_EQ(failed.output, "first\nsecond\n");
    EXPECT_FALSE(hasSucceeded(failed));
    EXPECT_EQ(describe(failed), "exit status 3: first\nsecond");
    EXPECT_TRUE(hasSucceeded(run({})));
}

TEST(ToolRunner, GivesLargeExitStatusesWhole) {
#ifdef _WIN32
    EXPECT_EQ(run({"exit", "1000"}).code, 1000);
    EXPECT_EQ(run({"exit", "256"}).code, 256);
#endif
    EXPECT_EQ(run({"exit", "255"}).code, 255);
}

TEST(ToolRunner, PassesArgumentsAsTheyAre) {
    std::vector<std::string> words{"arguments", "a b", "\"quoted\"", "$(touch x)", "; rm -rf x", "%PATH%", "",
                                   "'",         "*",   "back\\",     "\\\\\"",     "a\\b c\\",   "^&|<>"};
    std::string expected;
    for (std::size_t i = 1; i < words.size(); ++i)
        expected += "<" + words[i] + ">";
    EXPECT_EQ(run(words).output, expected);
}

TEST(ToolRunner, StartsProgramsWhosePathHasBlanksAndLettersOfTheCodePage) {
    const TemporaryFolder folder;
    const fs::path program = folder.path() / pathOfUtf8("a b \xC3\xA9.exe");
    copyFileOver(TOLVEX_SAMPLE_TOOL, program);
    EXPECT_EQ(SystemToolRunner().run(sampleTool({"out", "fine"}, program)).output, "fine\n");
}

TEST(ToolRunner, TellsWhyAToolIsNotStarted) {
    const TemporaryFolder folder;
    const ToolRun missing = SystemToolRunner().run(sampleTool({}, folder.path() / "missing.exe"));
    EXPECT_EQ(missing.end, End::notStarted);
#ifdef _WIN32
    EXPECT_EQ(describe(missing), "not started: " + systemMessage(ERROR_FILE_NOT_FOUND));
#else
    EXPECT_EQ(describe(missing), "not started: No such file or directory");
#endif
    EXPECT_EQ(SystemToolRunner().run(sampleTool({}, folder.path())).end, End::notStarted);
}

TEST(ToolRunner, WaitsForAToolThatClosesItsOutputEarly) {
    EXPECT_EQ(run({"close", "sleep", "200", "exit", "4"}).code, 4);
}

#ifdef _WIN32
TEST(ToolRunner, StartsProgramsWhosePathLooksLikeACommand) {
    const TemporaryFolder folder;
    const fs::path program = folder.path() / "a b; $(exit 1) & %PATH% ^'.exe";
    copyFileOver(TOLVEX_SAMPLE_TOOL, program);
    EXPECT_EQ(SystemToolRunner().run(sampleTool({"out", "fine"}, program)).output, "fine\n");
}

TEST(ToolRunner, TellsThatAFileIsNoProgram) {
    const TemporaryFolder folder;
    const fs::path plain = folder.path() / "plain.exe";
    std::ofstream(plain) << "text";
    const ToolRun run = SystemToolRunner().run(sampleTool({}, plain));
    EXPECT_EQ(run.end, End::notStarted);
    EXPECT_EQ(describe(run), "not started: " + systemMessage(ERROR_BAD_EXE_FORMAT, utf8Path(plain)));
    EXPECT_NE(run.output.find(utf8Path(plain)), std::string::npos) << run.output;
    EXPECT_EQ(run.output.find('%'), std::string::npos) << run.output;
}

// What is left running has the tool's output still open.
TEST(ToolRunner, DoesNotWaitForWhatAToolLeavesRunning) {
    const TemporaryFolder folder;
    const fs::path go = folder.path() / "go";
    const fs::path done = folder.path() / "done";
    EXPECT_EQ(run({"out", "fine", "leave", "await", utf8Path(go), "touch", utf8Path(done)}).output, "fine\n");
    EXPECT_FALSE(fs::exists(done)) << "it is still there";
    std::ofstream(go).flush();
    run({"await", utf8Path(done)});
    EXPECT_TRUE(fs::exists(done));
}

TEST(ToolRunner, RefusesCommandLinesThatTheSystemWouldNotTake) {
    ToolCommand command = sampleTool({"out", "fine"});
    command.commandLine.resize(32766, ' ');
    EXPECT_EQ(SystemToolRunner().run(command).output, "fine\n");
    command.commandLine += ' ';
    const ToolRun refused = SystemToolRunner().run(command);
    EXPECT_EQ(refused.end, End::notStarted);
    EXPECT_EQ(describe(refused),
              "not started: the command line has 32767 characters, and the system takes less than 32767; "
              "choose a folder with a shorter path");
}
#endif

TEST(ToolRunner, TellsCrashes) {
    const ToolRun crashed = run({"out", "begun", "crash"});
    EXPECT_EQ(crashed.end, End::crashed);
#ifdef _WIN32
    EXPECT_EQ(describe(crashed), "ended by exception 0xC0000005: begun");
#else
    EXPECT_EQ(describe(crashed), "ended by signal 9: begun");
#endif
}

TEST(ToolRunner, KeepsTheBeginningOfMegabytesOfOutput) {
    const ToolRun large = run({"out", "first", "fill", "5000000", "err", "last"});
    EXPECT_EQ(large.end, End::exited);
    EXPECT_EQ(large.code, 0);
    EXPECT_TRUE(large.output.starts_with("first\n"));
    EXPECT_LT(large.output.size(), 10000U);
}

TEST(ToolRunner, GivesToolsNothingToRead) {
    EXPECT_EQ(run({"copy", "out", "end"}).output, "end\n");
}

TEST(ToolRunner, RunsToolsInTheFolderGiven) {
    const TemporaryFolder folder;
    const fs::path inner = folder.path() / pathOfUtf8("inner \xE6\x97\xA5");
    fs::create_directory(inner);
    EXPECT_TRUE(hasSucceeded(SystemToolRunner(inner).run(sampleTool({"touch", "left-behind"}))));
    EXPECT_TRUE(fs::exists(inner / "left-behind"));
}

TEST(ToolRunner, CanBeStoppedWhileAToolPrintsWithoutEnd) {
    SystemToolRunner runner(std::nullopt, [] { throw std::runtime_error("enough"); });
    EXPECT_THROW(runner.run(sampleTool({"endless"})), std::runtime_error);
}

TEST(ToolRunner, EndsTheToolWhereWaitingIsBrokenOff) {
    const TemporaryFolder folder;
    int calls = 0;
    SystemToolRunner runner(folder.path(), [&] {
        ++calls;
        if (fs::exists(folder.path() / "started")) throw std::runtime_error("enough");
    });
    EXPECT_THROW(
        runner.run(sampleTool({"touch", "started", "sleep", "1000", "touch", "ended", "sleep", "60000"})),
        std::runtime_error);
    EXPECT_GT(calls, 0);
    EXPECT_TRUE(hasSucceeded(run({"sleep", "1500"})));
    EXPECT_FALSE(fs::exists(folder.path() / "ended"));
}

}  // namespace
}  // namespace velinor
