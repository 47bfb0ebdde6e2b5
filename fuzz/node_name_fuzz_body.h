// What must hold for every node name.
#pragma once

#include <cstdlib>
#include <string>
#include <string_view>

#include "scene/name_patterns.h"
#include "scene/node_name.h"

namespace velinor {

// Takes `name` apart and checks what the grammar promises. Ends the process where a promise is broken.
inline void fuzzNodeName(std::string_view name) {
    const auto require = [](bool holds) {
        if (!holds) std::abort();
    };
    const NodeNameParts parts = parseNodeName(name);
    require(parts.paramKeys.size() == parts.paramValues.size());
    require(name.starts_with(parts.name));
    const bool hasList = parts.name.size() != name.size();
    require(hasList || (parts.paramKeys.empty() && parts.ignored.empty()));

    if (hasList) {
        require(!parts.name.empty());
        require(name.substr(parts.name.size()).starts_with(" ["));
        require(name.ends_with(']'));
        // What the list holds is what came out of it, in whatever order good and bad pieces stand.
        std::size_t size = parts.name.size() + 3;
        const std::size_t pieces = parts.paramKeys.size() + parts.ignored.size();
        require(pieces > 0);
        for (const std::string& key : parts.paramKeys)
            size += key.size() + 2;
        for (const std::string& value : parts.paramValues)
            size += value.size();
        for (const std::string& piece : parts.ignored)
            size += piece.size();
        require(size + 2 * (pieces - 1) == name.size());
    }
    for (const std::string& key : parts.paramKeys)
        require(!key.empty() && key.find(' ') == std::string::npos);
    for (const std::string& value : parts.paramValues) {
        require(!value.empty() && value.find_first_of(" ,") == std::string::npos);
    }

    static const NamePatterns patterns;
    if (patterns.webtablePattern.search(parts.name) || patterns.browserNodePattern.search(parts.name)) {
        require(patterns.numericSuffixPattern.find(parts.name).has_value());
        require(!patterns.cameraBoundsPattern.search(parts.name));
    }
}

}  // namespace velinor
