// Physical materials that 3ds Max writes into FBX. Each parameter stands there under its class's own name, in
// properties that the library passes on as "$raw." and the name. The library's own idea of them is not used:
// its colour is multiplied by the weight of the colour, and its roughness may be negative.
#include <algorithm>

#include "hosts/assimp/assimp_text.h"
#include "hosts/assimp/physical_material.h"

namespace velinor {
namespace {

enum class Kind { physical, pbr, gltf, openPbr };

struct FbxClass {
    std::uint32_t a = 0;
    std::uint32_t b = 0;
    Kind kind = Kind::physical;
};

constexpr FbxClass kClasses[] = {
    {0x3D6B1CEC, 0xDEADC001, Kind::physical},  // Physical Material
    {0xD00F1E00, 0xBE77E500, Kind::pbr},       // PBR Material (Metal/Rough)
    {0xD00F1E00, 0x01DBAD33, Kind::pbr},       // PBR Material (Spec/Gloss)
    {0x38420192, 0x45FE4E1B, Kind::gltf},      // glTF Material
    {0xF1551E33, 0x37FB1337, Kind::openPbr},   // OpenPBR Material
};

// Names of one parameter, the first that is there counts.
using Names = std::vector<std::string_view>;

struct ParameterNames {
    std::vector<std::string_view> blocks;
    Names baseColor;
    Names baseColorMap;
    Names bumpMap;
    Names roughness;
    Names roughnessMap;
    Names glossiness;
    Names glossinessMap;
    Names metalness;
    Names metalnessMap;
    Names emissionMap;
    Names occlusionMap;
    Names opacityMap;
};

// Without regard to case: versions of the program differ in it. The names of OpenPBR are those of its
// standard and of the older classes: no file of it was at hand.
const ParameterNames& namesOf(Kind kind) {
    static const ParameterNames physical{{"3dsMax|Parameters|"},
                                         {"base_color"},
                                         {"base_color_map"},
                                         {"bump_map"},
                                         {"roughness"},
                                         {"roughness_map"},
                                         {},
                                         {},
                                         {"metalness"},
                                         {"metalness_map"},
                                         {"emission_map"},
                                         {},
                                         {"cutout_map"}};
    static const ParameterNames pbr{
        {"3dsMax|main|"},   {"baseColor"},  {"base_color_map"}, {"norm_map"},  {"roughness"},
        {"roughness_map"},  {"glossiness"}, {"glossiness_map"}, {"metalness"}, {"metalness_map"},
        {"emit_color_map"}, {"ao_map"},     {"opacity_map"}};
    static const ParameterNames gltf{{"3dsMax|main|"},
                                     {"baseColor"},
                                     {"baseColorMap"},
                                     {"normalMap"},
                                     {"roughness"},
                                     {"roughnessMap"},
                                     {},
                                     {},
                                     {"metalness"},
                                     {"metalnessMap"},
                                     {"emissionMap"},
                                     {"ambientOcclusionMap"},
                                     {"alphaMap"}};
    static const ParameterNames openPbr{{"3dsMax|Parameters|", "3dsMax|main|"},
                                        {"base_color"},
                                        {"base_color_map"},
                                        {"geometry_normal_map", "normal_map", "bump_map"},
                                        {"specular_roughness", "roughness"},
                                        {"specular_roughness_map", "roughness_map"},
                                        {},
                                        {},
                                        {"base_metalness", "metalness"},
                                        {"base_metalness_map", "metalness_map"},
                                        {"emission_color_map", "emission_map"},
                                        {},
                                        {"geometry_opacity_map"}};
    switch (kind) {
        case Kind::physical:
            return physical;
        case Kind::pbr:
            return pbr;
        case Kind::gltf:
            return gltf;
        case Kind::openPbr:
            return openPbr;
    }
    return physical;
}

const FbxClass* classOf(const MaterialValues& values) {
    const auto a = values.integer("$raw.3dsMax|ClassIDa");
    const auto b = values.integer("$raw.3dsMax|ClassIDb");
    if (!a || !b) return nullptr;
    const auto found =
        std::ranges::find_if(kClasses, [&](const FbxClass& known) { return known.a == *a && known.b == *b; });
    return found == std::end(kClasses) ? nullptr : found;
}

// Reads the parameters of one material.
class FbxParameters {
  public:
    FbxParameters(const MaterialSource& source, Kind kind)
        : source_(source), kind_(kind), names_(namesOf(kind)) {}

