// A folder for files that nobody needs afterwards.
#pragma once

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace velinor {

// An empty folder among the system's temporary ones. It is removed, with all that is in it, at the end.
class TemporaryFolder {
  public:
    // Throws std::system_error where none can be made.
    TemporaryFolder() {
        std::string name = std::filesystem::temp_directory_path() / "tolvex-XXXXXX";
        if (mkdtemp(name.data()) == nullptr)
            throw std::system_error(errno, std::generic_category(), "mkdtemp");
        path_ = name;
    }
    ~TemporaryFolder() {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

}  // namespace velinor
