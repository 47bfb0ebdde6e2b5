// Materials and texture maps. Everything here belongs to the scene and lives as long as it.
#pragma once

#include "host/property.h"
#include "host/text.h"

namespace velinor::host {

// A texture map.
class Texmap {
  public:
    virtual ~Texmap() = default;

    // The displayed class name: "Bitmap", "Normal Bump", …
    virtual HostText GetClassName() const = 0;

    // The sub-map in that place; null where there is none.
    virtual Texmap* GetSubTexmap(int index) const = 0;

    // The file of a "Bitmap", as the artist entered it; empty for other maps.
    virtual HostText GetMapName() const = 0;
};

// The use of a texture map by a "Standard" material.
class IGameTextureMap {
  public:
    virtual ~IGameTextureMap() = default;

    // The standard slot: 1 diffuse, 2 specular, 3 glossiness, 5 self-illumination, 6 opacity, 8 bump, 9
    // reflection, …
    virtual int GetStdMapSlot() const = 0;

    virtual Texmap* GetMaxTexmap() const = 0;
};

// A material. Two materials are the same where their addresses are.
class IGameMaterial {
  public:
    virtual ~IGameMaterial() = default;

    // What tells materials apart and orders them: an address of the host that is this material's alone. An
    // adapter gives that of what it stands for.
    virtual const void* handle() const { return this; }

    // The displayed class name: "Physical Material", "Standard", …
    virtual HostText GetMaterialClass() const = 0;
    virtual HostText GetMaterialName() const = 0;

    // The number of sub-materials; 0 for a material that is no multi-material.
    virtual int GetSubMaterialCount() const = 0;

    // The sub-material in that place, 0 to count - 1; null for an empty slot.
    virtual IGameMaterial* GetSubMaterial(int index) const = 0;

    // The material ID, from 0, of the sub-material in that place. IDs need not be in order or without gaps.
    virtual int GetMaterialID(int index) const = 0;

    // The parameters; never null.
    virtual IPropertyContainer* GetIPropertyContainer() = 0;

    // Values of a "Standard" material; null for other classes.
    virtual IGameProperty* GetDiffuseData() = 0;
    virtual IGameProperty* GetOpacityData() = 0;
    virtual IGameProperty* GetGlossinessData() = 0;
    virtual IGameProperty* GetSpecularData() = 0;

    // The texture maps of a "Standard" material, in the host's order; none for other classes.
    virtual int GetNumberOfTextureMaps() const = 0;
    virtual IGameTextureMap* GetIGameTextureMap(int index) = 0;
};

}  // namespace velinor::host
