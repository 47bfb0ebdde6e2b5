#include "cli/resource_check.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <system_error>
#include <vector>

#include "base/regular_file.h"
#include "base/text.h"
#include "cli/collision_mesh_reader.h"
#include "cli/material_script_reader.h"
#include "cli/ogre_mesh_reader.h"
#include "platform/error_text.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

constexpr const char* kSky = "FXUnlitSkyboxCubic";  // the sky's material, which where.json names

std::string inResources(const std::string& file) {
    return "resources/" + file;
}

// Whether the folder has a collision mesh, or the list of those that could not be made.
bool holdsCollisionMeshes(const fs::path& resources) {
    std::error_code error;
    for (fs::directory_iterator entry(resources, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        const std::string name = utf8Path(entry->path().filename());
        if (name.ends_with(".mesh_phy.obj") || name == "failed_physics.txt") return true;
    }
    return false;
}

}  // namespace

ResourceCheck::ResourceCheck(fs::path resources, PackageFindings& findings)
    : resources_(std::move(resources)),
      findings_(findings),
      areCollisionMeshesMade_(holdsCollisionMeshes(resources_)) {}

void ResourceCheck::checkMesh(std::size_t line, std::string_view name) {
    const std::optional<std::string> file = fileNamed(line, name);
    if (!file || !checkedFiles_.insert(*file).second) return;
    const std::optional<std::string> bytes = read(*file);
    if (!bytes) return;
    try {
        for (const OgreSubmesh& submesh : readOgreMesh(*bytes).submeshes)
            meshesByMaterial_.insert({submesh.material, *file});
    } catch (const OgreMeshError& error) {
        addFault(*file, error.what());
    }
}

void ResourceCheck::checkCollisionMesh(std::size_t line, std::string_view name) {
    if (!areCollisionMeshesMade_) {
        ++collisionMeshesLeftOut_;
        return;
    }
    const std::optional<std::string> file = fileNamed(line, name);
    if (!file || !checkedFiles_.insert(*file).second) return;
    const std::optional<std::string> text = read(*file);
    if (!text) return;
    try {
        readCollisionMesh(*text);
    } catch (const CollisionMeshError& error) {
        addFault(*file, error.what());
    }
}

void ResourceCheck::finish() {
    if (collisionMeshesLeftOut_ > 0) {
        findings_.notes.push_back({"resources", "no collision mesh is here, index.jsx names " +
                                                    std::to_string(collisionMeshesLeftOut_) +
                                                    "; the package was exported without collision meshes"});
    }
    readScripts();
    if (scriptsByMaterial_.empty()) {
        if (meshesByMaterial_.empty()) return;
        findings_.notes.push_back({"resources", "no material script declares a material, " +
                                                    std::to_string(meshesByMaterial_.size()) +
                                                    " in use; the package was exported without materials"});
        return;
    }
    if (!scriptsByMaterial_.contains(kSky)) {
        findings_.faults.push_back({"resources", std::string("no script declares the sky ") + kSky});
    }
    for (const auto& [material, mesh] : meshesByMaterial_)
        checkMaterial(material, mesh);
}

// The file that `name` stands for, or nothing, which is a fault at every mention.
std::optional<std::string> ResourceCheck::fileNamed(std::size_t line, std::string_view name) {
    const std::string place = "line " + std::to_string(line) + ": ";
    auto known = filesByName_.find(name);
    if (known == filesByName_.end()) {
        known = filesByName_.insert({std::string(name), findFile(name)}).first;
        if (known->second && *known->second != name) {
            findings_.notes.push_back(
                {"index.jsx", place + "\"" + known->first + "\" is the file " + inResources(*known->second)});
        }
    }
    if (!known->second) {
        findings_.faults.push_back(
            {"index.jsx",
             place + (isPlainFileName(name) ? "the file " + inResources(known->first) + " does not exist"
                                            : "\"" + known->first + "\" is no file name")});
    }
    return known->second;
}

