// Finds the bitmap files that a scene file names: scenes travel, and the paths in them stay behind.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/assimp/assimp_format.h"

namespace velinor {

// The text of a texture's name as the library hands it over: UTF-8, or else Windows-1252; the entities of
// ASCII FBX decoded.
std::u16string textureName(std::string_view reference, const SourceFile& source);

// Looks for bitmap files of one scene. Only regular files count. Folders are listed once.
class TextureFiles {
  public:
    // `source.path` is the scene file; relative `assetFolders` are meant against the current folder.
    TextureFiles(const SourceFile& source, std::span<const std::filesystem::path> assetFolders);

    // The absolute path of the file that `name` means, in this order: the path as it stands, "\" taken for
    // "/" and, in glTF, "%20" for a blank, relative ones against the scene's folder; its last component in
    // the folders of searched(), in order; the same once more without regard to the case of ASCII letters, in
    // the folder of the path first.
    std::optional<std::filesystem::path> find(std::u16string_view name) const;

    // The scene's folder; ".fbm" of the scene, "textures", "Textures" and "maps" beside it; the asset
    // folders.
    const std::vector<std::filesystem::path>& searched() const { return searched_; }

  private:
    using Listing = std::map<std::string, std::string>;  // by name in small letters, the name (UTF-8)

    std::optional<std::filesystem::path> findExactly(std::u16string_view name) const;
    std::optional<std::filesystem::path> findLoosely(std::u16string_view name) const;
    const Listing& listing(const std::filesystem::path& folder) const;

    std::filesystem::path folder_;                 // of the scene, absolute
    std::vector<std::filesystem::path> searched_;  // absolute
    bool isEncoded_;                               // names are URIs
    mutable std::map<std::filesystem::path, Listing> listings_;
};

}  // namespace velinor
