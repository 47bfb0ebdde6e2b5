#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <cstdio>
#include <memory>
#include <new>
#include <string_view>

#include "base/text.h"
#include "platform/program_start.h"

namespace velinor {
namespace {

struct FreeLocal {
    void operator()(void* memory) const { LocalFree(memory); }
};

}  // namespace

std::vector<std::string> programArguments(int /*argc*/, char** /*argv*/) {
    int count = 0;
    const std::unique_ptr<LPWSTR[], FreeLocal> texts(CommandLineToArgvW(GetCommandLineW(), &count));
    if (!texts) throw std::bad_alloc();
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) {
        const std::wstring_view text(texts[static_cast<std::size_t>(i)]);
        arguments.push_back(toUtf8(std::u16string(text.begin(), text.end())));
    }
    return arguments;
}

StandardStreams::StandardStreams() {
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    for (std::FILE* stream : {stdin, stdout, stderr})
        _setmode(_fileno(stream), _O_BINARY);
    const UINT codePageBefore = GetConsoleOutputCP();
    if (codePageBefore != 0) SetConsoleOutputCP(CP_UTF8);
    restore_ = [codePageBefore] {
        std::fflush(stdout);
        if (codePageBefore != 0) SetConsoleOutputCP(codePageBefore);
    };
}

}  // namespace velinor
