// Text files of a package: written front to back in pieces, with the line ends of the platform.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "base/text_sink.h"

namespace velinor {

// A text file open for writing. Lines end as the platform ends them: a line feed stays one, except on
// Windows, where it becomes CR LF. Errors never throw: they are kept, and close() tells.
class TextFile final : public TextSink {
  public:
    enum class Mode { truncate, append };  // what becomes of an existing file

    explicit TextFile(const std::filesystem::path& path, Mode mode = Mode::truncate);

    void write(std::string_view text) override;

    // Writes out what is buffered and closes the file. True where everything since the opening is in the
    // file.
    bool close();

    // What went wrong first, in the system's words ("No space left on device"); empty where nothing did.
    const std::string& error() const { return error_; }

    // The number of bytes written so far, with the line ends as they are in the file.
    std::uint64_t bytesWritten() const { return bytes_; }

  private:
    void noteFailure();

    std::ofstream stream_;
    std::uint64_t bytes_ = 0;
    std::string error_;
};

}  // namespace velinor
