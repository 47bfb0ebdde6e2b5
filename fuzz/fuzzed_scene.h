// A scene of the import library made of any bytes: as its readers may leave it after a damaged file, within
// what the library's own destructors stand. Nodes are a tree, arrays are as long as they say or null, texts
// end where they say.
#pragma once

#include <assimp/scene.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velinor {

// Takes numbers and texts off the front of bytes; zeros at their end.
class FuzzBytes {
  public:
    explicit FuzzBytes(std::string_view bytes) : rest_(bytes) {}

    bool isEmpty() const { return rest_.empty(); }

    std::uint8_t byte() {
        if (rest_.empty()) return 0;
        const auto value = static_cast<std::uint8_t>(rest_.front());
        rest_.remove_prefix(1);
        return value;
    }

    // Less than `end`.
    unsigned below(unsigned end) { return byte() % end; }

    // One time in `times`; never at the end of the bytes.
    bool once(unsigned times) { return !rest_.empty() && below(times) == times - 1; }

    template <typename Number>
    Number raw() {
        std::array<char, sizeof(Number)> bytes{};
        for (char& c : bytes)
            c = static_cast<char>(byte());
        Number number{};
        std::memcpy(&number, bytes.data(), sizeof number);
        return number;
    }

    // Mostly small numbers, now and then one of the strangest or any.
    float number() {
        constexpr float kStrange[] = {std::numeric_limits<float>::quiet_NaN(),
                                      std::numeric_limits<float>::infinity(),
                                      -std::numeric_limits<float>::infinity(),
                                      std::numeric_limits<float>::max(),
                                      std::numeric_limits<float>::lowest(),
                                      std::numeric_limits<float>::denorm_min(),
                                      -0.0F};
        const unsigned kind = below(8);
        if (kind == 7) return kStrange[below(std::size(kStrange))];
        if (kind == 6) return raw<float>();
        return static_cast<float>(static_cast<std::int8_t>(byte())) / 4;
    }

    std::string text(std::size_t longest) {
        const std::size_t size = std::min({std::size_t{byte()}, longest, rest_.size()});
        std::string text(rest_.substr(0, size));
        rest_.remove_prefix(size);
        return text;
    }

  private:
    std::string_view rest_;
};

// Builds one scene.
class FuzzedScene {
  public:
    explicit FuzzedScene(FuzzBytes& bytes) : bytes_(bytes) {}

    std::unique_ptr<aiScene> build() {
        auto scene = std::make_unique<aiScene>();
        fill(scene->mMeshes, scene->mNumMeshes, 5, [this] { return mesh(); });
        fill(scene->mMaterials, scene->mNumMaterials, 4, [this] { return material(); });
        fill(scene->mTextures, scene->mNumTextures, 3, [this] { return texture(); });
        fill(scene->mLights, scene->mNumLights, 4, [this] { return light(); });
        fill(scene->mCameras, scene->mNumCameras, 3, [this] { return camera(); });
        if (bytes_.once(2)) scene->mMetaData = metadata(kSceneKeys, 1);
        if (!bytes_.once(16)) scene->mRootNode = tree();
        return scene;
    }

  private:
    static constexpr const char* kNames[] = {"",
                                             "A",
                                             "B",
                                             "ROOT",
                                             "<root>",
                                             "A_$AssimpFbx$_PreRotation",
                                             "DefaultMaterial",
                                             "%%%DEFAULT",
                                             "a\nb",
                                             "x&quot;&lf;",
                                             "\xFF\xC3",
                                             "*0",
                                             "*1",
                                             "*9\n",
                                             "wood.png",
                                             "..\\wood.png",
                                             "UVChannel_2",
                                             "extras"};
    static constexpr const char* kSceneKeys[] = {"UpAxis",         "FrontAxis",     "CoordAxis",
                                                 "UpAxisSign",     "FrontAxisSign", "CoordAxisSign",
                                                 "UnitScaleFactor"};
    static constexpr const char* kNodeKeys[] = {
        "UserProperties",      "UDP3DSMAX",           "Show",  "IsNull", "extensions", "visible",
        "KHR_node_visibility", "KHR_lights_punctual", "light", "extras", "Collada_id", "qv_wt_res_w"};
    static constexpr const char* kMaterialKeys[] = {"?mat.name",
                                                    "$tex.file",
                                                    "$tex.uvtrafo",
                                                    "$tex.uvwsrc",
                                                    "$clr.diffuse",
                                                    "$clr.base",
                                                    "$clr.specular",
                                                    "$clr.emissive",
                                                    "$mat.opacity",
                                                    "$mat.shininess",
                                                    "$mat.roughnessFactor",
                                                    "$mat.metallicFactor",
                                                    "$mat.glossinessFactor",
                                                    "$mat.gltf.alphaMode",
                                                    "$mat.twosided",
                                                    "$mat.gltf.unlit",
                                                    "$mat.clearcoat.factor",
                                                    "$raw.DiffuseColor|file",
                                                    "$raw.DiffuseColor|uvtrafo",
                                                    "$raw.3dsMax|ClassIDa",
                                                    "$raw.3dsMax|ClassIDb",
                                                    "$raw.3dsMax|main|roughness",
                                                    "$raw.3dsMax|main|roughness_map|file",
                                                    "$raw.3dsMax|main|useGlossiness",
                                                    "$raw.3dsMax|Parameters|base_color"};
    static constexpr std::uint32_t kClassNumbers[] = {0x3D6B1CEC, 0xDEADC001, 0xD00F1E00, 0xBE77E500,
                                                      0x38420192};

