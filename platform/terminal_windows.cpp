#include <windows.h>

#include "platform/terminal.h"

namespace velinor {

bool isErrorOutputTerminal() {
    // Only a console has a mode; the C library takes the null device for a terminal, too.
    HANDLE error = GetStdHandle(STD_ERROR_HANDLE);
    DWORD mode = 0;
    if (GetConsoleMode(error, &mode) == 0) return false;
    // What is drawn there clears its line with an escape sequence.
    return SetConsoleMode(error, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

}  // namespace velinor
