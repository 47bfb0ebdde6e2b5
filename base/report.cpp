#include "base/report.h"

#include <algorithm>

namespace velinor {

namespace {

// `text`, or as many of its first characters as fit.
std::string shortened(std::string_view text) {
    constexpr std::size_t kLongest = 300;
    if (text.size() <= kLongest) return std::string(text);
    std::size_t end = kLongest;
    const auto isContinuation = [&](std::size_t at) {
        return (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U;
    };
    while (end > 0 && isContinuation(end))
        --end;
    return std::string(text.substr(0, end)) + "…";
}

}  // namespace

void Report::add(MessageId id, std::string_view subject, std::string_view detail) {
    entries_.push_back({id, shortened(subject), shortened(detail)});
}

void Report::addWritten(const std::filesystem::path& path, std::uint64_t bytes) {
    const auto [found, isNew] = placeOfWritten_.try_emplace(path.native(), written_.size());
    if (isNew) {
        written_.push_back({path, bytes});
    } else {
        written_[found->second].bytes = bytes;
    }
}

std::size_t Report::count(Severity severity) const {
    return static_cast<std::size_t>(std::ranges::count_if(
        entries_, [severity](const ReportEntry& entry) { return message(entry.id).severity == severity; }));
}

}  // namespace velinor
