// Things of one kind, by their first names and their number.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace velinor {

// Counts things that a note is about, so that a thousand of them make one line.
class NamedCount {
  public:
    // `name` is UTF-8, as in the file.
    void add(std::string_view name);

    std::size_t count() const { return count_; }

    // `1 mesh ("A")`, `5 meshes ("A", "B", "C", ...)`, in one line.
    std::string text(std::string_view singular, std::string_view plural) const;

  private:
    std::size_t count_ = 0;
    std::vector<std::string> first_;
};

}  // namespace velinor
