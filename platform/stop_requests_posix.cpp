#include <csignal>
#include <initializer_list>

#include "platform/stop_requests.h"

namespace velinor {
namespace {

volatile std::sig_atomic_t isRequested = 0;

void noteRequest(int /*signal*/) {
    isRequested = 1;
}

}  // namespace

void rememberStopRequests() {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        if (std::signal(signal, noteRequest) == SIG_IGN) std::signal(signal, SIG_IGN);
    }
}

bool isStopRequested() {
    return isRequested != 0;
}

}  // namespace velinor
