// The result of a command on standard output.
#pragma once

#include <cstdio>
#include <string_view>

#include "base/text_sink.h"

namespace velinor {

// Writes to standard output. A result that does not arrive whole is an error: write() and finish() throw
// CommandError (kFailed). Without finish() the end of the text may be missing.
class StandardOutput final : public TextSink {
  public:
    void write(std::string_view text) override;
    void finish();
};

}  // namespace velinor
