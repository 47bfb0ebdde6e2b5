// The command "check": verifies a package and lists its faults, one a line.
#include <filesystem>
#include <system_error>

#include "base/text.h"
#include "cli/commands.h"
#include "cli/package_check.h"
#include "cli/standard_output.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

void requireFolder(const fs::path& package) {
    std::error_code error;
    if (fs::is_directory(package, error)) return;
    const bool exists = fs::exists(package, error);
    throw CommandError(kNotRun, narrowPath(package) + (exists ? ": is no folder" : ": does not exist") +
                                    "; name the folder of a package");
}

}  // namespace

ExitStatus runCheck(const CheckArguments& arguments) {
    requireFolder(arguments.package);
    const std::vector<PackageFault> faults = checkPackage(arguments.package);

    StandardOutput output;
    for (const PackageFault& fault : faults)
        output.write(printable(fault.file + ": " + fault.text) + "\n");
    output.write(printable(narrowPath(arguments.package)) + ": " +
                 (faults.empty()
                      ? "no faults"
                      : std::to_string(faults.size()) + (faults.size() == 1 ? " fault" : " faults")) +
                 "\n");
    output.finish();
    return faults.empty() ? kDone : kFaultsFound;
}

}  // namespace velinor
