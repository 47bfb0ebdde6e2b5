// What a scene file holds that a snapshot cannot, or that the reader had to leave out.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velinor {

// One remark: about whom (a node, a mesh, a material or the file; UTF-8, as named in the file) and what
// (UTF-8).
struct ImportNote {
    std::string subject;
    std::string text;
    bool isLoss = true;  // false for a hint: the scene is none the worse

    bool operator==(const ImportNote&) const = default;
};

// Said of a file whose format states its up axis.
inline constexpr std::string_view kUpAxisIsStated =
    "the up axis that was asked for has no effect: the format states its own";

// Said of a file with animations, whose format has a state of rest.
inline constexpr std::string_view kAnimationsAreLeftOut =
    "animations are left out: the scene stands as at rest";

// Collects remarks in the order in which they arise. A reader writes to it, its caller shows it.
class ImportNotes {
  public:
    void add(ImportNote note) { notes_.push_back(std::move(note)); }
    void add(std::string_view subject, std::string_view text) {
        add({std::string(subject), std::string(text)});
    }
    void addHint(std::string_view subject, std::string_view text) {
        add({std::string(subject), std::string(text), false});
    }

    bool hasLosses() const { return std::ranges::any_of(notes_, &ImportNote::isLoss); }

    const std::vector<ImportNote>& notes() const { return notes_; }

  private:
    std::vector<ImportNote> notes_;
};

}  // namespace velinor
