// The materials of real scene files, by the model collection.
#include "base/text.h"
#include "hosts/assimp/assimp_test_support.h"
#include "tests/support/platform_text.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

class ModelMaterials : public ModelTest {
  protected:
    // Reads a model, its images written into a folder of the test.
    void read(const char* name, std::vector<fs::path> assetFolders = {}) {
        read_ = readScene(models() / name, {{}, images_.path(), std::move(assetFolders)});
        EXPECT_EQ(faultOf(read_.scene), "");
    }

    const SnapshotMaterial& material(std::u16string_view name) const {
        for (const SnapshotMaterial& material : read_.scene.materials) {
            if (material.name == name) return material;
        }
        ADD_FAILURE() << "no such material: " << toUtf8(name);
        static const SnapshotMaterial none;
        return none;
    }

    template <typename Value>
    Value value(const SnapshotMaterial& from, std::u16string_view name) const {
        for (const SnapshotProperty& property : from.properties) {
            if (property.name == name && std::holds_alternative<Value>(property.value))
                return std::get<Value>(property.value);
        }
        ADD_FAILURE() << "no such parameter: " << toUtf8(name);
        return {};
    }

    // The file of a map, as it stands in the scene; of a "Normal Bump" that of its "Bitmap".
    std::u16string bitmap(std::optional<SnapshotRef> map) const {
        while (map && !read_.scene.maps.at(*map).subMaps.empty())
            map = read_.scene.maps[*map].subMaps.front();
        return map ? read_.scene.maps.at(*map).bitmap : u"";
    }
    std::u16string bitmap(const SnapshotMaterial& from, std::u16string_view name) const {
        return bitmap(value<SnapshotMapProperty>(from, name).map);
    }

    // How many bitmaps name a file that is there, and how many do not.
    std::pair<int, int> found() const {
        int there = 0;
        int missing = 0;
        for (const SnapshotMap& map : read_.scene.maps) {
            if (map.className != u"Bitmap") continue;
            ++(fs::is_regular_file(toPath(map.bitmap)) ? there : missing);
        }
        return {there, missing};
    }
    using Found = std::pair<int, int>;

    ReadScene read_;
    ScratchFolder images_;
};

TEST_F(ModelMaterials, StandardOfMaxWithAnEmbeddedBitmap) {
    read("FBX/embedded_ascii/box.FBX");
    const SnapshotMaterial& material = this->material(u"03 - Default");
    EXPECT_NEAR(material.diffuse.x, 0.588235F, 1e-6F);
    EXPECT_NEAR(material.glossiness, 0.1F, 1e-6F);
    EXPECT_EQ(material.opacity, 1);
    ASSERT_EQ(material.textureMaps.size(), 1U);
    EXPECT_EQ(material.textureMaps[0].slot, 1);
    EXPECT_EQ(toPath(bitmap(material.textureMaps[0].map)), images_.path() / "uv_test.png");
    EXPECT_EQ(fs::file_size(images_.path() / "uv_test.png"), 439176U);
    EXPECT_EQ(found(), (Found{1, 0}));
    EXPECT_TRUE(read_.notes.notes().empty());
}

TEST_F(ModelMaterials, PbrOfMaxWithMissingBitmaps) {
    read("FBX/maxPbrMaterial_metalRough.fbx");
    const SnapshotMaterial& material = this->material(u"PBR Material");
    EXPECT_EQ(value<host::Point4>(material, u"base_color"), (host::Point4{0, 1, 1, 1}));
    EXPECT_EQ(value<float>(material, u"transparency"), 0);
    EXPECT_EQ(value<float>(material, u"roughness"), 0.5F);
    EXPECT_EQ(value<float>(material, u"metalness"), 0.25F);
    EXPECT_EQ(bitmap(material, u"base_color_map"), u"Textures\\albedo.png");
    EXPECT_EQ(bitmap(material, u"bump_map"), u"Textures\\normal.png");
    EXPECT_EQ(bitmap(material, u"roughness_map"), u"Textures\\roughness.png");
    EXPECT_EQ(bitmap(material, u"metalness_map"), u"Textures\\metalness.png");
    EXPECT_EQ(bitmap(material, u"emission_map"), u"Textures\\emission.png");
    EXPECT_EQ(read_.scene.maps.size(), 6U) << "five bitmaps, and a Normal Bump around one";
    EXPECT_EQ(found(), (Found{0, 5}));
    EXPECT_TRUE(read_.isNoted("PBR Material", "\"Textures\\albedo.png\" is missing"));
}

