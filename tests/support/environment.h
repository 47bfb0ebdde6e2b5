// Environment variables that programs inherit which tests start.
#pragma once

#include <cstdlib>
#include <filesystem>

namespace velinor {

// Names the system's folder for temporary files, for this process and its children, while it lives.
class TemporaryFilesIn {
  public:
    explicit TemporaryFilesIn(const std::filesystem::path& folder) {
#ifdef _WIN32
        if (const wchar_t* before = _wgetenv(L"TMP")) before_ = before;
        _wputenv_s(L"TMP", folder.c_str());
#else
        if (const char* before = std::getenv("TMPDIR")) before_ = before;
        setenv("TMPDIR", folder.c_str(), 1);
#endif
    }
    TemporaryFilesIn(const TemporaryFilesIn&) = delete;
    TemporaryFilesIn& operator=(const TemporaryFilesIn&) = delete;
    ~TemporaryFilesIn() {
#ifdef _WIN32
        _wputenv_s(L"TMP", before_.c_str());  // an empty value removes it
#else
        if (before_.empty()) {
            unsetenv("TMPDIR");
        } else {
            setenv("TMPDIR", before_.c_str(), 1);
        }
#endif
    }

  private:
    std::filesystem::path before_;
};

}  // namespace velinor