    // An array of pointers, some of them null; or none in spite of its size.
    template <typename Item, typename Make>
    void fill(Item**& items, unsigned& count, unsigned end, Make make) {
        count = bytes_.below(end);
        if (count == 0 || bytes_.once(16)) return;
        items = new Item* [count] {};
        for (unsigned i = 0; i < count; ++i) {
            if (!bytes_.once(16)) items[i] = make();
        }
    }

    std::string anyText() {
        const unsigned kind = bytes_.below(std::size(kNames) + 2);
        if (kind < std::size(kNames)) return kNames[kind];
        if (kind == std::size(kNames)) return bytes_.text(40);
        return std::string(1200, static_cast<char>(bytes_.byte()));
    }

    aiString string() {
        aiString text;
        const std::string bytes = anyText();
        text.length = static_cast<ai_uint32>(std::min<std::size_t>(bytes.size(), MAXLEN - 1));
        std::memcpy(text.data, bytes.data(), text.length);
        text.data[text.length] = '\0';
        return text;
    }

    aiVector3D vector() {
        const float x = bytes_.number();
        const float y = bytes_.number();
        return {x, y, bytes_.number()};
    }

    aiVector3D* vectors(unsigned count) {
        auto* const array = new aiVector3D[count];
        for (unsigned i = 0; i < count; ++i)
            array[i] = vector();
        return array;
    }

    // Mostly one that is there.
    unsigned index(unsigned count) { return bytes_.once(12) ? bytes_.raw<unsigned>() : bytes_.below(count); }

    aiMesh* mesh() {
        auto* const mesh = new aiMesh;
        mesh->mName = string();
        mesh->mMaterialIndex = index(4);
        mesh->mNumVertices = bytes_.below(8);
        if (!bytes_.once(16)) mesh->mVertices = vectors(mesh->mNumVertices);
        if (bytes_.once(2)) mesh->mNormals = vectors(mesh->mNumVertices);
        for (unsigned set = 0; set < 2; ++set) {
            if (!bytes_.once(3)) continue;
            mesh->mTextureCoords[set] = vectors(mesh->mNumVertices);
            if (bytes_.once(3)) mesh->SetTextureCoordsName(set, string());
        }
        if (bytes_.once(6)) mesh->mColors[0] = new aiColor4D[mesh->mNumVertices];
        mesh->mNumFaces = bytes_.below(8);
        if (!bytes_.once(16)) addFaces(*mesh);
        return mesh;
    }

    void addFaces(aiMesh& mesh) {
        mesh.mFaces = new aiFace[mesh.mNumFaces];
        for (unsigned i = 0; i < mesh.mNumFaces; ++i) {
            aiFace& face = mesh.mFaces[i];
            face.mNumIndices = bytes_.once(8) ? bytes_.below(6) : 3;
            if (bytes_.once(32)) continue;
            face.mIndices = new unsigned[face.mNumIndices];
            for (unsigned k = 0; k < face.mNumIndices; ++k)
                face.mIndices[k] = index(7);
        }
    }

    aiMaterial* material() {
        auto* const material = new aiMaterial;
        for (unsigned count = bytes_.below(12); count > 0; --count)
            addProperty(*material);
        return material;
    }

    void addProperty(aiMaterial& material) {
        const char* const key = kMaterialKeys[bytes_.below(std::size(kMaterialKeys))];
        const unsigned kind = bytes_.once(2) ? bytes_.below(aiTextureType_TRANSMISSION + 1) : 0;
        const unsigned number = bytes_.once(4) ? bytes_.below(3) : 0;
        switch (bytes_.below(4)) {
            case 0: {
                const aiString value = string();
                material.AddProperty(&value, key, kind, number);
                break;
            }
            case 1: {
                std::array<float, 5> values{};
                for (float& value : values)
                    value = bytes_.number();
                material.AddProperty(values.data(), bytes_.below(5) + 1, key, kind, number);
                break;
            }
            case 2: {
                const int value =
                    bytes_.once(2) ? static_cast<int>(kClassNumbers[bytes_.below(5)]) : bytes_.byte();
                material.AddProperty(&value, 1, key, kind, number);
                break;
            }
            default:
                addRawProperty(material, key, kind, number);
        }
    }

    // Bytes under any type.
    void addRawProperty(aiMaterial& material, const char* key, unsigned kind, unsigned number) {
        const std::string bytes = "x" + bytes_.text(24);
        const auto type = static_cast<aiPropertyTypeInfo>(bytes_.below(6));
        material.AddBinaryProperty(bytes.data(), static_cast<unsigned>(bytes.size()), key, kind, number,
                                   type);
    }

