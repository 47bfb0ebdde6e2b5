// What an export tells about itself: files written, things skipped, things that look wrong.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/messages.h"

namespace velinor {

// A file that the export wrote.
struct WrittenFile {
    std::filesystem::path path;
    std::uint64_t bytes = 0;

    bool operator==(const WrittenFile&) const = default;
};

// One message about one subject.
struct ReportEntry {
    MessageId id;
    std::string subject;  // UTF-8: the node's, the material's or the file's name
    std::string detail;   // UTF-8: the values found; empty where the message says it all

    bool operator==(const ReportEntry&) const = default;
};

// Collects entries in the order in which they arise. The exporter writes to it, its owner shows it.
class Report {
  public:
    // Adds one message about `subject`, both UTF-8. Texts beyond 300 bytes are cut and end in "…": names can
    // have a megabyte, and a node with such a name a million children.
    void add(MessageId id, std::string_view subject, std::string_view detail = {});

    // Notes that the file `path` is complete on disk with `bytes` bytes. Noted again, it keeps its place and
    // gets the new size.
    void addWritten(const std::filesystem::path& path, std::uint64_t bytes);

    const std::vector<ReportEntry>& entries() const { return entries_; }
    const std::vector<WrittenFile>& written() const { return written_; }

    // The number of entries of that severity.
    std::size_t count(Severity severity) const;

  private:
    std::vector<ReportEntry> entries_;
    std::vector<WrittenFile> written_;
    std::unordered_map<std::filesystem::path::string_type, std::size_t> placeOfWritten_;
};

}  // namespace velinor
