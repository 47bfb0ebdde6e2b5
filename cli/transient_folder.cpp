#include "cli/transient_folder.h"

#include <random>
#include <string>
#include <system_error>

#include "base/text.h"
#include "cli/command_error.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const fs::path& folder, const std::error_code& error) {
    throw CommandError(kFailed, "create_directory: " + narrowPath(folder) + ": " + error.message() +
                                    "; set TMPDIR to a folder that can be written to");
}

}  // namespace

TransientFolder::TransientFolder() {
    std::error_code error;
    const fs::path parent = fs::temp_directory_path(error);
    if (error) fail("temporary folder", error);
    std::random_device random;
    for (;;) {
        const fs::path candidate = fs::absolute(parent) / ("tolvex-" + std::to_string(random()));
        // Answers false where something has that name already: it may be another's, or a trap.
        const bool isNew = fs::create_directory(candidate, error);
        if (error && error != std::errc::file_exists) fail(candidate, error);
        if (!isNew) continue;
        path_ = candidate;
        fs::permissions(path_, fs::perms::owner_all, error);
        return;
    }
}

TransientFolder::~TransientFolder() {
    std::error_code error;
    fs::remove_all(path_, error);
}

}  // namespace velinor
