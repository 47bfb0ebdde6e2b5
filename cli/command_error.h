// How a command of tolvex ends.
#pragma once

#include <stdexcept>
#include <string>

namespace velinor {

// The exit statuses of the program.
enum ExitStatus : int {
    kDone = 0,
    kFaultsFound = 1,  // a package with faults, or skipped things where they are not accepted
    kNotRun = 2,       // wrong arguments, or a scene that cannot be read: nothing was written
    kFailed = 3,       // a file-system error or a host error
};

// What ends a command early. what() is one line for the user: the file or the argument, what is wrong with
// it, what to do. The program's name comes before it when it is shown.
class CommandError : public std::runtime_error {
  public:
    CommandError(ExitStatus status, const std::string& text) : std::runtime_error(text), status_(status) {}

    ExitStatus status() const { return status_; }

  private:
    ExitStatus status_;
};

}  // namespace velinor
