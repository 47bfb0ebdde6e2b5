#include <io.h>

#include <cstdio>

#include "platform/terminal.h"

namespace velinor {

bool isErrorOutputTerminal() {
    return _isatty(_fileno(stderr)) != 0;
}

}  // namespace velinor
