#include <windows.h>

#include <atomic>
#include <csignal>

#include "platform/stop_requests.h"

namespace velinor {
namespace {

std::atomic<bool> isRequested = false;

// Called on a thread of the system's.
BOOL WINAPI noteEvent(DWORD event) {
    isRequested = true;
    // The system ends the process when this returns from one of these events, or some seconds later; the time
    // until then is for tidying up.
    if (event == CTRL_CLOSE_EVENT || event == CTRL_LOGOFF_EVENT || event == CTRL_SHUTDOWN_EVENT)
        Sleep(INFINITE);
    return TRUE;
}

// The C library forgets a handler before it calls it.
void noteSignal(int signal) {
    isRequested = true;
    std::signal(signal, noteSignal);
}

}  // namespace

void rememberStopRequests() {
    SetConsoleCtrlHandler(noteEvent, TRUE);
    if (std::signal(SIGTERM, noteSignal) == SIG_IGN) std::signal(SIGTERM, SIG_IGN);
}

bool isStopRequested() {
    return isRequested;
}

}  // namespace velinor