    aiTexture* texture() {
        auto* const texture = new aiTexture;
        texture->mFilename = string();
        texture->mHeight = bytes_.below(3);
        texture->mWidth = bytes_.below(9);
        if (bytes_.once(8)) return texture;
        const std::size_t texels = std::size_t{texture->mWidth} * std::max(texture->mHeight, 1U) + 1;
        texture->pcData = new aiTexel[texels];
        for (std::size_t i = 0; i < texels; ++i)
            texture->pcData[i] = bytes_.raw<aiTexel>();
        for (char& c : texture->achFormatHint)
            c = static_cast<char>(bytes_.byte());
        return texture;
    }

    aiColor3D colour() {
        const aiVector3D v = vector();
        return {v.x, v.y, v.z};
    }

    aiLight* light() {
        auto* const light = new aiLight;
        light->mName = string();
        light->mType = static_cast<aiLightSourceType>(bytes_.below(6));
        light->mPosition = vector();
        light->mDirection = vector();
        light->mUp = vector();
        light->mColorDiffuse = colour();
        return light;
    }

    aiCamera* camera() {
        auto* const camera = new aiCamera;
        camera->mName = string();
        camera->mPosition = vector();
        camera->mLookAt = vector();
        camera->mUp = vector();
        return camera;
    }

    template <std::size_t N>
    aiMetadata* metadata(const char* const (&keys)[N], int depth) {
        auto* const data = new aiMetadata;
        data->mNumProperties = bytes_.below(5);
        data->mKeys = new aiString[data->mNumProperties];
        data->mValues = new aiMetadataEntry[data->mNumProperties]{};
        for (unsigned i = 0; i < data->mNumProperties; ++i) {
            data->mKeys[i] = bytes_.once(6) ? string() : aiString(keys[bytes_.below(N)]);
            fillEntry(data->mValues[i], keys, depth);
        }
        return data;
    }

    template <std::size_t N>
    void fillEntry(aiMetadataEntry& entry, const char* const (&keys)[N], int depth) {
        entry.mType = static_cast<aiMetadataType>(bytes_.below(9));
        if (bytes_.once(16)) return;
        switch (entry.mType) {
            case AI_BOOL:
                entry.mData = new bool(bytes_.once(2));
                break;
            case AI_INT32:
                entry.mData =
                    new std::int32_t(bytes_.once(2) ? bytes_.raw<std::int32_t>() : bytes_.byte() % 5 - 1);
                break;
            case AI_UINT64:
                entry.mData = new std::uint64_t(bytes_.once(2) ? bytes_.raw<std::uint64_t>() : bytes_.byte());
                break;
            case AI_FLOAT:
                entry.mData = new float(bytes_.number());
                break;
            case AI_DOUBLE:
                entry.mData = new double(bytes_.once(2) ? bytes_.raw<double>() : bytes_.number());
                break;
            case AI_AISTRING:
                entry.mData =
                    new aiString(bytes_.once(2) ? aiString("a=1\r\nb = 2.5\n extras=3\r\n=4") : string());
                break;
            case AI_AIVECTOR3D:
                entry.mData = new aiVector3D(vector());
                break;
            case AI_AIMETADATA:
                if (depth < 4) entry.mData = metadata(keys, depth + 1);
                break;
            default:
                break;
        }
    }

    aiMatrix4x4 matrix() {
        aiMatrix4x4 matrix;
        if (bytes_.once(2)) {
            for (unsigned i = 0; i < 16; ++i)
                matrix[i / 4][i % 4] = bytes_.number();
        } else {
            matrix.a4 = bytes_.number();
        }
        return matrix;
    }

    aiNode* node() {
        auto* const node = new aiNode;
        node->mName = string();
        node->mTransformation = matrix();
        node->mNumMeshes = bytes_.below(4);
        if (!bytes_.once(16)) {
            node->mMeshes = new unsigned[node->mNumMeshes];
            for (unsigned i = 0; i < node->mNumMeshes; ++i)
                node->mMeshes[i] = index(5);
        }
        if (bytes_.once(2)) node->mMetaData = metadata(kNodeKeys, 0);
        return node;
    }

    // Nodes one after the other, each the child of one before it; here and there a hole.
    aiNode* tree() {
        std::vector<aiNode*> nodes{node()};
        std::vector<std::vector<aiNode*>> children(1);
        for (unsigned count = bytes_.below(12); count > 0 && !bytes_.isEmpty(); --count) {
            const unsigned parent = bytes_.below(static_cast<unsigned>(nodes.size()));
            if (bytes_.once(64)) {
                children[parent].push_back(nullptr);
                continue;
            }
            nodes.push_back(node());
            nodes.back()->mParent = nodes[parent];
            children[parent].push_back(nodes.back());
            children.emplace_back();
        }
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            if (children[i].empty()) continue;
            nodes[i]->mNumChildren = static_cast<unsigned>(children[i].size());
            nodes[i]->mChildren = new aiNode*[children[i].size()];
            std::ranges::copy(children[i], nodes[i]->mChildren);
        }
        return nodes.front();
    }

    FuzzBytes& bytes_;
};

}  // namespace velinor
