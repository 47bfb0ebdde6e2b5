#include "plugin/package_folders.h"

#include <string_view>
#include <system_error>

#include "base/normal_path.h"
#include "base/regular_file.h"
#include "base/text.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

void throwOnError(const char* operation, const fs::path& path, const std::error_code& error) {
    if (error) throw fs::filesystem_error(operation, path, error);
}

// `folder`, one separator, `name`: joined as text, so that a name that looks absolute stays inside the
// folder.
fs::path concatenated(const fs::path& folder, const fs::path& name) {
    fs::path joined = folder;
    joined += fs::path::preferred_separator;
    joined += name;
    return joined;
}

void removeEntry(const fs::path& path) {
    std::error_code error;
    fs::remove(path, error);
    throwOnError("remove", path, error);
}

void createFolder(const fs::path& path) {
    std::error_code error;
    fs::create_directory(path, error);
    throwOnError("create_directory", path, error);
}

}  // namespace

PackageFolders packageFoldersFor(const fs::path& fileName, const fs::path& hostExecutable) {
    PackageFolders folders;
    folders.hostFolder = hostExecutable.parent_path();
    folders.pluginFolder = folders.hostFolder / "Plugins";
    const fs::path normal = normalPath(fileName);
    folders.exportFolder = concatenated(normal.parent_path(), normal.filename().stem());
    folders.miscFolder = concatenated(folders.exportFolder, "misc");
    folders.resourcesFolder = concatenated(folders.exportFolder, "resources");
    folders.thumbsFolder = concatenated(folders.exportFolder, "thumbs");
    return folders;
}

std::optional<std::string> exportFolderFault(const fs::path& exportFolder) {
    constexpr bool kIsWindows = fs::path::preferred_separator == '\\';
    constexpr std::size_t kLongestPath = 259;
    constexpr std::size_t kLongest =
        kLongestPath - std::string_view("\\resources\\FXUnlitSkyboxCubic.material").size();
    if (!kIsWindows) return std::nullopt;
    if (const std::string name = utf8Path(exportFolder.filename());
        name.ends_with(' ') || name.ends_with('.'))
        return "Windows drops blanks and dots at the end of a folder's name";
    if (const std::size_t size = exportFolder.native().size(); size > kLongest) {
        return "the path has " + std::to_string(size) + " characters, and Windows takes " +
               std::to_string(kLongest) + " for a package";
    }
    return std::nullopt;
}

bool isPackage(const fs::path& folder) {
    return isRegularFile(folder / "index.jsx") && isRegularFile(folder / "where.json");
}

void createPackageFolders(const PackageFolders& folders) {
    // Where it cannot even be asked whether the entry exists, creating the folder fails with the reason.
    std::error_code ignored;
    if (fs::exists(folders.exportFolder, ignored)) removeEntry(folders.exportFolder);
    createFolder(folders.exportFolder);
    createFolder(folders.miscFolder);
    createFolder(folders.resourcesFolder);
    createFolder(folders.thumbsFolder);
}

void removeIntermediateMeshes(const fs::path& resourcesFolder) {
    std::error_code error;
    fs::directory_iterator entry(resourcesFolder, error);
    throwOnError("directory_iterator::directory_iterator", resourcesFolder, error);
    while (entry != fs::directory_iterator()) {
        if (utf8Path(entry->path()).find(".mesh.xml") != std::string::npos) removeEntry(entry->path());
        entry.increment(error);
        throwOnError("directory_iterator::operator++", resourcesFolder, error);
    }
}

}  // namespace velinor
