// A folder for files that are needed for a while.
#pragma once

#include <filesystem>
#include <random>
#include <string>
#include <system_error>

#include "base/normal_path.h"

namespace velinor {

// The environment variable that says where temporary files go.
#ifdef _WIN32
inline constexpr const char* kTemporaryFolderVariable = "TMP";
#else
inline constexpr const char* kTemporaryFolderVariable = "TMPDIR";
#endif

// An empty folder of its own among the system's temporary ones, or in one given. Off Windows no other user
// may look into it; there the folder around it says who may, as a rule this user alone. It is removed, with
// all that is in it, at the end of its owner's life; a process that is killed leaves it behind.
class TemporaryFolder {
  public:
    // Throws std::filesystem::filesystem_error with the operation word "create_directory" where none can be
    // made.
    TemporaryFolder() : TemporaryFolder(std::filesystem::temp_directory_path()) {}
    explicit TemporaryFolder(const std::filesystem::path& where) {
        namespace fs = std::filesystem;
        const fs::path parent = absolutePath(where);
        std::random_device random;
        for (;;) {
            const fs::path candidate = parent / ("tolvex-" + std::to_string(random()));
            std::error_code error;
            // Answers false where something has that name already: it may be another's, or a trap.
            const bool isNew = fs::create_directory(candidate, error);
            if (error && error != std::errc::file_exists)
                throw fs::filesystem_error("create_directory", candidate, error);
            if (!isNew) continue;
            path_ = candidate;
            fs::permissions(path_, fs::perms::owner_all, error);
            return;
        }
    }
    ~TemporaryFolder() {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    // Absolute.
    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

}  // namespace velinor
