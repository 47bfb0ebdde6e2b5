#include "hosts/snapshot/snapshot_host_objects.h"

#include "hosts/snapshot/snapshot_host_mesh.h"

namespace velinor {
namespace {

using host::Box3;
using host::Point3;
using host::TimeValue;

constexpr Box3 kZeroBox{Point3{}, Point3{}};

Box3 boundingBoxOf(const SnapshotObject& object, const SnapshotMesh* mesh) {
    if (object.boundingBox) return *object.boundingBox;
    if (!mesh) return kZeroBox;
    Box3 box;
    for (const Point3& vertex : mesh->vertices)
        box.Include(vertex);
    return box.IsEmpty() ? kZeroBox : box;
}

std::vector<int> distinctMaterialIds(const SnapshotMesh& mesh) {
    if (mesh.materialIds.empty()) return mesh.faces.empty() ? std::vector<int>{} : std::vector<int>{0};
    std::vector<bool> isUsed(std::size_t{std::numeric_limits<std::uint16_t>::max()} + 1);
    for (const std::uint16_t id : mesh.materialIds)
        isUsed[id] = true;
    std::vector<int> ids;
    for (std::size_t id = 0; id < isUsed.size(); ++id) {
        if (isUsed[id]) ids.push_back(static_cast<int>(id));
    }
    return ids;
}

// What every object answers. `GameInterface` is IGameObject or IGameMesh, `MaxInterface` Object or one below
// it.
template <class GameInterface, class MaxInterface>
class HostObject : public SnapshotHostObject, public GameInterface, public MaxInterface {
  public:
    HostObject(const SnapshotObject& object, const SnapshotMesh* mesh) : object_(object), mesh_(mesh) {
        for (const auto& [name, value] : object.parameters)
            parameters_.add(name, value);
    }

    host::IGameObject& gameObject() override { return *this; }
    host::Object& maxObject() override { return *this; }

    std::int32_t GetIGameType() const override { return object_.type; }
    host::Object* GetMaxObject() override { return this; }
    bool InitializeData() override { return true; }
    host::IPropertyContainer* GetIPropertyContainer() override {
        return parameters_.isEmpty() ? nullptr : &parameters_;
    }

    host::HostText GetObjectName() const override { return object_.className; }
    Box3 GetDeformBBox(TimeValue /*t*/) const override { return boundingBoxOf(object_, mesh_); }
    host::TriObject* ConvertToTriObject(TimeValue /*t*/) override { return nullptr; }

  protected:
    const SnapshotObject& object_;
    const SnapshotMesh* mesh_;  // null for other types

  private:
    SnapshotHostProperties parameters_;
};

using PlainObject = HostObject<host::IGameObject, host::Object>;

class Light final : public HostObject<host::IGameObject, host::LightObject> {
  public:
    using HostObject::HostObject;

    host::LightState EvalLightState(TimeValue /*t*/) const override {
        return object_.light.value_or(host::LightState{});
    }
};

// A mesh is its own triangle object, so nothing is ever converted, nor ended by DeleteThis.
class MeshObject final : public HostObject<host::IGameMesh, host::TriObject> {
  public:
    using HostObject::HostObject;

    host::TriObject* ConvertToTriObject(TimeValue /*t*/) override { return this; }
    void DeleteThis() override {}

    host::Mesh& GetMesh() override {
        if (!hostMesh_) hostMesh_ = makeHostMesh(*mesh_);
        return *hostMesh_;
    }

    std::int32_t GetNumberOfFaces() const override {
        return object_.faceCount.value_or(static_cast<std::int32_t>(mesh_->faces.size()));
    }

    std::vector<int> GetActiveMatIDs() const override {
        return mesh_->activeMaterialIds ? *mesh_->activeMaterialIds : distinctMaterialIds(*mesh_);
    }

  private:
    std::unique_ptr<host::Mesh> hostMesh_;
};

}  // namespace

std::unique_ptr<SnapshotHostObject> makeHostObject(const SnapshotObject& object, const SceneSnapshot& scene) {
    if (object.type == host::IGameObject::IGAME_LIGHT) return std::make_unique<Light>(object, nullptr);
    if (object.type == host::IGameObject::IGAME_MESH) {
        return std::make_unique<MeshObject>(object, &scene.meshes[*object.mesh]);
    }
    return std::make_unique<PlainObject>(object, nullptr);
}

}  // namespace velinor
