// Texture maps of 3ds Max.
#pragma once

#include "hosts/max/max_sdk.h"

#include <memory>
#include <string>
#include <unordered_map>

#include "host/material.h"

namespace velinor {

class MaxTexmaps;

class MaxTexmap final : public host::Texmap {
  public:
    MaxTexmap(::Texmap& map, MaxTexmaps& owner);

    host::HostText GetClassName() const override { return className_; }
    host::Texmap* GetSubTexmap(int index) const override;
    host::HostText GetMapName() const override;

  private:
    ::Texmap& map_;
    MaxTexmaps& owner_;
    std::u16string className_;
};

// All maps that an export has met, each with one address for as long as this lives.
class MaxTexmaps {
  public:
    // Null for null.
    host::Texmap* of(::Texmap* map);

  private:
    std::unordered_map<::Texmap*, std::unique_ptr<MaxTexmap>> made_;  // only looked up
};

}  // namespace velinor
