// Handles, pipes and child processes of Windows, for what starts programs there.
#pragma once

#include <windows.h>

#include <string>
#include <utility>

namespace velinor {

// A handle of the system, closed with its owner.
class Handle {
  public:
    Handle() = default;
    explicit Handle(HANDLE handle) : handle_(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
    Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Handle& operator=(Handle&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() { reset(); }

    HANDLE get() const { return handle_; }
    bool isOpen() const { return handle_ != nullptr; }
    void reset() {
        if (handle_ != nullptr) CloseHandle(handle_);
        handle_ = nullptr;
    }

  private:
    HANDLE handle_ = nullptr;
};

// Throws std::system_error with the last error of the calling thread.
[[noreturn]] void throwLastError(const char* operation);

struct PipeEnds {
    Handle read;
    Handle write;
};

// No child inherits an end of it unless it is handed over. Throws std::system_error.
PipeEnds makePipe();

// What is written there is gone, and reading finds the end at once. Throws std::system_error.
Handle openNothing();

// A child's streams, none of them null.
struct ChildStreams {
    HANDLE input;
    HANDLE output;
    HANDLE error;
};

// A process that has been started.
struct Child {
    Handle process;
    Handle thread;  // its first
};

// Starts a program from the text of a command line, without a window. The child inherits the three streams
// and no other handle, the environment, and the current folder where `folder` is null. `flags` are further
// creation flags. Throws std::system_error where it cannot be started.
Child startChild(std::wstring commandLine, const wchar_t* folder, const ChildStreams& streams,
                 DWORD flags = 0);

// Waits for the process at most that long; whether it has ended.
bool waitForEnd(const Handle& process, DWORD milliseconds);

// The exit code of a process that has ended.
DWORD exitCodeOf(const Handle& process);

// Whether the code is that of an exception of the system, which it gives to a process that one ends: the two
// highest bits say that it is severe, the next two that it is the system's own. Programs that end with -1
// have all bits set.
bool isException(DWORD exitCode);

// Adds what can be read from `pipe` without waiting to `text`, up to some 64 KB. False at the end of the
// pipe.
bool readAvailable(HANDLE pipe, std::string& text);

}  // namespace velinor
