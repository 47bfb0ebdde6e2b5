#include "cli/interrupts.h"

#include <csignal>

#include "platform/stop_requests.h"

namespace velinor {

void makeWritesFailQuietly() {
#ifdef SIGPIPE
    std::signal(SIGPIPE, SIG_IGN);
#endif
#ifdef SIGXFSZ
    std::signal(SIGXFSZ, SIG_IGN);
#endif
}

void rememberInterrupts() {
    rememberStopRequests();
}

void throwIfInterrupted() {
    if (isStopRequested()) throw Interrupted();
}

}  // namespace velinor
