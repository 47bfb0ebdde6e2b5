// Triangle meshes of 3ds Max's SDK.
#pragma once

#include "hosts/max/sdk_standin/sdk_geometry.h"

typedef Point3 UVVert;
typedef unsigned short MtlID;

class Face {
  public:
    DWORD v[3] = {};
    DWORD smGroup = 0;
    DWORD flags = 0;  // the material ID in the upper 16 bits
};

class TVFace {
  public:
    DWORD t[3] = {};
};

class RNormal {
  public:
    RNormal() = default;
    RNormal(const Point3& normal, DWORD smGroup) : normal_(normal), smGroup_(smGroup) {}
    Point3& getNormal() { return normal_; }
    DWORD getSmGroup() { return smGroup_; }

  private:
    Point3 normal_;
    DWORD smGroup_ = 0;
};

#define NORCT_MASK 0x000000ff
#define SPECIFIED_NORMAL 0x00004000

// The normals of one vertex: none or one in `rn`, more in the array `ern`.
class RVertex {
  public:
    DWORD rFlags = 0;  // the number of normals in the low 8 bits
    RNormal rn;
    RNormal* ern = nullptr;
};

// What the SDK keeps within the class, whoever stands in for it supplies.
class Mesh {
  public:
    Mesh() = default;
    virtual ~Mesh() = default;
    Mesh(const Mesh&) = delete;
    Mesh& operator=(const Mesh&) = delete;

    virtual int getNumFaces() const = 0;
    virtual int getNumVerts() const = 0;
    virtual int getNumMaps() const = 0;
    virtual BOOL mapSupport(int channel) const = 0;
    virtual int getNumMapVerts(int channel) const = 0;
    virtual UVVert* mapVerts(int channel) const = 0;
    virtual TVFace* mapFaces(int channel) const = 0;
    virtual void buildNormals() = 0;
    virtual RVertex* getRVertPtr(int vertex) = 0;
    virtual Point3 getFaceNormal(int face) const = 0;

    int getNumTVerts() const { return numTVerts; }

    Face* faces = nullptr;
    Point3* verts = nullptr;
    int numTVerts = 0;  // of map channel 1
    UVVert* tVerts = nullptr;
    TVFace* tvFace = nullptr;
};
