#include "cli/package_replacement.h"

#include <cstdio>
#include <system_error>

#include "base/text.h"
#include "cli/command_error.h"
#include "cli/sibling_name.h"
#include "platform/error_text.h"
#include "plugin/package_folders.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

bool isFullFolder(const fs::path& path) {
    std::error_code error;
    return fs::is_directory(path, error) && !fs::is_empty(path, error) && !error;
}

}  // namespace

PackageReplacement::PackageReplacement(const fs::path& package, bool overwrite) : package_(package) {
    std::error_code error;
    const fs::file_status status = fs::symlink_status(package, error);
    if (status.type() == fs::file_type::not_found) {
        isOurs_ = true;
        return;
    }
    if (!isFullFolder(package)) {
        if (fs::exists(package, error)) setAside();
        return;
    }
    if (!overwrite) return;
    if (!isPackage(package)) {
        throw CommandError(kFailed,
                           "overwrite: " + utf8Path(package) +
                               ": is a folder with files that is no package (index.jsx and where.json are "
                               "missing); choose another TARGET");
    }
    setAside();
    if (!aside_) {
        throw CommandError(kFailed,
                           "rename: " + utf8Path(package) +
                               ": the old package cannot be set aside; check the permissions of its folder");
    }
}

PackageReplacement::~PackageReplacement() {
    if (!isKept_) putBack();
}

std::optional<std::string> PackageReplacement::keep() {
    isKept_ = true;
    if (!aside_) return std::nullopt;
    std::error_code error;
    fs::remove_all(*aside_, error);
    if (!error) return std::nullopt;
    return "remove: " + utf8Path(*aside_) + ": " + errorText(error) +
           "; the new package is complete, remove this rest of the old one by hand";
}

// Where this fails, what is there stays, and the export itself meets it.
void PackageReplacement::setAside() {
    const fs::path aside = unusedSibling(package_, "old");
    std::error_code error;
    fs::rename(package_, aside, error);
    if (error) return;
    aside_ = aside;
    isOurs_ = true;
}

void PackageReplacement::putBack() {
    if (!isOurs_) return;
    std::error_code error;
    fs::remove_all(package_, error);
    if (aside_ && !error) fs::rename(*aside_, package_, error);
    if (!error) return;
    std::fprintf(stderr, "tolvex: %s: %s; %s\n", printable(utf8Path(package_)).c_str(),
                 errorText(error).c_str(),
                 aside_ ? ("what stood there before is now " + printable(utf8Path(*aside_))).c_str()
                        : "remove this rest of the export by hand");
}

}  // namespace velinor
