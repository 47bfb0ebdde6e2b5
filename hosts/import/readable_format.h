// What a reader says of a file format, for the user who chooses one.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velinor {

struct ReadableFormat {
    std::string name;                  // "Autodesk FBX"
    std::vector<std::string> endings;  // in small letters, without the dot
    std::vector<std::string> refused;  // files of these endings that are not read
    // What a package of such a file lacks although a scene can hold it: the format cannot express it, or the
    // reader cannot tell it.
    std::vector<std::string> lost;

    bool operator==(const ReadableFormat&) const = default;
};

// What files of many formats hold and no package can express.
std::span<const std::string_view> neverExported();

}  // namespace velinor