    PhysicalParameters read() const {
        PhysicalParameters parameters;
        parameters.baseColor = colour(names_.baseColor).value_or(Colour{0.5F, 0.5F, 0.5F, 1});
        parameters.baseColorMap = bitmap(names_.baseColorMap);
        parameters.transparency = transparency(parameters.baseColor[3]);
        if (const auto file = textureFile(names_.bumpMap))
            parameters.bumpMap = source_.bitmaps.normalBump(*file, source_.name);
        readRoughness(parameters);
        parameters.metalness = number(names_.metalness).value_or(0);
        parameters.metalnessMap = bitmap(names_.metalnessMap);
        parameters.emissionMap = bitmap(names_.emissionMap);
        noteLosses();
        return parameters;
    }

  private:
    // What `get` gives for the first of the names that it gives something for.
    template <typename Get>
    auto firstOf(const Names& names, const char* end, Get get) const -> decltype(get(std::string())) {
        for (const std::string_view name : names) {
            for (const std::string_view block : names_.blocks) {
                if (auto value = get("$raw." + std::string(block) + std::string(name) + end)) return value;
            }
        }
        return std::nullopt;
    }

    std::optional<float> number(const Names& names) const {
        return firstOf(names, "", [this](const std::string& key) { return source_.values.number(key); });
    }

    std::optional<Colour> colour(const Names& names) const {
        return firstOf(names, "", [this](const std::string& key) { return source_.values.colour(key); });
    }

    std::optional<std::string> textureFile(const Names& names) const {
        return firstOf(names, "|file", [this](const std::string& key) { return source_.values.text(key); });
    }

    std::optional<SnapshotRef> bitmap(const Names& names) const {
        const auto file = textureFile(names);
        if (!file) return std::nullopt;
        return source_.bitmaps.bitmap(*file, source_.name);
    }

    float transparency(float alpha) const {
        switch (kind_) {
            case Kind::physical:
                return number({"transparency"}).value_or(0);
            case Kind::pbr:
                return 0;
            case Kind::gltf:
                return isBlended() ? 1 - alpha : 0;
            case Kind::openPbr:
                return 1 - number({"geometry_opacity"}).value_or(1);
        }
        return 0;
    }

    // The program counts its modes from 1: opaque, masked, blended.
    bool isBlended() const {
        constexpr float kBlend = 3;
        return number({"alphaMode"}) == kBlend;
    }

    // 1: the number and the map mean glossiness, whatever they are called; 2: roughness. Without that number
    // they mean what they are called.
    bool isGlossy() const {
        if (const auto meaning = number({"useGlossiness"})) return *meaning == 1;
        return !number(names_.roughness) && number(names_.glossiness);
    }

    void readRoughness(PhysicalParameters& parameters) const {
        const bool isInverted = isGlossy();
        const auto choose = [isInverted](auto rough, auto glossy) {
            const auto& first = isInverted ? glossy : rough;
            return first ? first : (isInverted ? rough : glossy);
        };
        const auto value = choose(number(names_.roughness), number(names_.glossiness));
        if (value) parameters.roughness = isInverted ? 1 - *value : *value;
        const auto file = choose(textureFile(names_.roughnessMap), textureFile(names_.glossinessMap));
        if (!file) return;
        parameters.roughnessMap =
            isInverted ? source_.bitmaps.part(*file, ImagePart::inverted, "roughness", source_.name)
                       : source_.bitmaps.bitmap(*file, source_.name);
    }

    void noteLosses() const {
        if (textureFile(names_.occlusionMap)) source_.losses.add(MaterialLoss::occlusionMap, source_.name);
        if (textureFile(names_.opacityMap)) source_.losses.add(MaterialLoss::opacityMap, source_.name);
        if (textureFile({"specular_map"})) source_.losses.add(MaterialLoss::specularColour, source_.name);
        if (number({"coating"}).value_or(0) > 0 || number({"coat_weight"}).value_or(0) > 0)
            source_.losses.add(MaterialLoss::clearCoat, source_.name);
    }

    const MaterialSource& source_;
    Kind kind_;
    const ParameterNames& names_;
};

}  // namespace

bool isFbxPhysical(const MaterialValues& values) {
    return classOf(values) != nullptr;
}

PhysicalParameters fbxPhysical(const MaterialSource& source) {
    const FbxClass* known = classOf(source.values);
    return FbxParameters(source, known == nullptr ? Kind::physical : known->kind).read();
}

}  // namespace velinor