TEST_F(ModelMaterials, PbrOfMaxByGlossiness) {
    read("FBX/maxPbrMaterial_specGloss.fbx");
    const SnapshotMaterial& material = this->material(u"02 - Default");
    EXPECT_NEAR(value<float>(material, u"roughness"), 0.67F, 1e-6F);
    EXPECT_EQ(value<float>(material, u"metalness"), 0);
    EXPECT_EQ(bitmap(material, u"roughness_map"), u"Textures\\glossiness.png") << "missing, so not inverted";
}

TEST_F(ModelMaterials, LambertOfMaya) {
    read("FBX/cubes_with_mirroring_and_pivot.fbx");
    EXPECT_EQ(material(u"Mat_Green").diffuse, (host::Point3{0, 0.8F, 0}));
    EXPECT_EQ(material(u"Mat_Red").diffuse, (host::Point3{0.8F, 0, 0}));
    EXPECT_EQ(material(u"Mat_Red").opacity, 1);
    EXPECT_EQ(found(), (Found{0, 0}));
}

TEST_F(ModelMaterials, WindowsPathsOfBlenderAreFoundInAnAssetFolder) {
    read("FBX/spider.fbx");
    EXPECT_EQ(found(), (Found{0, 4}));
    read("FBX/spider.fbx", {models() / "OBJ"});
    EXPECT_EQ(found(), (Found{4, 0}));
    const SnapshotMaterial& skin = material(u"Skin");
    EXPECT_NEAR(skin.diffuse.x, 0.827451F, 1e-6F);
    ASSERT_EQ(skin.textureMaps.size(), 1U);
    EXPECT_EQ(toPath(bitmap(skin.textureMaps[0].map)), models() / "OBJ/wal67ar_small.jpg");
}

TEST_F(ModelMaterials, GlbWithoutTextures) {
    read("glTF2/2CylinderEngine-glTF-Binary/2CylinderEngine.glb");
    const SnapshotMaterial& material = this->material(u"Material_17");
    EXPECT_EQ(value<host::Point4>(material, u"base_color"), (host::Point4{0.85F, 0.561F, 0, 1}));
    EXPECT_EQ(value<float>(material, u"roughness"), 1);
    EXPECT_EQ(value<float>(material, u"metalness"), 0);
    EXPECT_EQ(found(), (Found{0, 0}));
}

TEST_F(ModelMaterials, GltfWithAPackedImage) {
    read("glTF2/ClearCoat-glTF/ClearCoatTest.gltf");
    const SnapshotMaterial& plain = material(u"Simple_Base");
    EXPECT_EQ(value<host::Point4>(plain, u"base_color"), (host::Point4{0.5F, 0.02F, 0.01F, 1}));
    EXPECT_EQ(value<float>(plain, u"roughness"), 0.44F);
    const SnapshotMaterial& rough = material(u"RoughVariations_Coating");
    EXPECT_EQ(toPath(bitmap(rough, u"roughness_map")), images_.path() / "RoughnessStripes-roughness.png");
    EXPECT_EQ(toPath(bitmap(rough, u"metalness_map")), images_.path() / "RoughnessStripes-metalness.png");
    EXPECT_EQ(lastPathComponent(bitmap(material(u"BaseNorm_Base"), u"bump_map")), u"RibsNormal.png");
    EXPECT_EQ(lastPathComponent(bitmap(material(u"LabelMaterial"), u"emission_map")), u"ClearCoatLabels.png");
    EXPECT_EQ(found().second, 0);
    EXPECT_TRUE(read_.isNoted(utf8Path(models() / "glTF2/ClearCoat-glTF/ClearCoatTest.gltf"),
                              "6 materials (\"Simple_Coated\", \"Partial_Coated\", "
                              "\"RoughVariations_Coated\", ...) have a clear coat"));
}

TEST_F(ModelMaterials, GlbWithAnUnnamedImage) {
    read("glTF2/BoxTextured-glTF-Binary/BoxTextured.glb");
    EXPECT_EQ(toPath(bitmap(material(u"Texture"), u"base_color_map")), images_.path() / "image0.png");
    EXPECT_EQ(fs::file_size(images_.path() / "image0.png"), 2433U);
}

