// Objects and triangle meshes of the SDK's stand-in, over those of a host.
#pragma once

#include "hosts/max/max_sdk.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/object.h"

namespace velinor {

using SdkString = std::basic_string<MCHAR>;

class SdkMesh final : public ::Mesh {
  public:
    explicit SdkMesh(host::Mesh& mesh);

    int getNumFaces() const override { return static_cast<int>(faceStore_.size()); }
    int getNumVerts() const override { return static_cast<int>(vertStore_.size()); }
    int getNumMaps() const override { return mesh_.getNumMaps(); }
    BOOL mapSupport(int channel) const override { return mesh_.mapSupport(channel) ? 1 : 0; }
    int getNumMapVerts(int channel) const override;
    UVVert* mapVerts(int channel) const override;
    ::TVFace* mapFaces(int channel) const override;
    void buildNormals() override;
    ::RVertex* getRVertPtr(int vertex) override;
    ::Point3 getFaceNormal(int face) const override;

  private:
    struct Channel {
        std::vector<::TVFace> faces;
        std::vector<UVVert> verts;
    };
    Channel& channel(int number) const;

    host::Mesh& mesh_;
    std::vector<::Face> faceStore_;
    std::vector<::Point3> vertStore_;
    mutable std::map<int, Channel> channels_;
    std::vector<::RVertex> rVerts_;
    std::vector<std::vector<::RNormal>> rNormals_;
};

// How many triangle objects a conversion has made, and how many of them were ended.
struct ConversionCount {
    int made = 0;
    int ended = 0;
};

// What every object answers. `SdkInterface` is Object or one below it.
template <class SdkInterface>
class SdkObjectOf : public SdkInterface {
  public:
    explicit SdkObjectOf(host::Object& object)
        : object_(object), name_(object.GetObjectName().begin(), object.GetObjectName().end()) {}

    const MCHAR* GetObjectName(bool localized) const override { return localized ? nullptr : name_.c_str(); }

    void GetDeformBBox(::TimeValue t, ::Box3& box, ::Matrix3* tm, BOOL useSel) override {
        if (tm != nullptr || useSel != 0) return;
        const host::Box3 given = object_.GetDeformBBox(t);
        box.pmin = {given.pmin.x, given.pmin.y, given.pmin.z};
        box.pmax = {given.pmax.x, given.pmax.y, given.pmax.z};
    }

    int CanConvertToType(Class_ID /*type*/) override { return 0; }
    ::Object* ConvertToType(::TimeValue /*t*/, Class_ID /*type*/) override { return nullptr; }

  protected:
    host::Object& object_;

  private:
    SdkString name_;
};

using SdkPlainObject = SdkObjectOf<::Object>;

class SdkLight final : public SdkObjectOf<::LightObject> {
  public:
    explicit SdkLight(host::LightObject& light) : SdkObjectOf(light), light_(light) {}

    SClass_ID SuperClassID() override { return LIGHT_CLASS_ID; }
    RefResult EvalLightState(::TimeValue t, ::Interval& valid, ::LightState* state) override;

  private:
    host::LightObject& light_;
};

// A triangle object: its own triangles.
class SdkTriObject final : public SdkObjectOf<::TriObject> {
  public:
    SdkTriObject(host::TriObject& object, ConversionCount& count)
        : SdkObjectOf(object), mesh_(object.GetMesh()), count_(count) {}

    ::Mesh& GetMesh() override { return mesh_; }
    int CanConvertToType(Class_ID type) override { return type == Class_ID(TRIOBJ_CLASS_ID, 0) ? 1 : 0; }
    ::Object* ConvertToType(::TimeValue /*t*/, Class_ID /*type*/) override { return this; }
    void DeleteThis() override;

  private:
    SdkMesh mesh_;
    ConversionCount& count_;
};

// An object of another kind, such as a box with its parameters, that gives new triangles each time.
class SdkPrimitive final : public SdkObjectOf<::Object> {
  public:
    SdkPrimitive(host::TriObject& object, ConversionCount& count)
        : SdkObjectOf(object), triangles_(object), count_(count) {}

    int CanConvertToType(Class_ID type) override { return type == Class_ID(TRIOBJ_CLASS_ID, 0) ? 1 : 0; }
    ::Object* ConvertToType(::TimeValue t, Class_ID type) override;

  private:
    host::TriObject& triangles_;
    ConversionCount& count_;
};

}  // namespace velinor
