// Signals that ask an export to stop, and signals that must not end the process.
#pragma once

#include <exception>

namespace velinor {

// The user or the system asked the program to stop.
class Interrupted final : public std::exception {
  public:
    const char* what() const noexcept override { return "interrupted"; }
};

// From here on a write that the system refuses (a closed pipe, a file-size limit) fails like any other
// instead of ending the process.
void makeWritesFailQuietly();

// From here on a request to stop (platform/stop_requests.h) is remembered for throwIfInterrupted. Before this
// call it ends the process at once, which is right as long as nothing has been written. What the parent
// process has switched off stays off.
void rememberInterrupts();

// Throws Interrupted where a request to stop has come. Cheap.
void throwIfInterrupted();

}  // namespace velinor
