// Files as the C library has them.
#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>

namespace velinor {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OpenedFile = std::unique_ptr<std::FILE, CloseFile>;

// What std::fopen gives for the file `path`, whatever characters that has; null where it cannot be opened,
// with the reason in errno. `mode` is fopen's.
OpenedFile openFile(const std::filesystem::path& path, const char* mode);

}  // namespace velinor
