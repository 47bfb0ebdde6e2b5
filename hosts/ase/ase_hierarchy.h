// Who is whose parent in an ASE file, which tells it by names alone.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace velinor {

// Takes the nodes in the order of the file. A node's parent is the last node of that name before it; where
// there is none, the first one after it. The texts must outlive it.
class AseHierarchy {
  public:
    void add(std::string_view name, std::optional<std::string_view> parent);

    // The parent of each node. A parent that is nowhere in the file, or that would make the node its own
    // ancestor, is absent; `lost` then gets the node's number.
    std::vector<std::optional<std::uint32_t>> parents(std::vector<std::uint32_t>& lost) const;

  private:
    struct Waiting {
        std::uint32_t node = 0;
        std::string_view parent;
    };

    std::vector<std::optional<std::uint32_t>> parents_;
    std::unordered_map<std::string_view, std::uint32_t> last_;
    std::unordered_map<std::string_view, std::uint32_t> first_;
    std::vector<Waiting> waiting_;
};

}  // namespace velinor
