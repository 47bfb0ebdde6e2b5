#include "platform/text_file.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace velinor {

TextFile::TextFile(const std::filesystem::path& path, Mode mode) {
    errno = 0;
    stream_.open(path, std::ios::out | (mode == Mode::append ? std::ios::app : std::ios::trunc));
    noteFailure();
}

void TextFile::write(std::string_view text) {
    errno = 0;
    stream_.write(text.data(), static_cast<std::streamsize>(text.size()));
    bytes_ += text.size();
#ifdef _WIN32
    bytes_ += static_cast<std::uint64_t>(std::ranges::count(text, '\n'));  // each gets a carriage return
#endif
    noteFailure();
}

bool TextFile::close() {
    errno = 0;
    if (stream_.is_open()) stream_.close();
    noteFailure();
    return error_.empty();
}

void TextFile::noteFailure() {
    if (stream_.good() || !error_.empty()) return;
    // Streams do not say why they failed; the C library underneath leaves its reason here.
    error_ = errno != 0 ? std::generic_category().message(errno) : std::string("the file cannot be written");
}

}  // namespace velinor
