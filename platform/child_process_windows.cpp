#include "platform/child_process_windows.h"

#include <algorithm>
#include <array>
#include <system_error>
#include <vector>

namespace velinor {
namespace {

// A copy that children may inherit, for one call: a handle that always may would reach children that other
// threads start meanwhile.
Handle inheritable(HANDLE handle) {
    HANDLE copy = nullptr;
    HANDLE self = GetCurrentProcess();
    if (DuplicateHandle(self, handle, self, &copy, 0, TRUE, DUPLICATE_SAME_ACCESS) == 0)
        throwLastError("DuplicateHandle");
    return Handle(copy);
}

// Names the handles that one child inherits. They must live as long.
class InheritedHandles {
  public:
    explicit InheritedHandles(std::vector<HANDLE> handles) : handles_(std::move(handles)) {
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        memory_.resize(size);
        if (InitializeProcThreadAttributeList(list(), 1, 0, &size) == 0)
            throwLastError("InitializeProcThreadAttributeList");
        if (UpdateProcThreadAttribute(list(), 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, handles_.data(),
                                      handles_.size() * sizeof(HANDLE), nullptr, nullptr) == 0)
            throwLastError("UpdateProcThreadAttribute");
    }
    InheritedHandles(const InheritedHandles&) = delete;
    InheritedHandles& operator=(const InheritedHandles&) = delete;
    ~InheritedHandles() { DeleteProcThreadAttributeList(list()); }

    LPPROC_THREAD_ATTRIBUTE_LIST list() {
        return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(memory_.data());
    }

  private:
    std::vector<HANDLE> handles_;
    std::vector<char> memory_;
};

}  // namespace

void throwLastError(const char* operation) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), operation);
}

PipeEnds makePipe() {
    constexpr DWORD kBuffer = DWORD{1} << 16U;
    HANDLE read = nullptr;
    HANDLE write = nullptr;
    if (CreatePipe(&read, &write, nullptr, kBuffer) == 0) throwLastError("CreatePipe");
    return {Handle(read), Handle(write)};
}

Handle openNothing() {
    Handle nothing(CreateFileW(L"NUL", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                               nullptr, OPEN_EXISTING, 0, nullptr));
    if (!nothing.isOpen()) throwLastError("CreateFileW");
    return nothing;
}

Child startChild(std::wstring commandLine, const wchar_t* folder, const ChildStreams& streams, DWORD flags) {
    const Handle input = inheritable(streams.input);
    const Handle output = inheritable(streams.output);
    const Handle error = inheritable(streams.error);
    InheritedHandles inherited({input.get(), output.get(), error.get()});

    STARTUPINFOEXW startup{};
    startup.StartupInfo.cb = sizeof startup;
    startup.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    startup.StartupInfo.hStdInput = input.get();
    startup.StartupInfo.hStdOutput = output.get();
    startup.StartupInfo.hStdError = error.get();
    startup.lpAttributeList = inherited.list();
    // On a busy machine Wine loses a new process now and then before it has run, and calls that an internal
    // error; nothing is left of it.
    constexpr int kAttempts = 4;
    constexpr DWORD kPause = 50;  // milliseconds
    PROCESS_INFORMATION started{};
    for (int attempt = 1; CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE,
                                         CREATE_NO_WINDOW | EXTENDED_STARTUPINFO_PRESENT | flags, nullptr,
                                         folder, &startup.StartupInfo, &started) == 0;
         ++attempt) {
        if (GetLastError() != ERROR_INTERNAL_ERROR || attempt == kAttempts) throwLastError("CreateProcessW");
        Sleep(kPause);
    }
    return {Handle(started.hProcess), Handle(started.hThread)};
}

bool waitForEnd(const Handle& process, DWORD milliseconds) {
    return WaitForSingleObject(process.get(), milliseconds) == WAIT_OBJECT_0;
}

DWORD exitCodeOf(const Handle& process) {
    DWORD code = 0;
    GetExitCodeProcess(process.get(), &code);
    return code;
}

bool isException(DWORD exitCode) {
    constexpr DWORD kKind = 0xF0000000U;
    constexpr DWORD kSevere = 0xC0000000U;
    return (exitCode & kKind) == kSevere;
}

bool readAvailable(HANDLE pipe, std::string& text) {
    std::array<char, std::size_t{1} << 16U> buffer{};
    DWORD available = 0;
    if (PeekNamedPipe(pipe, nullptr, 0, nullptr, &available, nullptr) == 0) return false;
    if (available == 0) return true;
    DWORD got = 0;
    const DWORD wanted = std::min(available, static_cast<DWORD>(buffer.size()));
    if (ReadFile(pipe, buffer.data(), wanted, &got, nullptr) == 0) return false;
    text.append(buffer.data(), got);
    return true;
}

}  // namespace velinor
