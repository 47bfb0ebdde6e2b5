// Spell check: the known name that a misspelt one was probably meant to be.
#pragma once

#include <span>
#include <string_view>

namespace velinor {

// The name of `known` with the smallest edit distance to `name`, the first of equals; empty where none is
// within 2 edits, or within fewer for names of up to 4 characters: half their length. Letters count the same
// in either case.
std::string_view nearestName(std::string_view name, std::span<const std::string_view> known);

}  // namespace velinor
