// What the user typed, as values.
#pragma once

#include <filesystem>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>

#include "tools/meshprocessor/convex_parts.h"
#include "tools/meshprocessor/decimate.h"

namespace velinor {

struct TakeAsItIs {
    bool operator==(const TakeAsItIs&) const = default;
};
struct TakeConvexHull {
    bool operator==(const TakeConvexHull&) const = default;
};
using ShapeChoice = std::variant<TakeAsItIs, DecimationLimits, DecompositionLimits, TakeConvexHull>;

struct ProcessorOptions {
    std::filesystem::path input;   // -import
    std::filesystem::path output;  // -saveCollisionShapes
    ShapeChoice shape;
    bool isHelpWanted = false;

    bool operator==(const ProcessorOptions&) const = default;
};

// A command line that says nothing the program can do. The text says which argument is wrong.
class UsageError final : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// The options that `arguments`, without the program's name, stand for. Throws UsageError.
ProcessorOptions parseOptions(std::span<const std::string> arguments);

// How the command line looks, in some lines.
std::string_view usage();

}  // namespace velinor
