// Verifies the files in a package's folder "resources".
#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "cli/package_check.h"

namespace velinor {

// First told of each file that index.jsx names, then asked for the rest by finish(). Every file is read once,
// however often it is named. Faults and notes go to the findings that it is made with, which must outlive it.
class ResourceCheck {
  public:
    ResourceCheck(std::filesystem::path resources, PackageFindings& findings);

    // Line `line` of index.jsx names the mesh or collision mesh `name`: as UTF-8 or, where it is none, by low
    // bytes.
    void checkMesh(std::size_t line, std::string_view name);
    void checkCollisionMesh(std::size_t line, std::string_view name);

    // Verifies that the materials of the meshes so far have scripts, and the scripts their textures.
    void finish();

  private:
    enum class Presence { missing, empty, there };

    std::optional<std::string> fileNamed(std::size_t line, std::string_view name);
    std::optional<std::string> findFile(std::string_view name) const;
    std::optional<std::string> read(const std::string& file);
    void readScripts();
    void readScript(const std::string& file);
    void checkTexture(const std::string& script, std::size_t line, const std::string& name);
    void checkMaterial(const std::string& material, const std::string& mesh);
    Presence presenceOf(const std::string& file);
    bool isFile(std::string_view name) const;
    void addFault(const std::string& file, const std::string& text);
    void addNote(const std::string& file, const std::string& text);

    std::filesystem::path resources_;
    PackageFindings& findings_;
    bool areCollisionMeshesMade_;  // false: the package was exported without
    std::size_t collisionMeshesLeftOut_ = 0;
    std::map<std::string, std::optional<std::string>, std::less<>> filesByName_;
    std::set<std::string> checkedFiles_;
    std::map<std::string, std::string> meshesByMaterial_;   // one mesh of each material
    std::map<std::string, std::string> scriptsByMaterial_;  // that declare it
    std::map<std::string, Presence> textures_;
};

}  // namespace velinor
