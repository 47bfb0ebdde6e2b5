#include <unistd.h>

#include "platform/terminal.h"

namespace velinor {

bool isErrorOutputTerminal() {
    return ::isatty(STDERR_FILENO) != 0;
}

}  // namespace velinor
