// The command "check": verifies a package and lists its faults and notes, one a line.
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
    throw CommandError(kNotRun, utf8Path(package) + (exists ? ": is no folder" : ": does not exist") +
                                    "; name the folder of a package");
}

// "no faults", "1 fault", "2 faults".
std::string counted(std::size_t count, const std::string& noun) {
    return (count == 0 ? "no" : std::to_string(count)) + " " + noun + (count == 1 ? "" : "s");
}

}  // namespace

ExitStatus runCheck(const CheckArguments& arguments) {
    requireFolder(arguments.package);
    const PackageFindings findings = checkPackage(arguments.package);

    StandardOutput output;
    for (const PackageFault& fault : findings.faults)
        output.write(printable(fault.file + ": " + fault.text) + "\n");
    for (const PackageFault& note : findings.notes)
        output.write(printable("note: " + note.file + ": " + note.text) + "\n");
    output.write(printable(utf8Path(arguments.package)) + ": " + counted(findings.faults.size(), "fault") +
                 (findings.notes.empty() ? "" : ", " + counted(findings.notes.size(), "note")) + "\n");
    output.finish();
    return findings.faults.empty() ? kDone : kFaultsFound;
}

}  // namespace velinor
