#include "hosts/import/named_count.h"

#include "base/text.h"

namespace velinor {
namespace {

constexpr std::size_t kNamesShown = 3;

}  // namespace

void NamedCount::add(std::string_view name) {
    ++count_;
    if (first_.size() < kNamesShown) first_.push_back(printable(name));
}

std::string NamedCount::text(std::string_view singular, std::string_view plural) const {
    std::string text = std::to_string(count_) + " ";
    text += count_ == 1 ? singular : plural;
    text += " (";
    for (const std::string& name : first_)
        text += (&name == &first_.front() ? "\"" : ", \"") + name + "\"";
    if (count_ > first_.size()) text += ", ...";
    return text + ")";
}

}  // namespace velinor
