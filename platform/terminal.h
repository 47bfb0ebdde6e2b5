// Whether somebody watches.
#pragma once

namespace velinor {

// Whether standard error is a terminal.
bool isErrorOutputTerminal();

}  // namespace velinor
