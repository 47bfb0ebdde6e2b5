// Scenes of materials, their export into a folder, and images, for the tests of this folder.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vips/vips.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "base/progress.h"
#include "base/report.h"
#include "base/text.h"
#include "hosts/snapshot/snapshot_host.h"
#include "materials/image_library.h"
#include "materials/material_map.h"
#include "materials/material_writer_context.h"
#include "platform/temporary_folder.h"
#include "tests/support/platform_text.h"

namespace velinor {

inline void writeFile(const std::filesystem::path& path, std::string_view bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

// What the system says of a folder where a file is to be written.
inline constexpr const char* kNoFileText = kIsWindows ? "Permission denied" : "Is a directory";

inline std::string readFile(const std::filesystem::path& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

// An image as rows of samples, band after band.
template <class Sample>
struct TestImage {
    int width = 1;
    int height = 1;
    int bands = 4;
    std::vector<Sample> samples;

    bool operator==(const TestImage&) const = default;
};

// Saves an image of 8 or 16 bits in the format of the path's ending. `option` is one of the saver's.
template <class Sample>
void saveImage(const TestImage<Sample>& image, const std::filesystem::path& path,
               const char* option = nullptr) {
    constexpr bool isWide = sizeof(Sample) == 2;
    VipsImage* held = vips_image_new_from_memory(image.samples.data(), image.samples.size() * sizeof(Sample),
                                                 image.width, image.height, image.bands,
                                                 isWide ? VIPS_FORMAT_USHORT : VIPS_FORMAT_UCHAR);
    ASSERT_NE(held, nullptr) << vips_error_buffer();
    if (image.bands < 3) {
        held->Type = isWide ? VIPS_INTERPRETATION_GREY16 : VIPS_INTERPRETATION_B_W;
    } else {
        held->Type = isWide ? VIPS_INTERPRETATION_RGB16 : VIPS_INTERPRETATION_sRGB;
    }
    const int result = option == nullptr
                           ? vips_image_write_to_file(held, utf8Path(path).c_str(), nullptr)
                           : vips_image_write_to_file(held, utf8Path(path).c_str(), option, TRUE, nullptr);
    EXPECT_EQ(result, 0) << vips_error_buffer();
    g_object_unref(held);
}

// The pixels of an image file of 8 bits.
inline TestImage<std::uint8_t> loadImage(const std::filesystem::path& path) {
    VipsImage* image = vips_image_new_from_file(utf8Path(path).c_str(), nullptr);
    EXPECT_NE(image, nullptr) << vips_error_buffer();
    if (image == nullptr) return {};
    std::size_t size = 0;
    void* pixels = vips_image_write_to_memory(image, &size);
    const auto* bytes = static_cast<const std::uint8_t*>(pixels);
    TestImage<std::uint8_t> loaded{vips_image_get_width(image),
                                   vips_image_get_height(image),
                                   vips_image_get_bands(image),
                                   {bytes, bytes + size}};
    g_free(pixels);
    g_object_unref(image);
    return loaded;
}

// One pixel of 8 bits a sample.
inline TestImage<std::uint8_t> pixel(std::vector<std::uint8_t> samples) {
    const int bands = static_cast<int>(samples.size());
    return {1, 1, bands, std::move(samples)};
}

// A header of a DDS file: 128 bytes with the two words of capabilities given.
inline std::string ddsHeader(std::string_view code, unsigned char capsByte) {
    std::string bytes(128, '\0');
    bytes.replace(0, 4, "DDS ");
    bytes.replace(84, code.size(), code);
    bytes[113] = static_cast<char>(capsByte);
    return bytes;
}

// A package, the exporter's own cube map, a scene folder, and a scene of materials in it.
class MaterialsTest : public testing::Test {
  protected:
    static void SetUpTestSuite() { startImageLibrary("host"); }

    MaterialsTest() {
        namespace fs = std::filesystem;
        folders_.pluginFolder = temporary_.path() / "Plugins";
        folders_.resourcesFolder = temporary_.path() / "package" / "resources";
        sources_ = temporary_.path() / "scene";
        fs::create_directories(folders_.resourcesFolder);
        fs::create_directories(folders_.pluginFolder / "tolvex" / "res");
        fs::create_directories(sources_);
        writeFile(folders_.pluginFolder / "tolvex" / "res" / "default.dds", "shipped");
        settings_.customEnvironmentMap = "default.dds";
        settings_.customReflectionMap = "default.dds";
    }

    // A map of the scene.
    SnapshotRef addMap(std::u16string className, std::u16string bitmap,
                       std::vector<std::optional<SnapshotRef>> subMaps = {}) {
        scene_.maps.push_back({std::move(className), std::move(bitmap), std::move(subMaps)});
        return static_cast<SnapshotRef>(scene_.maps.size() - 1);
    }
    SnapshotRef addBitmap(const std::string& name) {
        return addMap(u"Bitmap", (sources_ / name).u16string());
    }

    SnapshotMaterial& addStandard(std::u16string name) {
        SnapshotMaterial material;
        material.className = u"Standard";
        material.name = std::move(name);
        material.opacity = 1;
        return scene_.materials.emplace_back(std::move(material));
    }

    // A material with all parameters that the exporter reads, and no map.
    SnapshotMaterial& addPhysical(std::u16string name) {
        SnapshotMaterial material;
        material.className = u"Physical Material";
        material.name = std::move(name);
        material.properties = {{u"base_color_map", SnapshotMapProperty{}},
                               {u"base_color", host::Point4{0.5F, 0.25F, 0.125F, 0.75F}},
                               {u"transparency", 0.0F},
                               {u"bump_map", SnapshotMapProperty{}},
                               {u"roughness_map", SnapshotMapProperty{}},
                               {u"roughness", 0.5F},
                               {u"metalness_map", SnapshotMapProperty{}},
                               {u"metalness", 0.25F},
                               {u"emission_map", SnapshotMapProperty{}}};
        return scene_.materials.emplace_back(std::move(material));
    }
    static void setProperty(SnapshotMaterial& material, std::u16string_view name,
                            decltype(SnapshotProperty::value) value) {
        for (SnapshotProperty& property : material.properties) {
            if (property.name == name) property.value = std::move(value);
        }
    }

    // Makes the host of the scene as it is now; one node for each material.
    void makeHost() {
        for (std::size_t i = 0; i < scene_.materials.size(); ++i) {
            scene_.nodes.push_back({.name = u"n", .material = static_cast<SnapshotRef>(i)});
            scene_.roots.push_back(static_cast<SnapshotRef>(i));
        }
        host_ = makeSnapshotHost(scene_, sources_, [this](std::uint32_t time) { pauses_.push_back(time); });
    }
    host::IGameMaterial* material(int place) {
        return host_->GetIGameInterface()->GetTopLevelNode(place)->GetNodeMaterial();
    }
    MaterialVariant variant(host::IGameMaterial* material) const {
        return materialVariant(material, settings_);
    }
    MaterialWriterContext context() {
        if (!host_) makeHost();
        return {folders_, settings_, *host_, report_, placed_, progress_};
    }

    // What the report says, "code | subject | detail", in order.
    std::vector<std::string> told() const {
        std::vector<std::string> lines;
        for (const ReportEntry& entry : report_.entries()) {
            lines.push_back(std::string(message(entry.id).code) + " | " + entry.subject + " | " +
                            entry.detail);
        }
        return lines;
    }

    // The names of the files in the resources folder, in order.
    std::vector<std::string> placedNames() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folders_.resourcesFolder))
            names.push_back(utf8Path(entry.path().filename()));
        std::ranges::sort(names);
        return names;
    }
    std::string placedFile(const std::string& name) const {
        return readFile(folders_.resourcesFolder / name);
    }
    std::filesystem::path target(const std::string& name) const { return folders_.resourcesFolder / name; }

    TemporaryFolder temporary_;
    std::filesystem::path sources_;
    PackageFolders folders_;
    ExportSettings settings_;
    SceneSnapshot scene_;
    std::unique_ptr<host::Host> host_;
    std::vector<std::uint32_t> pauses_;
    Report report_;
    PlacedFiles placed_;
    NoProgress progress_;
};

}  // namespace velinor
