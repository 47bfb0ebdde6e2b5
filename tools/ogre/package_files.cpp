#include "tools/ogre/package_files.h"

#include <algorithm>
#include <fstream>

namespace velinor {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> namesIn(const fs::path& folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        if (entry.is_regular_file(error)) names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    return names;
}

}  // namespace

PackageFiles::PackageFiles(fs::path folder) : folder_(std::move(folder)) {
    for (const char* file : {"index.jsx", "where.json"}) {
        std::error_code error;
        if (fs::is_regular_file(folder_ / file, error)) continue;
        throw PackageError(folder_.string() + ": this is no package, it has no " + file +
                           "; give the folder that an export made");
    }
    names_ = namesIn(resourcesFolder());
}

std::vector<std::string> PackageFiles::resources(std::string_view ending) const {
    std::vector<std::string> found;
    std::ranges::copy_if(names_, std::back_inserter(found),
                         [ending](const std::string& name) { return name.ends_with(ending); });
    return found;
}

bool PackageFiles::hasResource(std::string_view name) const {
    return std::ranges::binary_search(names_, name, std::less<>());
}

std::string PackageFiles::read(const fs::path& file) const {
    std::ifstream stream(folder_ / file, std::ios::binary | std::ios::ate);
    const std::streamoff size = stream ? std::streamoff(stream.tellg()) : -1;
    if (size < 0) throw PackageError((folder_ / file).string() + ": the file cannot be read");
    std::string bytes(static_cast<std::size_t>(size), '\0');
    stream.seekg(0);
    stream.read(bytes.data(), size);
    if (stream.gcount() != size)
        throw PackageError((folder_ / file).string() + ": the file cannot be read to its end");
    return bytes;
}

std::string PackageFiles::readResource(std::string_view name) const {
    return read(fs::path("resources") / std::string(name));
}

}  // namespace velinor
