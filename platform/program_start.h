// What a program does first, so that its main function is the same on every system.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace velinor {

// The program's arguments without its name: as they are off Windows, in UTF-8 there (an unpaired surrogate
// becomes U+FFFD), whatever the code page. `argc` and `argv` are main's.
std::vector<std::string> programArguments(int argc, char** argv);

// While it lives, the standard streams carry bytes as they are, a console shows UTF-8, and a crash of this
// program or of one that it starts ends it without a window. Off Windows all that is so anyway.
class StandardStreams {
  public:
    StandardStreams();
    StandardStreams(const StandardStreams&) = delete;
    StandardStreams& operator=(const StandardStreams&) = delete;
    ~StandardStreams() { restore_(); }

  private:
    std::function<void()> restore_;  // gives the console back as it was
};

}  // namespace velinor
