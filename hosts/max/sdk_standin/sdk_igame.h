// The scene interface of 3ds Max's SDK, IGame.
#pragma once

#include "hosts/max/sdk_standin/sdk_objects.h"

class IGameProperty : public MaxHeapOperators {
  public:
    virtual ~IGameProperty() = default;

    virtual const MCHAR* GetName() = 0;
    virtual bool GetPropertyValue(float& value, TimeValue t = TIME_NegInfinity, bool inPercent = false) = 0;
    virtual bool GetPropertyValue(Point3& value, TimeValue t = TIME_NegInfinity) = 0;
    virtual bool GetPropertyValue(Point4& value, TimeValue t = TIME_NegInfinity) = 0;
    virtual bool IsPBlock2() = 0;
    virtual IParamBlock2* GetMaxParamBlock2() = 0;
    virtual ParamID GetParamID() = 0;
};

class PropertyEnum : public MaxHeapOperators {
  public:
    virtual ~PropertyEnum() = default;

    // Answers true to stop.
    virtual bool Proc(IGameProperty* property) = 0;
};

class IPropertyContainer : public MaxHeapOperators {
  public:
    virtual ~IPropertyContainer() = default;

    virtual IGameProperty* QueryProperty(const MCHAR* name) = 0;
    virtual void EnumerateProperties(PropertyEnum& callback) = 0;
};

class IGameTextureMap : public MaxHeapOperators {
  public:
    virtual ~IGameTextureMap() = default;

    virtual Texmap* GetMaxTexmap() = 0;
    virtual int GetStdMapSlot() = 0;
};

class IGameMaterial : public MaxHeapOperators {
  public:
    virtual ~IGameMaterial() = default;

    virtual const MCHAR* GetMaterialName() = 0;
    virtual const MCHAR* GetMaterialClass() = 0;
    virtual int GetSubMaterialCount() = 0;
    virtual IGameMaterial* GetSubMaterial(int index) = 0;
    virtual int GetMaterialID(int index) = 0;
    virtual IPropertyContainer* GetIPropertyContainer() = 0;
    virtual IGameProperty* GetDiffuseData() = 0;
    virtual IGameProperty* GetSpecularData() = 0;
    virtual IGameProperty* GetOpacityData() = 0;
    virtual IGameProperty* GetGlossinessData() = 0;
    virtual int GetNumberOfTextureMaps() = 0;
    virtual IGameTextureMap* GetIGameTextureMap(int index) = 0;
};

class IGameObject : public MaxHeapOperators {
  public:
    enum ObjectTypes : int {
        IGAME_UNKNOWN,
        IGAME_LIGHT,
        IGAME_MESH,
        IGAME_SPLINE,
        IGAME_CAMERA,
        IGAME_HELPER,
        IGAME_BONE,
        IGAME_IKCHAIN,
        IGAME_XREF
    };

    virtual ~IGameObject() = default;

    virtual ObjectTypes GetIGameType() = 0;
    virtual bool InitializeData() = 0;
    virtual Object* GetMaxObject() = 0;
    virtual IPropertyContainer* GetIPropertyContainer() = 0;
};

class IGameMesh : public IGameObject {
  public:
    virtual int GetNumberOfFaces() = 0;
    virtual Tab<int> GetActiveMatIDs() = 0;
};

class IGameNode : public MaxHeapOperators {
  public:
    virtual ~IGameNode() = default;

    virtual const MCHAR* GetName() = 0;
    virtual INode* GetMaxNode() = 0;
    virtual IGameObject* GetIGameObject() = 0;
    virtual void ReleaseIGameObject() = 0;
    virtual GMatrix GetObjectTM(TimeValue t = TIME_NegInfinity) = 0;
    virtual int GetChildCount() = 0;
    virtual IGameNode* GetNodeChild(int index) = 0;
    virtual IGameMaterial* GetNodeMaterial() = 0;
};

class IGameScene : public MaxHeapOperators {
  public:
    virtual ~IGameScene() = default;

    virtual bool InitialiseIGame(bool selected = false) = 0;
    virtual void ReleaseIGame() = 0;
    virtual void SetStaticFrame(int frame) = 0;
    virtual int GetTotalNodeCount() = 0;
    virtual int GetTopLevelNodeCount() = 0;
    virtual IGameNode* GetTopLevelNode(int index) = 0;
};

class IGameConversionManager : public MaxHeapOperators {
  public:
    enum CoordSystem : int { IGAME_MAX, IGAME_D3D, IGAME_OGL, IGAME_USER };

    virtual ~IGameConversionManager() = default;

    virtual void SetCoordSystem(CoordSystem system) = 0;
};

MAX_SDK_API IGameScene* GetIGameInterface();
MAX_SDK_API IGameConversionManager* GetConversionManager();
