// Finds the bitmap files that a scene file names: scenes travel, and the paths in them stay behind.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velinor {

// How a scene file names bitmaps: by paths, or by URIs, in which "%20" can stand for a blank.
enum class TextureNames { paths, uris };

// Looks for bitmap files of one scene. Only regular files count. Folders are listed once.
class TextureFiles {
  public:
    // `scene` is the scene file; relative `assetFolders` are meant against the current folder.
    TextureFiles(const std::filesystem::path& scene, TextureNames names,
                 std::span<const std::filesystem::path> assetFolders);

    // The absolute path of the file that `name` means, in this order: the path as it stands, "\" taken for
    // "/" and, in URIs, "%20" for a blank, relative ones against the scene's folder; against that folder,
    // too, one that begins with "/"; its last component in the folders of searched(), in order; the same once
    // more without regard to the case of ASCII letters, in the folder of the path first.
    std::optional<std::filesystem::path> find(std::u16string_view name) const;

    // The scene's folder; ".fbm" of the scene, "textures", "Textures" and "maps" beside it; the asset
    // folders.
    const std::vector<std::filesystem::path>& searched() const { return searched_; }

  private:
    using Listing = std::map<std::string, std::string>;  // by name in small letters, the name (UTF-8)

    std::vector<std::filesystem::path> pathsOf(std::u16string_view name) const;
    std::optional<std::filesystem::path> findExactly(std::u16string_view name) const;
    std::optional<std::filesystem::path> findLoosely(std::u16string_view name) const;
    const Listing& listing(const std::filesystem::path& folder) const;

    std::filesystem::path folder_;                 // of the scene, absolute
    std::vector<std::filesystem::path> searched_;  // absolute
    bool isEncoded_;                               // names are URIs
    mutable std::map<std::filesystem::path, Listing> listings_;
};

// What is to be said of a bitmap that find() did not find: its name, where it was looked for, what to do.
std::string missingBitmapText(std::u16string_view name, const TextureFiles& files);

}  // namespace velinor
