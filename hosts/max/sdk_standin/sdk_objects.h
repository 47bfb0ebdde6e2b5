// Objects, texture maps, layers and nodes of 3ds Max's SDK.
#pragma once

#include "hosts/max/sdk_standin/sdk_mesh.h"

class Animatable : public MaxHeapOperators {
  public:
    virtual ~Animatable() = default;

    virtual Class_ID ClassID() { return Class_ID(0, 0); }
    virtual SClass_ID SuperClassID() { return 0; }
    virtual void GetClassName(MSTR& name, bool localized = true) const {
        static_cast<void>(localized);
        name = MSTR();
    }
    virtual void DeleteThis() { delete this; }
};

class ReferenceTarget : public Animatable {
  public:
    virtual ReferenceTarget* GetReference(int index) {
        static_cast<void>(index);
        return nullptr;
    }
};
typedef ReferenceTarget* RefTargetHandle;

class Object : public ReferenceTarget {
  public:
    virtual const MCHAR* GetObjectName(bool localized) const = 0;
    virtual void GetDeformBBox(TimeValue t, Box3& box, Matrix3* tm = nullptr, BOOL useSel = 0) = 0;
    virtual int CanConvertToType(Class_ID type) = 0;
    virtual Object* ConvertToType(TimeValue t, Class_ID type) = 0;
};

class TriObject : public Object {
  public:
    virtual Mesh& GetMesh() = 0;
};

typedef int RefResult;
// With the compiler of the SDK an enumeration holds any int.
enum LightType : int { OMNI_LGT, SPOT_LGT, DIRECT_LGT, AMBIENT_LGT };

struct LightState {
    LightType type = OMNI_LGT;
    Color color;
    float intens = 0;
};

class LightObject : public Object {
  public:
    virtual RefResult EvalLightState(TimeValue t, Interval& valid, LightState* state) = 0;
};

class Texmap : public ReferenceTarget {
  public:
    virtual Texmap* GetSubTexmap(int index) {
        static_cast<void>(index);
        return nullptr;
    }
};

class BitmapTex : public Texmap {
  public:
    virtual const MCHAR* GetMapName() = 0;
};

typedef short ParamID;

class IParamBlock2 : public ReferenceTarget {
  public:
    virtual Texmap* GetTexmap(ParamID id, TimeValue t = 0, int tabIndex = 0) = 0;
};

class ILayer : public ReferenceTarget {
  public:
    virtual bool IsHidden(bool includeParent = true) const = 0;
};
#define NODE_LAYER_REF 6

class ObjectState {
  public:
    Object* obj = nullptr;
};

class INode : public ReferenceTarget {
  public:
    virtual const MCHAR* GetName() = 0;
    virtual int Selected() = 0;
    virtual int IsObjectHidden() = 0;
    virtual BOOL GetUserPropInt(const MSTR& key, int& value) = 0;
    virtual const ObjectState& EvalWorldState(TimeValue t, BOOL evalHidden = 1) = 0;
};

class INodeTab : public Tab<INode*> {};

class IInstanceMgr {
  public:
    virtual ~IInstanceMgr() = default;

    MAX_SDK_API static IInstanceMgr* GetInstanceMgr();
    virtual unsigned long GetInstances(INode& source, INodeTab& instances) const = 0;
};
