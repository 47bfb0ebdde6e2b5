// What the user typed, as values.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "cli/reading_options.h"
#include "plugin/export_settings.h"

namespace velinor {

struct ExportArguments {
    ExportSettings settings;  // the defaults, changed by the options; no rule applied yet
    bool suppressPrompts = false;
    bool overwrite = false;
    bool strict = false;
    bool quiet = false;
    bool json = false;
    std::filesystem::path scene;   // "-": standard input
    std::filesystem::path target;  // as given, with a file name
    ReadingOptions reading;

    bool operator==(const ExportArguments&) const = default;
};

struct InspectArguments {
    std::filesystem::path scene;
    bool json = false;
    ReadingOptions reading;

    bool operator==(const InspectArguments&) const = default;
};

struct SnapshotArguments {
    std::filesystem::path scene;
    std::filesystem::path out;
    ReadingOptions reading;

    bool operator==(const SnapshotArguments&) const = default;
};

struct CheckArguments {
    std::filesystem::path package;

    bool operator==(const CheckArguments&) const = default;
};

struct FormatsArguments {
    bool json = false;

    bool operator==(const FormatsArguments&) const = default;
};

// --help and --version: text for standard output.
struct ShowText {
    std::string text;

    bool operator==(const ShowText&) const = default;
};

using CommandLine = std::variant<ShowText, ExportArguments, InspectArguments, SnapshotArguments,
                                 CheckArguments, FormatsArguments>;

// The command line of `arguments`, the program's name not among them. Looks at no disk and runs nothing.
// Throws CommandError (kNotRun) where an argument is unknown, missing or malformed; a misspelt one gets the
// nearest known.
CommandLine parseCommandLine(std::span<const std::string> arguments);

}  // namespace velinor
