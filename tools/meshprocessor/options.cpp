#include "tools/meshprocessor/options.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <vector>

#include "base/text.h"

namespace velinor {
namespace {

// One value of an option, with its place for messages.
struct Value {
    std::string_view option;
    std::string_view name;
    std::string_view text;

    [[noreturn]] void fail(std::string_view expected) const {
        throw UsageError(std::string(option) + ": " + std::string(name) + " is \"" + printable(text) +
                         "\"; give " + std::string(expected));
    }

    std::filesystem::path path() const {
        if (text.empty()) fail("the path of a file");
        return toPath(toUtf16Lossy(text));
    }

    std::size_t whole(std::size_t least) const {
        std::size_t number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc() || end != text.data() + text.size() || number < least)
            fail("a whole number of at least " + std::to_string(least));
        return number;
    }

    double fraction() const {
        double number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc() || end != text.data() + text.size() || !(number >= 0 && number <= 1))
            fail("a number of 0 to 1, a fraction of the mesh's extent");
        return number;
    }
};

struct Option {
    std::string_view name;
    std::vector<std::string_view> values;
    void (*apply)(ProcessorOptions&, const std::vector<Value>&);
};

void choose(ProcessorOptions& options, const ShapeChoice& shape) {
    if (!std::holds_alternative<TakeAsItIs>(options.shape))
        throw UsageError(
            "-meshDecimation, -convexDecomposition and -convexHull exclude each other; give one");
    options.shape = shape;
}

const std::vector<Option>& optionTable() {
    using Values = std::vector<Value>;
    static const std::vector<Option> table{
        {"-import",
         {"FILE"},
         [](ProcessorOptions& options, const Values& values) { options.input = values[0].path(); }},
        {"-meshDecimation",
         {"MINFACES", "MINVERTICES", "TOLERANCE"},
         [](ProcessorOptions& options, const Values& values) {
             choose(options, DecimationLimits{values[0].whole(0), values[1].whole(0), values[2].fraction()});
         }},
        {"-convexDecomposition",
         {"RESOLUTION", "HULLS"},
         [](ProcessorOptions& options, const Values& values) {
             choose(options, DecompositionLimits{values[0].whole(4), values[1].whole(1)});
         }},
        {"-convexHull",
         {},
         [](ProcessorOptions& options, const Values&) { choose(options, TakeConvexHull()); }},
        {"-saveCollisionShapes",
         {"OUT"},
         [](ProcessorOptions& options, const Values& values) { options.output = values[0].path(); }},
        {"--help", {}, [](ProcessorOptions& options, const Values&) { options.isHelpWanted = true; }},
    };
    return table;
}

const Option* optionNamed(std::string_view name) {
    const auto found = std::ranges::find(optionTable(), name, &Option::name);
    return found == optionTable().end() ? nullptr : &*found;
}

// The values that follow `option`; takes them off `rest`.
std::vector<Value> takeValues(const Option& option, std::span<const std::string>& rest) {
    std::vector<Value> values;
    for (const std::string_view name : option.values) {
        if (rest.empty() || optionNamed(rest.front()) != nullptr)
            throw UsageError(std::string(option.name) + ": " + std::string(name) + " is missing");
        values.push_back({option.name, name, rest.front()});
        rest = rest.subspan(1);
    }
    return values;
}

void requireAll(const ProcessorOptions& options) {
    if (options.input.empty()) throw UsageError("-import FILE is missing");
    if (options.output.empty()) throw UsageError("-saveCollisionShapes OUT is missing");
}

}  // namespace

ProcessorOptions parseOptions(std::span<const std::string> arguments) {
    ProcessorOptions options;
    std::vector<const Option*> given;
    for (std::span<const std::string> rest = arguments; !rest.empty();) {
        const Option* option = optionNamed(rest.front());
        if (option == nullptr) throw UsageError("unknown argument \"" + printable(rest.front()) + "\"");
        if (std::ranges::find(given, option) != given.end())
            throw UsageError(std::string(option->name) + " is given twice");
        given.push_back(option);
        rest = rest.subspan(1);
        option->apply(options, takeValues(*option, rest));
    }
    if (!options.isHelpWanted) requireAll(options);
    return options;
}

std::string_view usage() {
    return "usage: meshprocessor -import FILE [SHAPE] -saveCollisionShapes OUT\n"
           "FILE is an Ogre XML mesh, OUT the OBJ file to write. SHAPE is one of\n"
           "  -meshDecimation MINFACES MINVERTICES TOLERANCE\n"
           "      as few faces as a deviation of TOLERANCE times the mesh's extent allows,\n"
           "      not fewer than MINFACES faces and MINVERTICES vertices\n"
           "  -convexDecomposition RESOLUTION HULLS\n"
           "      at most HULLS convex parts, found on at most RESOLUTION faces\n"
           "  -convexHull\n"
           "      one convex body around all\n"
           "Without one the mesh is taken as it is. The extent is the longest side of the bounding box.\n"
           "Exit status: 0 written, 1 the mesh cannot be read, used or written, 2 wrong arguments.\n";
}

}  // namespace velinor
