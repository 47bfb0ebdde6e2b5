#include "tests/architecture/source_file.h"

#include <fstream>
#include <sstream>

#include "base/text.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

bool isSource(const fs::path& path) {
    return path.extension() == ".h" || path.extension() == ".cpp";
}

}  // namespace

std::string contentOf(const fs::path& path) {
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

std::vector<SourceFile> sourceFiles() {
    const fs::path root = TOLVEX_SOURCE_DIR;
    std::vector<SourceFile> files;
    for (fs::recursive_directory_iterator entry(root), end; entry != end; ++entry) {
        const std::string name = utf8Path(entry->path().filename());
        if (entry->is_directory() && (name.starts_with("build") || name.starts_with("."))) {
            entry.disable_recursion_pending();
        } else if (entry->is_regular_file() && isSource(entry->path())) {
            files.push_back({fs::relative(entry->path(), root).generic_string(), contentOf(entry->path())});
        }
    }
    return files;
}

}  // namespace velinor
