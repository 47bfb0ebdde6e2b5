#include <windows.h>

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <system_error>

#include "base/text.h"
#include "platform/child_process_windows.h"
#include "platform/temporary_folder.h"
#include "tests/support/quoting.h"
#include "tests/support/run_command.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

// A new file for one of the child's streams; `access` is GENERIC_READ for an existing one.
Handle openStream(const fs::path& path, DWORD access) {
    Handle file(CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                            access == GENERIC_READ ? OPEN_EXISTING : CREATE_ALWAYS, 0, nullptr));
    if (!file.isOpen()) throwLastError("CreateFileW");
    return file;
}

std::string contentOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return std::move(text).str();
}

// A process that the program started may end a moment after it, and keeps the streams open until then.
void removeWhenClosed(const fs::path& folder) {
    constexpr int kTries = 100;
    std::error_code error;
    for (int i = 0; i < kTries; ++i) {
        fs::remove_all(folder, error);
        if (!error) return;
        Sleep(50);
    }
    throw fs::filesystem_error("remove", folder, error);
}

}  // namespace

CommandResult runProgram(const fs::path& program, const std::vector<std::string>& arguments,
                         const CommandInput& input) {
    if (input.largestFile) throw std::logic_error("no limit of file sizes here");
    const TemporaryFolder streams;
    const fs::path out = input.outFile.value_or(streams.path() / "out");
    const fs::path err = streams.path() / "err";
    std::ofstream(streams.path() / "in", std::ios::binary) << input.standardInput;
    std::vector<std::string> texts = arguments;
    texts.insert(texts.begin(), utf8Path(program));

    CommandResult result;
    {
        const Handle inStream = openStream(streams.path() / "in", GENERIC_READ);
        const Handle outStream = openStream(out, GENERIC_WRITE);
        const Handle errStream = openStream(err, GENERIC_WRITE);
        const Child child = startChild(pathOfUtf8(quotedCommandLine(texts)).native(),
                                       input.folder.empty() ? nullptr : input.folder.c_str(),
                                       {inStream.get(), outStream.get(), errStream.get()});
        waitForEnd(child.process, INFINITE);
        result.status = static_cast<int>(exitCodeOf(child.process));
    }
    if (!input.outFile) result.out = contentOf(out);
    result.err = contentOf(err);
    removeWhenClosed(streams.path());
    return result;
}

}  // namespace velinor
