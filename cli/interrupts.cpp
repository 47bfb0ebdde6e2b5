#include "cli/interrupts.h"

#include <csignal>

namespace velinor {
namespace {

volatile std::sig_atomic_t isInterrupted = 0;

void noteInterrupt(int /*signal*/) {
    isInterrupted = 1;
}

void remember(int signal) {
    if (std::signal(signal, noteInterrupt) == SIG_IGN) std::signal(signal, SIG_IGN);
}

}  // namespace

void makeWritesFailQuietly() {
#ifdef SIGPIPE
    std::signal(SIGPIPE, SIG_IGN);
#endif
#ifdef SIGXFSZ
    std::signal(SIGXFSZ, SIG_IGN);
#endif
}

void rememberInterrupts() {
    remember(SIGINT);
    remember(SIGTERM);
#ifdef SIGHUP
    remember(SIGHUP);
#endif
}

void throwIfInterrupted() {
    if (isInterrupted != 0) throw Interrupted();
}

}  // namespace velinor