// index.jsx has names of nodes as they are, files have them fit for files: "Big Box.mesh" is in Big_Box.mesh.
std::optional<std::string> ResourceCheck::findFile(std::string_view name) const {
    if (isPlainFileName(name) && isFile(name)) return std::string(name);
    std::string sanitised = sanitiseName(name);
    if (isFile(sanitised)) return sanitised;
    if (toUtf16(name)) return std::nullopt;
    sanitised = sanitiseName(utf8OfLowBytes(name));
    if (isFile(sanitised)) return sanitised;
    return std::nullopt;
}

bool ResourceCheck::isFile(std::string_view name) const {
    return isRegularFile(resources_ / pathOfUtf8(name));
}

std::optional<std::string> ResourceCheck::read(const std::string& file) {
    const fs::path path = resources_ / pathOfUtf8(file);
    std::error_code error;
    const std::uintmax_t size = fs::file_size(path, error);
    errno = 0;
    std::ifstream stream(path, std::ios::binary);
    if (!error && stream) {
        std::string bytes(static_cast<std::size_t>(size), '\0');
        stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        if (stream) return bytes;
    }
    const std::string reason = error        ? errorText(error)
                               : errno != 0 ? std::generic_category().message(errno)
                                            : "it became shorter meanwhile";
    addFault(file, "cannot be read: " + reason);
    return std::nullopt;
}

void ResourceCheck::readScripts() {
    std::vector<std::string> files;
    std::error_code error;
    for (fs::directory_iterator entry(resources_, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        std::error_code ignored;
        if (entry->path().extension() == ".material" && entry->is_regular_file(ignored)) {
            files.push_back(utf8Path(entry->path().filename()));
        }
    }
    std::ranges::sort(files);
    for (const std::string& file : files)
        readScript(file);
}

void ResourceCheck::readScript(const std::string& file) {
    const std::optional<std::string> text = read(file);
    if (!text) return;
    const MaterialScript script = readMaterialScript(*text);
    for (const ScriptName& fault : script.faults)
        addFault(file, "line " + std::to_string(fault.line) + ": " + fault.name);
    if (script.materials.empty()) addFault(file, "declares no material");
    for (const ScriptName& material : script.materials) {
        const auto [declared, isNew] = scriptsByMaterial_.insert({material.name, file});
        if (isNew) continue;
        addFault(file, "line " + std::to_string(material.line) + ": the material \"" + material.name +
                           "\" is in " + inResources(declared->second) + ", too");
    }
    for (const ScriptName& texture : script.textures)
        checkTexture(file, texture.line, texture.name);
}

void ResourceCheck::checkTexture(const std::string& script, std::size_t line, const std::string& name) {
    const Presence presence = presenceOf(name);
    if (presence == Presence::there) return;
    addFault(script, "line " + std::to_string(line) + ": the texture " + inResources(name) +
                         (presence == Presence::missing ? " does not exist" : " is empty"));
}

ResourceCheck::Presence ResourceCheck::presenceOf(const std::string& file) {
    const auto known = textures_.find(file);
    if (known != textures_.end()) return known->second;
    Presence presence = Presence::missing;
    if (isPlainFileName(file) && isFile(file)) {
        std::error_code error;
        presence =
            fs::file_size(resources_ / pathOfUtf8(file), error) == 0 ? Presence::empty : Presence::there;
    }
    return textures_[file] = presence;
}

void ResourceCheck::checkMaterial(const std::string& material, const std::string& mesh) {
    if (scriptsByMaterial_.contains(material)) return;
    const std::string text = "the material \"" + material + "\" has no script";
    if (material == "default") {
        addNote(mesh, text + ": it stands for no material");
    } else if (isPlainFileName(material) && isFile(material + ".material_properties")) {
        addNote(mesh, text + ": materials of its class are not exported");
    } else {
        addFault(mesh, text);
    }
}

void ResourceCheck::addFault(const std::string& file, const std::string& text) {
    findings_.faults.push_back({inResources(file), text});
}

void ResourceCheck::addNote(const std::string& file, const std::string& text) {
    findings_.notes.push_back({inResources(file), text});
}

}  // namespace velinor
