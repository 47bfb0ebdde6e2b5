#include "cli/scene_images.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "base/normal_path.h"
#include "base/regular_file.h"
#include "base/text.h"
#include "cli/command_error.h"
#include "hosts/assimp/image_folder.h"
#include "materials/image_library.h"
#include "platform/copy_file_over.h"
#include "platform/error_text.h"
#include "platform/process_info.h"
#include "platform/spare_folders.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

bool isAscii(std::u16string_view text) {
    return std::ranges::all_of(text, [](char16_t unit) { return unit < 0x80; });
}

std::u16string textOf(const fs::path& path) {
    return toUtf16Lossy(utf8Path(path));
}

// A link takes no room; not every system lets everyone make one.
bool linkOrCopy(const fs::path& from, const fs::path& to) {
    std::error_code error;
    fs::create_symlink(from, to, error);
    if (!error) return true;
    return fs::copy_file(from, to, error);
}

bool isAsciiPath(const fs::path& path) {
    return isAscii(textOf(path));
}

// Where links to bitmaps go: a folder with an ASCII path, if there is one.
std::optional<fs::path> linkFolder(SceneSource& source, const fs::path& spare) {
    const fs::path& images = source.images->path();
    if (isAsciiPath(images)) return images;
    // Others may look into the shared ones, so they come last.
    std::vector<fs::path> parents{shortPath(images), shortPath(spare)};
    std::ranges::copy(sharedTemporaryFolders(), std::back_inserter(parents));
    for (const fs::path& parent : parents) {
        if (!isAsciiPath(parent)) continue;
        try {
            source.links = std::make_unique<TemporaryFolder>(parent);
            return source.links->path();
        } catch (const fs::filesystem_error&) {
            continue;  // the next may do
        }
    }
    return std::nullopt;
}

// Why a bitmap will be missed that has no link.
std::string lossText(bool hasFolder) {
    if (hasFolder) {
        return "the bitmap cannot be found by a path with other than ASCII letters, and not be copied "
               "either; rename it";
    }
    return std::string(
               "the bitmap cannot be found by a path with other than ASCII letters, and there is no "
               "folder for a copy whose path has none; set ") +
           kTemporaryFolderVariable + " to one";
}

// "room" for "room.scene.json" and "room.json".
std::string stemOf(const fs::path& out) {
    const fs::path name = out.filename().stem();
    return utf8Path(name.extension() == ".scene" ? name.stem() : name);
}

void require(const std::error_code& error, const char* operation, const fs::path& path) {
    if (!error) return;
    throw CommandError(kFailed, std::string(operation) + ": " + utf8Path(path) + ": " + errorText(error) +
                                    "; check free space and permissions of its folder");
}

// Where a bitmap is an image that was taken out of the scene file.
std::optional<fs::path> extracted(const SnapshotMap& map, const TemporaryFolder& images) {
    const fs::path file = toPath(map.bitmap);
    return file.parent_path() == images.path() && isRegularFile(file) ? std::optional(file) : std::nullopt;
}

void copyImages(SceneSource& source, const fs::path& folder) {
    for (SnapshotMap& map : source.scene.maps) {
        const auto from = extracted(map, *source.images);
        if (!from) continue;
        const fs::path to = folder / from->filename();
        try {
            copyFileOver(*from, to);
        } catch (const fs::filesystem_error& error) {
            require(error.code(), "write", to);
        }
        map.bitmap = textOf(folder.filename()) + u"/" + textOf(to.filename());
    }
}

}  // namespace

void requireImageLibrary() {
    const auto fault = imageLibraryFault(executablePath().parent_path());
    if (!fault) return;
    throw CommandError(
        kFailed,
        *fault + ": the image library cannot be loaded; it belongs beside the program, put it there");
}

void linkBitmaps(SceneSource& source, const fs::path& spare) {
    if (!source.images) return;
    std::optional<ImageFolder> folder;
    bool isFolderSought = false;
    for (SnapshotMap& map : source.scene.maps) {
        if (isAscii(map.bitmap)) continue;
        const fs::path file = joinedPath(source.folder, toPath(map.bitmap));
        if (!isRegularFile(file)) continue;
        if (!isFolderSought) {
            if (const auto path = linkFolder(source, spare)) folder.emplace(*path);
            isFolderSought = true;
        }
        std::optional<fs::path> link;
        if (folder) link = folder->unusedFile(withoutImageEnding(map.bitmap), imageEnding(map.bitmap));
        if (link && linkOrCopy(file, *link)) {
            map.bitmap = textOf(*link);
        } else {
            source.notes.add(utf8Path(file), lossText(folder.has_value()));
        }
    }
}

SnapshotImages::SnapshotImages(SceneSource& source, const fs::path& out) {
    if (!source.images) return;
    const auto isExtracted = [&](const SnapshotMap& map) {
        return extracted(map, *source.images).has_value();
    };
    if (std::ranges::none_of(source.scene.maps, isExtracted)) return;
    const fs::path folder = out.parent_path() / (stemOf(out) + ".textures");
    std::error_code error;
    const bool isNew = fs::create_directory(folder, error);
    require(error, "create_directory", folder);
    try {
        copyImages(source, folder);
    } catch (...) {
        if (isNew) fs::remove_all(folder, error);
        throw;
    }
    if (isNew) newFolder_ = folder;
}

SnapshotImages::~SnapshotImages() {
    std::error_code error;
    if (newFolder_) fs::remove_all(*newFolder_, error);
}

}  // namespace velinor
