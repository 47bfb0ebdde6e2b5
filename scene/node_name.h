// Node names: "Name [key: value, key: value]".
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/node.h"

namespace velinor {

// A node name taken apart. All texts are bytes as they stood in the name.
struct NodeNameParts {
    std::string name;                      // without the parameter list
    std::vector<std::string> paramKeys;    // in the order written, repeated keys kept
    std::vector<std::string> paramValues;  // one for each key
    std::vector<std::string> ignored;      // pieces of the list that are no "key: value"

    bool operator==(const NodeNameParts&) const = default;
};

// Takes `name` apart. A name that does not follow the grammar is its own cleaned name and has no parameters:
//
//   NAME     = text " [" list "]"
//   list     = piece {", " piece}
//   piece    = key ": " value
//
// Text and list have at least one character and no white space but blanks; a key has no white space, a value
// neither white space nor commas. Pieces of another form are ignored.
//
// The last " [" that leaves a list before the final "]" divides the name. Bytes count as characters: a byte
// above 0x7F is never white space.
NodeNameParts parseNodeName(std::string_view name);

// parseNodeName of the node's own name as UTF-8.
NodeNameParts nodeNameUtf8(host::IGameNode& node);

}  // namespace velinor
