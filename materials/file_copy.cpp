#include "materials/file_copy.h"

#include <cerrno>
#include <fstream>
#include <string_view>
#include <system_error>
#include <vector>

#include "platform/error_text.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kPiece = std::size_t{1} << 18U;

// The file that a copy grows in, beside its target. It bears a short name of its own, since a target's name
// may be as long as names can be.
constexpr const char* kUnfinishedName = ".tolvex-copy";

FileCopy unreadable(std::string_view reason) {
    return {FileCopy::Outcome::unreadable, std::string(reason), 0};
}

// The reason that the C library underneath a failed stream left.
std::error_code reasonOfStream() {
    return {errno != 0 ? errno : EIO, std::generic_category()};
}

// Removed when the scope ends, unless it has become the target.
class UnfinishedFile {
  public:
    UnfinishedFile(const fs::path& source, const fs::path& target)
        : source_(source), target_(target), path_(target.parent_path() / kUnfinishedName) {
        errno = 0;
        stream_.open(path_, std::ios::binary | std::ios::trunc);
        if (!stream_) fail(reasonOfStream());
    }
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;
    ~UnfinishedFile() {
        if (isFinished_) return;
        stream_.close();
        std::error_code ignored;
        fs::remove(path_, ignored);
    }

    void write(std::string_view bytes) {
        errno = 0;
        if (!stream_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()))) fail(reasonOfStream());
    }

    void finish() {
        errno = 0;
        stream_.close();
        if (!stream_) fail(reasonOfStream());
        std::error_code error;
        fs::rename(path_, target_, error);
        if (error) fail(error);
        isFinished_ = true;
    }

  private:
    [[noreturn]] void fail(const std::error_code& error) const {
        throw fs::filesystem_error("copy", source_, target_, error);
    }

    const fs::path& source_;
    const fs::path& target_;
    fs::path path_;
    std::ofstream stream_;
    bool isFinished_ = false;
};

// Reads a file piece by piece.
class PieceReader {
  public:
    explicit PieceReader(const fs::path& path) : buffer_(kPiece) {
        errno = 0;
        stream_.open(path, std::ios::binary);
        noteError();
    }

    // The next piece; empty at the end, and where nothing more can be read.
    std::string_view next() {
        if (error_ || !stream_) return {};
        errno = 0;
        stream_.read(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
        const auto size = static_cast<std::size_t>(stream_.gcount());
        if (!stream_.eof()) noteError();
        return {buffer_.data(), size};
    }

    const std::error_code& error() const { return error_; }

  private:
    void noteError() {
        if (!stream_) error_ = reasonOfStream();
    }

    std::vector<char> buffer_;
    std::ifstream stream_;
    std::error_code error_;
};

// A system call would take the text up to the zero for the name.
bool isName(const fs::path& path) {
    return !path.empty() && path.native().find(fs::path::value_type{}) == fs::path::string_type::npos;
}

}  // namespace

FileCopy checkSource(const fs::path& source) {
    FileCopy missing{FileCopy::Outcome::missing, {}, 0};
    if (!isName(source)) return missing;
    std::error_code error;
    const fs::file_status status = fs::status(source, error);
    if (status.type() == fs::file_type::not_found || error == std::errc::filename_too_long) return missing;
    if (status.type() == fs::file_type::none || status.type() == fs::file_type::unknown)
        return unreadable(errorText(error));
    if (status.type() == fs::file_type::directory) return unreadable("it is a folder");
    if (status.type() != fs::file_type::regular) return unreadable("it is no regular file");
    return {};
}

FileCopy copyWholeFile(const fs::path& source, const fs::path& target, Progress& progress) {
    FileCopy copy = checkSource(source);
    if (!copy.isPlaced()) return copy;
    PieceReader reader(source);
    if (reader.error()) return unreadable(errorText(reader.error()));
    std::error_code error;
    if (fs::equivalent(source, target, error)) return {FileCopy::Outcome::alreadyThere, {}, 0};
    UnfinishedFile file(source, target);
    for (std::string_view piece = reader.next(); !piece.empty(); piece = reader.next()) {
        file.write(piece);
        copy.bytes += piece.size();
        progress.advance(0);
    }
    if (reader.error()) return unreadable(errorText(reader.error()));
    file.finish();
    return copy;
}

bool targetExists(const fs::path& target) {
    std::error_code error;
    const bool exists = fs::exists(target, error);
    if (error) throw fs::filesystem_error("exists", target, error);
    return exists;
}

bool haveSameContent(const fs::path& a, const fs::path& b, Progress& progress) {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(a, error);
    if (error || fs::file_size(b, error) != size || error) return false;
    PieceReader readerA(a);
    PieceReader readerB(b);
    while (true) {
        const std::string_view piece = readerA.next();
        if (piece != readerB.next() || readerA.error() || readerB.error()) return false;
        if (piece.empty()) return true;
        progress.advance(0);
    }
}

}  // namespace velinor
