#include "hosts/max/max_texmaps.h"

#include "hosts/max/max_values.h"

namespace velinor {
namespace {

std::u16string displayedClassName(const ::Texmap& map) {
    constexpr bool kLocalized = true;
    MSTR name;
    map.GetClassName(name, kLocalized);
    return std::u16string(hostText(name.data()));
}

}  // namespace

MaxTexmap::MaxTexmap(::Texmap& map, MaxTexmaps& owner)
    : map_(map), owner_(owner), className_(displayedClassName(map)) {}

host::Texmap* MaxTexmap::GetSubTexmap(int index) const {
    return owner_.of(map_.GetSubTexmap(index));
}

// Only a map of the class "Bitmap" has a file; the cast holds for no other.
host::HostText MaxTexmap::GetMapName() const {
    if (map_.ClassID() != Class_ID(BMTEX_CLASS_ID, 0)) return {};
    return hostText(static_cast<::BitmapTex&>(map_).GetMapName());
}

host::Texmap* MaxTexmaps::of(::Texmap* map) {
    if (map == nullptr) return nullptr;
    auto& made = made_[map];
    if (!made) made = std::make_unique<MaxTexmap>(*map, *this);
    return made.get();
}

}  // namespace velinor
