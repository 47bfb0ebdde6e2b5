#include "hosts/ase/ase_hierarchy.h"

namespace velinor {

void AseHierarchy::add(std::string_view name, std::optional<std::string_view> parent) {
    const auto node = static_cast<std::uint32_t>(parents_.size());
    parents_.emplace_back();
    if (parent) {
        if (const auto found = last_.find(*parent); found != last_.end()) {
            parents_.back() = found->second;
        } else {
            waiting_.push_back({node, *parent});
        }
    }
    last_[name] = node;
    first_.try_emplace(name, node);
}

// Only a parent that comes later can close a circle. Such links are made in order; one that would close a
// circle is not made. Roots are found by following the links up, with the paths shortened on the way, so that
// long chains are not walked again and again.
std::vector<std::optional<std::uint32_t>> AseHierarchy::parents(std::vector<std::uint32_t>& lost) const {
    std::vector<std::optional<std::uint32_t>> parents = parents_;
    if (waiting_.empty()) return parents;
    std::vector<std::uint32_t> upward(parents.size());
    for (std::uint32_t node = 0; node < upward.size(); ++node)
        upward[node] = parents[node].value_or(node);
    const auto rootOf = [&upward](std::uint32_t node) {
        while (upward[node] != node) {
            upward[node] = upward[upward[node]];
            node = upward[node];
        }
        return node;
    };
    for (const Waiting& waiting : waiting_) {
        const auto found = first_.find(waiting.parent);
        if (found == first_.end() || rootOf(found->second) == waiting.node) {
            lost.push_back(waiting.node);
            continue;
        }
        parents[waiting.node] = found->second;
        upward[waiting.node] = found->second;
    }
    return parents;
}

}  // namespace velinor
