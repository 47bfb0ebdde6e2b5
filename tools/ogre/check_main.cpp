// ogre_check: loads a package as the runtime would and says what is wrong with it. docs/ogre.md tells more.
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "tools/ogre/check_output.h"
#include "tools/ogre/package_check.h"
#include "tools/ogre/package_files.h"
#include "tools/ogre/program_folder.h"

namespace velinor {
namespace {

constexpr const char* kUsage =
    "usage: ogre_check [--json] [--programs DIR] PACKAGE\n"
    "Loads every mesh, material script and texture of a package with OGRE, without a display.\n"
    "Faults go to standard output, one a line; what only looks like one goes to standard error.\n"
    "  --json          print faults, notes and the content of all meshes as JSON instead\n"
    "  --programs DIR  declarations of the GPU programs (beside this program: ogre_programs)\n"
    "The exit status is 0 without faults, 1 with faults, 2 where nothing could be checked.\n";

enum ExitStatus : int { kSound = 0, kFaultsFound = 1, kNotChecked = 2 };

struct CheckOptions {
    std::filesystem::path package;
    std::optional<std::filesystem::path> programs;
    bool isJson = false;
};

// Nothing where the arguments are wrong.
std::optional<CheckOptions> parse(const std::vector<std::string>& arguments) {
    CheckOptions options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "--json") {
            options.isJson = true;
        } else if (argument == "--programs" && i + 1 < arguments.size()) {
            options.programs = arguments[++i];
        } else if (argument.starts_with('-') || !options.package.empty()) {
            return std::nullopt;
        } else {
            options.package = argument;
        }
    }
    if (options.package.empty()) return std::nullopt;
    return options;
}

int check(const CheckOptions& options) {
    const CheckReport report =
        checkPackageWithOgre(options.package, options.programs ? *options.programs : programFolder());
    if (options.isJson) {
        std::cout << jsonOf(report);
    } else {
        std::cout << linesOf(report.faults);
        std::cerr << linesOf(report.notes);
    }
    return report.faults.empty() ? kSound : kFaultsFound;
}

int run(const std::vector<std::string>& arguments) {
    if (arguments == std::vector<std::string>{"--help"}) {
        std::cout << kUsage;
        return kSound;
    }
    const auto options = parse(arguments);
    if (!options) {
        std::cerr << kUsage;
        return kNotChecked;
    }
    try {
        return check(*options);
    } catch (const std::exception& error) {
        std::cerr << "ogre_check: " << error.what() << "\n";
        return kNotChecked;
    }
}

}  // namespace
}  // namespace velinor

int main(int argc, char** argv) {
    return velinor::run(std::vector<std::string>(argv + 1, argv + argc));
}
