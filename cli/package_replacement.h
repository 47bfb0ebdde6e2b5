// Makes an export all or nothing: what stood under the package's name comes back when the export fails.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace velinor {

// Guards the package folder of one export, from before its first write until keep().
//
// What stands under the package's name and is to give way (a package with `overwrite`; otherwise, as every
// export has it, a file or an empty folder) is set aside beside it under a name of its own. Where the export
// does not end with keep(), what it wrote is removed and the old comes back. A full folder without
// `overwrite` is left alone: the export itself refuses it.
class PackageReplacement {
  public:
    // Throws CommandError (kFailed) where `overwrite` meets a full folder that is no package, or the old
    // package cannot be set aside.
    PackageReplacement(const std::filesystem::path& package, bool overwrite);
    ~PackageReplacement();
    PackageReplacement(const PackageReplacement&) = delete;
    PackageReplacement& operator=(const PackageReplacement&) = delete;

    // The new package stays and the old one is removed. Gives a line for the user where some of the old one
    // remains.
    std::optional<std::string> keep();

  private:
    void setAside();
    void putBack();

    std::filesystem::path package_;
    std::optional<std::filesystem::path> aside_;
    bool isOurs_ = false;  // what stands under the package's name from now on is of this export
    bool isKept_ = false;
};

}  // namespace velinor
