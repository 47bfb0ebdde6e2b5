// Map files on the real disk, for tests of what is found there.
#pragma once

#include <filesystem>
#include <fstream>

namespace velinor {

// A folder of maps, removed at the end.
class TemporaryMaps {
  public:
    TemporaryMaps() : folder_(std::filesystem::temp_directory_path() / "options dialog maps") {
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_);
    }
    TemporaryMaps(const TemporaryMaps&) = delete;
    TemporaryMaps& operator=(const TemporaryMaps&) = delete;
    ~TemporaryMaps() {
        std::error_code error;
        std::filesystem::remove_all(folder_, error);
    }

    std::filesystem::path add(const wchar_t* name) const {
        std::ofstream(folder_ / name) << "map";
        return folder_ / name;
    }

    const std::filesystem::path& path() const { return folder_; }

  private:
    std::filesystem::path folder_;
};

}  // namespace velinor
