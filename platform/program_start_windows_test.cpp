#include "platform/program_start.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/child_process_windows.h"

namespace velinor {
namespace {

// What the sample tool prints when it is started by this text.
std::string outputOf(const std::wstring& commandLine) {
    PipeEnds pipe = makePipe();
    const Handle nothing = openNothing();
    const Child child = startChild(commandLine, nullptr, {nothing.get(), pipe.write.get(), nothing.get()});
    pipe.write.reset();
    std::string text;
    while (readAvailable(pipe.read.get(), text))
        waitForEnd(child.process, 10);
    return text;
}

TEST(ProgramArguments, AreUtf8WhateverTheCodePage) {
    const std::wstring tool = L"\"" + std::filesystem::path(TOLVEX_SAMPLE_TOOL).native() + L"\" arguments ";
    EXPECT_EQ(outputOf(tool + L"\u65e5\u0416\u00e9"), "<\u65e5\u0416\u00e9>");
    EXPECT_EQ(outputOf(tool + L"a\xD83D\xDE00z"), "<a\xF0\x9F\x98\x80z>") << "a pair";
    EXPECT_EQ(outputOf(tool + L"a\xD800z"), "<a\xEF\xBF\xBDz>") << "an unpaired surrogate";
}

}  // namespace
}  // namespace velinor
