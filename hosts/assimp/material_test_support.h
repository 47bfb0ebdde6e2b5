// One material by hand, and what becomes of it.
#pragma once

#include <assimp/scene.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "base/text.h"
#include "hosts/assimp/assimp_materials.h"
#include "hosts/assimp/assimp_test_support.h"
#include "hosts/assimp/image_folder.h"

namespace velinor {

// A scene of one material "M", whose file lies in a folder of its own; images are written into another.
class MaterialTest : public testing::Test {
  protected:
    explicit MaterialTest(FileFormat format = FileFormat::fbx) {
        file_.path = folder_.path() / "room.fbx";
        file_.shown = "room.fbx";
        file_.stem = "room";
        file_.format = format;
        options_.imageFolder = images_.path();
        scene_.mNumMaterials = 1;
        scene_.mMaterials = new aiMaterial* [1] { new aiMaterial };
        text("?mat.name", "M");
    }

    aiMaterial& material() { return *scene_.mMaterials[0]; }

    void numbers(const char* key, std::vector<float> values) {
        material().AddProperty(values.data(), static_cast<unsigned>(values.size()), key, 0, 0);
    }
    void integer(const char* key, std::uint32_t value) {
        const int number = static_cast<int>(value);
        material().AddProperty(&number, 1, key, 0, 0);
    }
    void text(const char* key, const std::string& value) {
        const aiString held(value);
        material().AddProperty(&held, key, 0, 0);
    }
    void texture(aiTextureType type, const std::string& file, unsigned index = 0) {
        const aiString held(file);
        material().AddProperty(&held, "$tex.file", type, index);
    }
    void classId(std::uint32_t a, std::uint32_t b) {
        integer("$raw.3dsMax|ClassIDa", a);
        integer("$raw.3dsMax|ClassIDb", b);
    }

    // Adds an embedded image: the bytes of a file, or, with a height, pixels of four bytes.
    void embed(const std::string& name, std::string_view bytes, unsigned width, unsigned height = 0) {
        auto held = std::make_unique<aiTexture>();
        held->mFilename = aiString(name);
        held->mWidth = width;
        held->mHeight = height;
        if (!bytes.empty()) {
            held->pcData = new aiTexel[bytes.size() / sizeof(aiTexel) + 1];
            std::memcpy(held->pcData, bytes.data(), bytes.size());
        }
        auto** const all = new aiTexture*[scene_.mNumTextures + 1];
        for (unsigned i = 0; i < scene_.mNumTextures; ++i)
            all[i] = scene_.mTextures[i];
        all[scene_.mNumTextures] = held.release();
        delete[] scene_.mTextures;
        scene_.mTextures = all;
        ++scene_.mNumTextures;
    }
    void embedFile(const std::string& name, std::string_view bytes) {
        embed(name, bytes, static_cast<unsigned>(bytes.size()));
    }

    SnapshotMaterial convert() {
        BitmapTable bitmaps(scene_, file_, options_, notes_);
        NoProgress progress;
        MaterialTable table(scene_, file_, bitmaps, progress, notes_);
        auto materials = table.take();
        maps_ = bitmaps.take();
        EXPECT_EQ(materials.size(), 1U);
        return materials.empty() ? SnapshotMaterial() : materials.front();
    }

    // The value of a parameter; fails the test where there is none of that type.
    template <typename Value>
    Value value(const SnapshotMaterial& from, std::u16string_view name) const {
        for (const SnapshotProperty& property : from.properties) {
            if (property.name == name && std::holds_alternative<Value>(property.value))
                return std::get<Value>(property.value);
        }
        ADD_FAILURE() << "no such parameter: " << toUtf8(name);
        return {};
    }
    float number(const SnapshotMaterial& from, std::u16string_view name) const {
        return value<float>(from, name);
    }

    // "Bitmap wood.png", "Normal Bump (Bitmap wood.png)", with the last component of the file; empty: no map.
    std::string mapText(std::optional<SnapshotRef> map) const {
        if (!map) return "";
        const SnapshotMap& found = maps_.at(*map);
        std::string text = toUtf8(found.className);
        if (!found.bitmap.empty()) text += " " + toUtf8(lastPathComponent(found.bitmap));
        for (const auto& inner : found.subMaps)
            text += " (" + mapText(inner) + ")";
        return text;
    }
    std::string map(const SnapshotMaterial& from, std::u16string_view name) const {
        return mapText(value<SnapshotMapProperty>(from, name).map);
    }
    std::string slot(const SnapshotMaterial& from, std::int32_t number) const {
        std::string text;
        for (const SnapshotTextureMap& map : from.textureMaps) {
            if (map.slot == number) text += mapText(map.map);
        }
        return text;
    }

    bool isNoted(std::string_view subject, std::string_view part) const {
        for (const ImportNote& note : notes_.notes()) {
            if (note.subject == subject && note.text.find(part) != std::string::npos) return true;
        }
        return false;
    }

    // The names of the files in the image folder, in order.
    std::vector<std::string> imageNames() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(images_.path()))
            names.push_back(utf8Path(entry.path().filename()));
        std::ranges::sort(names);
        return names;
    }

    std::string imageBytes(const std::string& name) const {
        std::ifstream stream(images_.path() / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }

    ScratchFolder folder_;  // of the scene
    ScratchFolder images_;
    SourceFile file_;
    AssimpOptions options_;
    ImportNotes notes_;
    std::vector<SnapshotMap> maps_;
    aiScene scene_;
};

}  // namespace velinor