TEST_F(ModelMaterials, GltfWithTextureTransformsIsNoted) {
    const std::string file = utf8Path(models() / "glTF2/textureTransform/TextureTransformTest.gltf");
    read("glTF2/textureTransform/TextureTransformTest.gltf");
    EXPECT_TRUE(read_.isNoted(file, "moved, turned or scaled on the surface"));
}

TEST_F(ModelMaterials, ColladaOfMaxWithPathsUpwards) {
    read("Collada/kwxport_test_vcolors.dae");
    const SnapshotMaterial& bottom = material(u"bottom");
    EXPECT_EQ(bottom.diffuse, (host::Point3{1, 1, 1}));
    EXPECT_NEAR(bottom.glossiness, 0.228923F, 1e-6F);
    ASSERT_EQ(bottom.textureMaps.size(), 1U);
    EXPECT_EQ(toPath(bitmap(bottom.textureMaps[0].map)), models() / "X/bottom.tga");
    EXPECT_EQ(found(), (Found{3, 0}));
}

TEST_F(ModelMaterials, ColladaOfMaxWithoutTextures) {
    read("Collada/teapot_instancenodes.DAE");
    const SnapshotMaterial& material = this->material(u"ColorMaterial_1C1CB100");
    EXPECT_NEAR(material.diffuse.z, 0.694118F, 1e-6F);
    EXPECT_NEAR(material.glossiness, 0.1F, 1e-6F);
    EXPECT_EQ(found(), (Found{0, 0}));
}

TEST_F(ModelMaterials, ColladaWithOpacityOfNothingIsOpaque) {
    read("Collada/teapots.DAE");
    ASSERT_FALSE(read_.scene.materials.empty());
    for (const SnapshotMaterial& material : read_.scene.materials) {
        EXPECT_EQ(material.opacity, 1) << toUtf8(material.name);
        EXPECT_NEAR(material.glossiness, 0.1F, 1e-6F) << toUtf8(material.name);
    }
}

TEST_F(ModelMaterials, ThreeDsWithNamesInCapitals) {
    read("3DS/test1.3ds");
    const SnapshotMaterial& material = this->material(u"1 - Default");
    EXPECT_NEAR(material.diffuse.x, 0.588235F, 1e-6F);
    EXPECT_EQ(material.opacity, 1);
    ASSERT_EQ(material.textureMaps.size(), 1U);
    // The name in the file is "CWALL02.JPG", which is the same file's on Windows.
    const char* name = kIsWindows ? "CWALL02.JPG" : "CWALL02.jpg";
    EXPECT_EQ(utf8Path(toPath(bitmap(material.textureMaps[0].map))),
              asPathText(utf8Path(models() / "3DS" / name)));
    EXPECT_EQ(found(), (Found{3, 0}));
}

TEST_F(ModelMaterials, ThreeDsWithOpacity) {
    read("3DS/cubes_with_alpha.3DS");
    float least = 1;
    for (const SnapshotMaterial& material : read_.scene.materials)
        least = std::min(least, material.opacity);
    EXPECT_NEAR(least, 0.83F, 0.2F);
    EXPECT_LT(least, 1);
}

TEST_F(ModelMaterials, ObjWithBackslashes) {
    read("OBJ/spider.obj");
    EXPECT_NEAR(material(u"Skin").diffuse.y, 0.792157F, 1e-6F);
    EXPECT_EQ(toPath(bitmap(material(u"Skin").textureMaps.at(0).map)), models() / "OBJ/wal67ar_small.jpg");
    EXPECT_EQ(found(), (Found{5, 0}));
}

TEST_F(ModelMaterials, EmbeddedImagesAreWrittenIntoTheImageFolder) {
    for (const char* name :
         {"FBX/box_orphant_embedded_texture.fbx", "glTF/BoxTextured-glTF-Embedded/BoxTextured.gltf",
          "glTF2/BoxTextured-glTF-Embedded/BoxTextured.gltf"}) {
        read(name);
        EXPECT_EQ(found(), (Found{1, 0})) << name;
        for (const SnapshotMap& map : read_.scene.maps)
            EXPECT_EQ(toPath(map.bitmap).parent_path(), images_.path()) << name;
    }
}

}  // namespace
}  // namespace velinor
