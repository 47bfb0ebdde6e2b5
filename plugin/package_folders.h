// The folders of a package and of the program that writes it.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace velinor {

// Where things are during one export.
struct PackageFolders {
    std::filesystem::path hostFolder;       // the folder of the host program's executable
    std::filesystem::path pluginFolder;     // hostFolder / "Plugins"
    std::filesystem::path exportFolder;     // the package
    std::filesystem::path miscFolder;       // "misc" in it
    std::filesystem::path resourcesFolder;  // "resources" in it
    std::filesystem::path thumbsFolder;     // "thumbs" in it

    bool operator==(const PackageFolders&) const = default;
};

// The folders of an export to the file `fileName`, D/N.E, by the program `hostExecutable`: the package is
// D/N. Looks at no disk.
PackageFolders packageFoldersFor(const std::filesystem::path& fileName,
                                 const std::filesystem::path& hostExecutable);

// Why the system cannot hold a package under this path, in words for a person; nothing where it can. Windows
// drops blanks and dots at the end of a name, and then does not find the folder under the name that was
// given. In folders with longer paths than it takes as a rule, MinGW's library does not list, and removing
// goes round and round, even where the system itself takes them.
std::optional<std::string> exportFolderFault(const std::filesystem::path& exportFolder);

// Whether `folder` is a package: a folder that holds index.jsx and where.json.
bool isPackage(const std::filesystem::path& folder);

// Creates the package's folders. What bears the package's name already is removed if it is a file or an empty
// folder. Throws std::filesystem::filesystem_error with the operation word "remove" or
// "create_directory" and the path.
void createPackageFolders(const PackageFolders& folders);

// Removes the intermediate meshes from `resourcesFolder`: every entry whose whole path contains ".mesh.xml".
// Throws std::filesystem::filesystem_error with the operation word "directory_iterator::directory_iterator",
// "directory_iterator::operator++" or "remove" and the path.
void removeIntermediateMeshes(const std::filesystem::path& resourcesFolder);

}  // namespace velinor
