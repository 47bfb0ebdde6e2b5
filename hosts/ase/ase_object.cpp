#include "hosts/ase/ase_object.h"

#include <algorithm>
#include <string>

namespace velinor {
namespace {

using host::IGameObject;

struct ObjectKeyword {
    std::string_view keyword;
    std::int32_t type;
};
constexpr ObjectKeyword kObjects[] = {
    {"GEOMOBJECT", IGameObject::IGAME_MESH},     {"SHAPEOBJECT", IGameObject::IGAME_SPLINE},
    {"LIGHTOBJECT", IGameObject::IGAME_LIGHT},   {"CAMERAOBJECT", IGameObject::IGAME_CAMERA},
    {"HELPEROBJECT", IGameObject::IGAME_HELPER},
};

struct LightKeyword {
    std::string_view word;
    host::LightType type;
};
constexpr LightKeyword kLights[] = {
    {"Omni", host::OMNI_LGT},
    {"Target", host::SPOT_LGT},
    {"Free", host::SPOT_LGT},
    {"Directional", host::DIRECT_LGT},
};

bool isAnimation(std::string_view keyword) {
    constexpr std::string_view kAnimations[] = {"TM_ANIMATION", "MESH_ANIMATION", "LIGHT_ANIMATION",
                                                "CAMERA_ANIMATION", "NODE_VISIBILITY_TRACK"};
    return std::ranges::find(kAnimations, keyword) != std::end(kAnimations);
}

class ObjectReader {
  public:
    ObjectReader(AseLexer& lexer, AseProgress& progress) : lexer_(lexer), progress_(progress) {}

    AseObject read(const ObjectKeyword& kind) {
        object_.type = kind.type;
        lexer_.enter(kind.keyword);
        while (const auto keyword = lexer_.next())
            readPart(*keyword);
        if (object_.mesh) bringIntoNode(*object_.mesh, object_.objectToWorld.value_or(host::GMatrix()));
        if (object_.type == IGameObject::IGAME_LIGHT) finishLight();
        // The targets of cameras and lights stand in the file as geometry without a mesh.
        if (object_.type == IGameObject::IGAME_MESH && !object_.mesh)
            object_.type = IGameObject::IGAME_HELPER;
        return std::move(object_);
    }

  private:
    void readPart(std::string_view keyword) {
        if (keyword == "NODE_NAME") {
            object_.name = lexer_.text();
        } else if (keyword == "NODE_PARENT") {
            object_.parent = lexer_.text();
        } else if (keyword == "HELPER_CLASS") {
            object_.helperClass = lexer_.text();
        } else if (keyword == "NODE_TM") {
            readTransform();
        } else if (keyword == "MESH" && object_.type == IGameObject::IGAME_MESH) {
            readMesh();
        } else if (keyword == "LIGHT_TYPE") {
            lightType_ = lexer_.word();
        } else if (keyword == "LIGHT_SETTINGS" && object_.type == IGameObject::IGAME_LIGHT) {
            readLightSettings();
        } else if (keyword == "MATERIAL_REF") {
            constexpr std::int64_t kNone = -1;
            const std::int64_t number = lexer_.integer(kNone, INT32_MAX);
            if (number != kNone) object_.material = AseMaterialNumber{number, lexer_.place()};
        } else if (isAnimation(keyword)) {
            object_.isAnimated = true;
        }
    }

    // A camera or a light with a target has a second block for that, which bears another name.
    void readTransform() {
        host::GMatrix rows;
        std::optional<std::string_view> name;
        lexer_.enter("NODE_TM");
        while (const auto keyword = lexer_.next()) {
            if (*keyword == "NODE_NAME") {
                name = lexer_.text();
            } else if (keyword->size() == 7 && keyword->starts_with("TM_ROW") && (*keyword)[6] >= '0' &&
                       (*keyword)[6] <= '3') {
                host::GMatrix::Row& row = rows[(*keyword)[6] - '0'];
                for (std::size_t column = 0; column < 3; ++column)
                    row[column] = lexer_.number();
            }
        }
        const bool isOwn = !name || *name == object_.name;
        if (!isOwn && (isTransformOwn_ || object_.objectToWorld)) return;
        if (isOwn && isTransformOwn_) return;
        isTransformOwn_ = isOwn;
        object_.objectToWorld = rows;
    }

    void readMesh() {
        if (object_.mesh) return;
        // A transform that has not come yet may be one that mirrors.
        const bool mayMirror = !isTransformOwn_ || object_.objectToWorld->IsMirrored();
        object_.mesh = readAseMesh(lexer_, mayMirror ? AseNormals::kept : AseNormals::passedOver, progress_);
    }

    void readLightSettings() {
        if (object_.light) return;
        host::LightState& state = object_.light.emplace();
        lexer_.enter("LIGHT_SETTINGS");
        while (const auto keyword = lexer_.next()) {
            if (*keyword == "LIGHT_COLOR") {
                state.color.x = lexer_.number();
                state.color.y = lexer_.number();
                state.color.z = lexer_.number();
            } else if (*keyword == "LIGHT_INTENS") {
                state.intens = lexer_.number();
            } else if (*keyword == "LIGHT_FALLOFF") {
                hasNoCone_ = lexer_.number() == 0;
            }
        }
    }

    // A light without a cone that is called a spot is one of the host's other lights, a sky for instance.
    void finishLight() {
        if (!object_.light) object_.light.emplace();
        const auto* found = std::ranges::find(kLights, lightType_, &LightKeyword::word);
        if (found == std::end(kLights)) {
            object_.hasUnknownLight = true;
            return;
        }
        const bool isPoint = found->type == host::SPOT_LGT && hasNoCone_;
        object_.light->type = isPoint ? host::OMNI_LGT : found->type;
    }

    AseLexer& lexer_;
    AseProgress& progress_;
    AseObject object_;
    std::string_view lightType_;
    bool hasNoCone_ = false;
    bool isTransformOwn_ = false;
};

const ObjectKeyword* objectKeyword(std::string_view keyword) {
    const auto* found = std::ranges::find(kObjects, keyword, &ObjectKeyword::keyword);
    return found == std::end(kObjects) ? nullptr : found;
}

}  // namespace

bool isAseObject(std::string_view keyword) {
    return objectKeyword(keyword) != nullptr;
}

AseObject readAseObject(AseLexer& lexer, std::string_view keyword, AseProgress& progress) {
    return ObjectReader(lexer, progress).read(*objectKeyword(keyword));
}

}  // namespace velinor
