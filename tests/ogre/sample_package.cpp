#include "tests/ogre/sample_package.h"

#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <sstream>

#include "tools/ogre/dds_test_support.h"
#include "tools/ogre/mesh_binary_test_support.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

// Two by two pixels of one colour.
constexpr std::array<unsigned char, 74> kPng{
    0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A, 0x00, 0x00, 0x00, 0x0D, 0x49, 0x48, 0x44,
    0x52, 0x00, 0x00, 0x00, 0x02, 0x00, 0x00, 0x00, 0x02, 0x08, 0x06, 0x00, 0x00, 0x00, 0x72,
    0xB6, 0x0D, 0x24, 0x00, 0x00, 0x00, 0x11, 0x49, 0x44, 0x41, 0x54, 0x78, 0xDA, 0x63, 0x38,
    0x51, 0xA1, 0xF1, 0x1F, 0x84, 0x19, 0x60, 0x0C, 0x00, 0x55, 0xE4, 0x09, 0x9D, 0x58, 0x11,
    0xE5, 0x51, 0x00, 0x00, 0x00, 0x00, 0x49, 0x45, 0x4E, 0x44, 0xAE, 0x42, 0x60, 0x82};

std::string png() {
    return {kPng.begin(), kPng.end()};
}

// Two by two grey pixels, uncompressed, 24 bits each.
std::string tga() {
    std::string header(18, '\0');
    header[2] = 2;
    header[12] = header[14] = 2;
    header[16] = 24;
    return header + std::string(12, '\x70');
}

std::string unit(const std::string& name, const std::string& texture) {
    return "\t\t\ttexture_unit " + name + "\n\t\t\t{\n\t\t\t\ttexture_alias " + name + "\n\t\t\t\ttexture " +
           texture + "\n\t\t\t\tmax_anisotropy 8\n\t\t\t}\n\n";
}

std::string material(const std::string& name) {
    return "material " + name +
           "\n{\n\ttechnique glsl\n\t{\n\t\tpass qen_pbs\n\t\t{\n\t\t\tscene_blend alpha_blend\n"
           "\t\t\t// depth_write off\n\t\t\tcull_hardware none\n\t\t\tcull_software none\n\n"
           "\t\t\tvertex_program_ref physicallybased_vp\n\t\t\t{\n"
           "\t\t\t\tparam_named texture_offset float2 1.000000 1.000000\n\t\t\t\tparam_named tile_count "
           "float 1\n"
           "\t\t\t\tparam_named tile_count_metallic float 1\n\t\t\t\tparam_named tile_count_normal float 1\n"
           "\t\t\t\tparam_named tile_count_roughness float 1\n\t\t\t}\n\n"
           "\t\t\tfragment_program_ref physicallybased_fp\n\t\t\t{\n"
           "\t\t\t\tparam_named refl_blur_bias float 0.300000\n\t\t\t\tparam_named reflection_power float "
           "0.500000\n"
           "\t\t\t\tparam_named roughness_bias float 0.000000\n\t\t\t\tparam_named spec_multiplier float "
           "0.500000\n"
           "\t\t\t\tparam_named surface_reflectivity float2 1.000000 1.000000\n\t\t\t}\n\n" +
           unit("diffuse_map", "wood.png") + unit("normal_map", "grey.tga") +
           unit("roughness_map", "grey.tga") + unit("metallic_map", "grey.tga") +
           "\t\t\ttexture_unit reflection_map\n\t\t\t{\n\t\t\t\ttexture_alias reflection_map\n"
           "\t\t\t\tcubic_texture sky.dds combinedUVW\n\t\t\t\tmax_anisotropy 8\n"
           "\t\t\t\tenv_map cubic_reflection\n\t\t\t}\n\n" +
           unit("light_map", "grey.tga") + unit("ambientocclusion_map", "grey.tga") + "\t\t}\n\t}\n}\n\n";
}

constexpr const char* kSky =
    "material FXUnlitSkyboxCubic\n{\n\ttechnique\n\t{\n\t\tpass\n\t\t{\n\t\t\tdepth_check "
    "on\n\t\t\tdepth_write off\n\n"
    "\t\t\ttexture_unit\n\t\t\t{\n\t\t\t\tcubic_texture sky.dds combinedUVW\n\t\t\t\ttex_address_mode clamp\n"
    "\t\t\t}\n\t\t}\n\t}\n}\n\n";

std::string node(const std::string& mesh) {
    return "\t<node\n\t\torientation={{ w: -1.000000, x: 0.000000, y: 0.000000, z: 0.000000 }}\n"
           "\t\tposition={{ x: 0.000000, y: 0.000000, z: 0.000000 }}\n"
           "\t\tscale={{ x: 1.000000, y: 1.000000, z: 1.000000 }}>\n"
           "\t\t<mesh\n\t\t\t{...{ url: '" +
           mesh + "' }}>\n\t\t</mesh>\n\t</node>\n";
}

constexpr const char* kWhere = R"({"camera": {"orientation": {"w": 1.0, "x": 0.0, "y": 0.0, "z": 0.0},
    "position": {"x": 0.0, "y": 0.0, "z": 0.0}}, "environment": {"ambient": {"a": 1, "b": 0.2, "g": 0.2, "r": 0.2},
    "skybox": {"material": "FXUnlitSkyboxCubic"}}}
)";

}  // namespace

std::string readFile(const fs::path& file) {
    std::ostringstream content;
    content << std::ifstream(file, std::ios::binary).rdbuf();
    return std::move(content).str();
}

void writeFile(const fs::path& file, const std::string& content) {
    std::ofstream(file, std::ios::binary) << content;
}

void replaceInFile(const fs::path& file, const std::string& old, const std::string& replacement) {
    std::string content = readFile(file);
    const std::size_t at = content.find(old);
    ASSERT_NE(at, std::string::npos) << "\"" << old << "\" is not in " << file;
    writeFile(file, content.replace(at, old.size(), replacement));
}

void writeSamplePackage(const fs::path& folder) {
    const fs::path resources = folder / "resources";
    fs::create_directories(resources);
    writeFile(folder / "index.jsx", "<root>\n" + node("Square.mesh") + node("Big Box.mesh") + "</root>\n\n");
    writeFile(folder / "where.json", kWhere);
    TestMesh bare;
    bare.submeshes = {{"default", {0, 2, 1}}};
    writeFile(resources / "Square.mesh", TestMesh().bytes());
    writeFile(resources / "Big_Box.mesh", bare.bytes());
    writeFile(resources / "Wood.material", material("Wood"));
    writeFile(resources / "Metal.material", material("Metal"));
    writeFile(resources / "FXUnlitSkyboxCubic.material", kSky);
    writeFile(resources / "wood.png", png());
    writeFile(resources / "grey.tga", tga());
    writeFile(resources / "sky.dds", ddsCubeMap(8));
}

}  // namespace velinor
