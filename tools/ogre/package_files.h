// The files of a package on disk.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace velinor {

// A package, or a file of one, that cannot be read at all. what() names it and says what to do.
class PackageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// A file of a package that is named by its place in it: "resources/Chair.mesh". Names are bytes, UTF-8 as a
// rule.
class PackageFiles {
  public:
    // Throws PackageError where `folder` is no folder with an index.jsx and a where.json.
    explicit PackageFiles(std::filesystem::path folder);

    std::filesystem::path folder() const { return folder_; }
    std::filesystem::path resourcesFolder() const { return folder_ / "resources"; }

    // The names of the files in resources/ that end with `ending`, in ascending order, without the folder.
    std::vector<std::string> resources(std::string_view ending) const;

    bool hasResource(std::string_view name) const;

    // All bytes of a file. Throws PackageError where it cannot be read.
    std::string read(const std::filesystem::path& file) const;
    std::string readResource(std::string_view name) const;

  private:
    std::filesystem::path folder_;
    std::vector<std::string> names_;  // of all files in resources/, ascending
};

}  // namespace velinor
