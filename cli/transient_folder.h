// A folder for files that are needed for a while.
#pragma once

#include <filesystem>

namespace velinor {

// An empty folder of its own among the system's temporary ones, removed with all that is in it at the end of
// its owner's life. A process that is killed leaves it behind.
class TransientFolder {
  public:
    // Throws CommandError (kFailed) where no folder can be made.
    TransientFolder();
    ~TransientFolder();
    TransientFolder(const TransientFolder&) = delete;
    TransientFolder& operator=(const TransientFolder&) = delete;

    // Absolute.
    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

}  // namespace velinor
