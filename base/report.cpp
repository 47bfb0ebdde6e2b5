#include "base/report.h"

#include <algorithm>

namespace velinor {

void Report::add(MessageId id, std::string_view subject, std::string_view detail) {
    entries_.push_back({id, std::string(subject), std::string(detail)});
}

void Report::addWritten(const std::filesystem::path& path, std::uint64_t bytes) {
    written_.push_back({path, bytes});
}

std::size_t Report::count(Severity severity) const {
    return static_cast<std::size_t>(std::ranges::count_if(
        entries_, [severity](const ReportEntry& entry) { return message(entry.id).severity == severity; }));
}

}  // namespace velinor
