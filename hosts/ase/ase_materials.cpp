#include "hosts/ase/ase_materials.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "hosts/import/import_text.h"

namespace velinor {
namespace {

constexpr std::int32_t kSelfIllumination = 5;
constexpr std::int32_t kBump = 8;

// The keyword of a map tells which slot of a Standard material it fills.
struct MapKeyword {
    std::string_view keyword;
    std::int32_t slot;
};
constexpr MapKeyword kMapKeywords[] = {
    {"MAP_AMBIENT", 0}, {"MAP_DIFFUSE", 1},       {"MAP_SPECULAR", 2},
    {"MAP_SHINE", 3},   {"MAP_SHINESTRENGTH", 4}, {"MAP_SELFILLUM", kSelfIllumination},
    {"MAP_OPACITY", 6}, {"MAP_FILTERCOLOR", 7},   {"MAP_BUMP", 8},
    {"MAP_REFLECT", 9}, {"MAP_REFRACT", 10},
};
constexpr std::string_view kNumberedMap = "MAP_GENERIC";

constexpr std::u16string_view kStandard = u"Standard";
constexpr std::u16string_view kMulti = u"Multi/Sub-Object";
constexpr std::u16string_view kPhysical = u"Physical Material";

// Sub-maps are wanted by number, and only the first of them is ever asked for, so a high number is not worth
// the memory of those below it.
constexpr std::size_t kSubMaps = 16;

std::optional<std::int32_t> slotOf(std::string_view keyword) {
    const auto* found = std::ranges::find(kMapKeywords, keyword, &MapKeyword::keyword);
    return found == std::end(kMapKeywords) ? std::nullopt : std::optional(found->slot);
}

bool isMapKeyword(std::string_view keyword) {
    return keyword == kNumberedMap || slotOf(keyword);
}

host::Point3 colour(AseLexer& lexer) {
    const float red = lexer.number();
    const float green = lexer.number();
    return {red, green, lexer.number()};
}

// Whether the keyword moves a map on the surface, and this number does.
bool movesMap(std::string_view keyword, float number) {
    if (keyword == "UVW_U_TILING" || keyword == "UVW_V_TILING") return number != 1;
    return number != 0;
}

bool isPlacement(std::string_view keyword) {
    return keyword == "UVW_U_OFFSET" || keyword == "UVW_V_OFFSET" || keyword == "UVW_U_TILING" ||
           keyword == "UVW_V_TILING" || keyword == "UVW_ANGLE";
}

// The map of a slot that is set last counts.
std::optional<SnapshotRef> mapOfSlot(const SnapshotMaterial& material, std::int32_t slot) {
    std::optional<SnapshotRef> found;
    for (const SnapshotTextureMap& map : material.textureMaps) {
        if (map.slot == slot) found = map.map;
    }
    return found;
}

// Whether a map is mixed with what is below it. Bumps are 0.3 where nobody has touched them.
bool isPartial(std::optional<std::int32_t> slot, float amount) {
    return amount != 1 && (slot != kBump || amount != 0.3F);
}

}  // namespace

void AseMaterials::read(AseLexer& lexer) {
    lexer.enter("MATERIAL_LIST");
    const std::size_t outside = lexer.depth() - 1;
    for (;;) {
        const auto keyword = lexer.next();
        if (!keyword) {
            if (lexer.depth() == outside) return;
            closeFrame();
        } else if (frames_.empty()) {
            if (*keyword == "MATERIAL") openMaterial(lexer, *keyword);
        } else if (frames_.back().isMap) {
            readMapPart(lexer, *keyword);
        } else {
            readMaterialPart(lexer, *keyword);
        }
    }
}

std::optional<SnapshotRef> AseMaterials::material(std::int64_t number) const {
    const auto found = byNumber_.find(number);
    return found == byNumber_.end() ? std::nullopt : std::optional(found->second);
}

void AseMaterials::openMaterial(AseLexer& lexer, std::string_view keyword) {
    const std::int64_t number = lexer.integer(0, INT32_MAX);
    const std::size_t place = lexer.place();
    const auto item = static_cast<SnapshotRef>(scene_.materials.size());
    if (frames_.empty()) {
        if (!byNumber_.try_emplace(number, item).second)
            lexer.refuse(place, "material " + std::to_string(number) + " is there twice");
    } else {
        auto& slots = scene_.materials[frames_.back().item].subMaterials;
        slots.push_back({static_cast<std::int32_t>(number), item});
    }
    lexer.enter(keyword);
    scene_.materials.emplace_back();
    scene_.materials.back().opacity = 1;
    values_.emplace_back();
    frames_.push_back({false, item, item});
}

void AseMaterials::openMap(AseLexer& lexer, std::string_view keyword) {
    Frame frame{true, static_cast<SnapshotRef>(scene_.maps.size()), frames_.back().material};
    if (frames_.back().isMap) frame.parentMap = frames_.back().item;
    frame.slot = slotOf(keyword);
    lexer.enter(keyword);
    scene_.maps.emplace_back();
    mapTraits_.push_back({.isNumbered = keyword == kNumberedMap});
    frames_.push_back(frame);
}

void AseMaterials::readMaterialPart(AseLexer& lexer, std::string_view keyword) {
    const SnapshotRef item = frames_.back().item;
    SnapshotMaterial& material = scene_.materials[item];
    if (keyword == "MATERIAL_NAME") {
        material.name = text_.decode(lexer.text());
    } else if (keyword == "MATERIAL_CLASS") {
        material.className = text_.decode(lexer.text());
    } else if (keyword == "MATERIAL_DIFFUSE") {
        material.diffuse = colour(lexer);
    } else if (keyword == "MATERIAL_SPECULAR") {
        material.specular = colour(lexer);
    } else if (keyword == "MATERIAL_SHINE") {
        values_[item].shine = lexer.number();
    } else if (keyword == "MATERIAL_TRANSPARENCY") {
        values_[item].transparency = lexer.number();
    } else if (keyword == "MATERIAL_SELFILLUM") {
        values_[item].isLuminous = lexer.isAtNumber() && lexer.anyNumber() > 0;
    } else if (keyword == "MATERIAL_TWOSIDED") {
        values_[item].isTwoSided = true;
    } else if (keyword == "SUBMATERIAL") {
        openMaterial(lexer, keyword);
    } else if (isMapKeyword(keyword)) {
        openMap(lexer, keyword);
    }
}

void AseMaterials::readMapPart(AseLexer& lexer, std::string_view keyword) {
    Frame& frame = frames_.back();
    SnapshotMap& map = scene_.maps[frame.item];
    if (keyword == "MAP_CLASS") {
        map.className = text_.decode(lexer.text());
    } else if (keyword == "MAP_SUBNO") {
        // The keyword of a material's map says the same in words, and is what counts.
        const auto number = static_cast<std::int32_t>(lexer.integer(0, INT32_MAX));
        if (!frame.slot || frame.parentMap) frame.slot = number;
    } else if (keyword == "BITMAP") {
        map.bitmap = text_.decode(lexer.text());
    } else if (keyword == "MAP_AMOUNT") {
        if (lexer.isAtNumber()) mapTraits_[frame.item].isPartial = isPartial(frame.slot, lexer.anyNumber());
    } else if (isPlacement(keyword)) {
        if (lexer.isAtNumber() && movesMap(keyword, lexer.anyNumber())) mapTraits_[frame.item].isMoved = true;
    } else if (isMapKeyword(keyword)) {
        openMap(lexer, keyword);
    }
}

void AseMaterials::closeFrame() {
    const Frame frame = frames_.back();
    frames_.pop_back();
    if (frame.isMap) {
        closeMap(frame);
    } else {
        closeMaterial(frame.item);
    }
}

// A map without a number of its own is the first of its kind.
void AseMaterials::closeMap(const Frame& frame) {
    SnapshotMap& map = scene_.maps[frame.item];
    if (map.className.empty() && !map.bitmap.empty()) map.className = u"Bitmap";
    const std::int32_t slot = frame.slot.value_or(0);
    if (!frame.parentMap) {
        scene_.materials[frame.material].textureMaps.push_back({slot, frame.item});
        return;
    }
    auto& subMaps = scene_.maps[*frame.parentMap].subMaps;
    const auto number = static_cast<std::size_t>(slot);
    if (number >= kSubMaps) return;
    if (number >= subMaps.size()) subMaps.resize(number + 1);
    subMaps[number] = frame.item;
}

// A material without a class is one of a writer that knows only the usual one.
void AseMaterials::closeMaterial(SnapshotRef item) {
    SnapshotMaterial& material = scene_.materials[item];
    const Values& values = values_[item];
    if (material.className.empty()) material.className = material.subMaterials.empty() ? kStandard : kMulti;
    material.opacity = 1 - values.transparency;
    material.glossiness = values.shine;
    if (material.className == kPhysical) {
        // Numbers of its maps are none of slots, and nothing else tells what they are for.
        std::erase_if(material.textureMaps,
                      [this](const SnapshotTextureMap& map) { return mapTraits_[map.map].isNumbered; });
        const host::Point3& base = material.diffuse;
        const auto map = [&](std::int32_t slot) { return SnapshotMapProperty{mapOfSlot(material, slot)}; };
        material.properties = {
            {u"base_color_map", map(1)},
            {u"base_color", host::Point4{base.x, base.y, base.z, 1}},
            {u"transparency", values.transparency},
            {u"bump_map", map(8)},
            {u"roughness_map", SnapshotMapProperty{}},
            {u"roughness", 1 - values.shine},
            {u"metalness_map", SnapshotMapProperty{}},
            {u"metalness", 0.F},
            {u"emission_map", map(kSelfIllumination)},
        };
    }
    noteLosses(material, values, finishMaps(material));
}

// Of the maps that the material has kept, with those below them.
AseMaterials::MapTraits AseMaterials::finishMaps(const SnapshotMaterial& material) {
    MapTraits any;
    std::vector<SnapshotRef> open;
    for (const SnapshotTextureMap& map : material.textureMaps)
        open.push_back(map.map);
    std::ranges::reverse(open);
    while (!open.empty()) {
        const SnapshotRef item = open.back();
        open.pop_back();
        SnapshotMap& map = scene_.maps[item];
        map.bitmap = bitmapName(map.bitmap, material);
        any.isMoved = any.isMoved || mapTraits_[item].isMoved;
        any.isPartial = any.isPartial || mapTraits_[item].isPartial;
        const auto known = static_cast<std::ptrdiff_t>(open.size());
        for (const std::optional<SnapshotRef>& subMap : map.subMaps) {
            if (subMap) open.push_back(*subMap);
        }
        std::reverse(open.begin() + known, open.end());  // the first comes next
    }
    return any;
}

void AseMaterials::noteLosses(const SnapshotMaterial& material, const Values& values, const MapTraits& maps) {
    const std::string name = oneLine(toUtf8(material.name));
    if (maps.isMoved) losses_.add(MaterialLoss::movedTexture, name);
    if (maps.isPartial) losses_.add(MaterialLoss::partialMap, name);
    if (values.isTwoSided) losses_.add(MaterialLoss::twoSided, name);
    if (values.isLuminous && !mapOfSlot(material, kSelfIllumination))
        losses_.add(MaterialLoss::emissionColour, name);
    if (material.className == kPhysical) losses_.add(MaterialLoss::physicalValues, name);
}

std::u16string AseMaterials::bitmapName(const std::u16string& given, const SnapshotMaterial& material) {
    if (given.empty()) return {};
    const auto [found, isNew] = bitmaps_.try_emplace(given, given);
    if (!isNew) return found->second;
    if (const auto file = files_.find(given)) {
        found->second = toUtf16Lossy(utf8Path(*file));
    } else {
        notes_.add(oneLine(toUtf8(material.name)), missingBitmapText(given, files_));
    }
    return found->second;
}

void AseMaterials::addNotes(const std::string& shown) {
    losses_.writeTo(notes_, shown);
}

}  // namespace velinor
