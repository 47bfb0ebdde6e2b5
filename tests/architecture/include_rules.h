// Who may include whom.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/architecture/source_file.h"

namespace velinor {

// The part of the architecture that a file belongs to: its folder, or for some files a part of their own.
// Empty for a path that belongs to none.
std::string partOf(std::string_view path);

// Every include of `file` that breaks a rule, as "path:line: what is wrong", in the order of the lines.
std::vector<std::string> includeFaults(const SourceFile& file);

// The parts in the order of their layers, lowest first, each with the parts that it may include besides
// itself.
struct PartRule {
    std::string_view part;
    std::vector<std::string_view> uses;
};
const std::vector<PartRule>& partRules();

}  // namespace velinor
