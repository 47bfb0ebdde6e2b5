#include "tests/max/sdk_scene.h"

#include <algorithm>

#include "hosts/max/max_values.h"

namespace velinor {
namespace {

class SdkLayer final : public ::ILayer {
  public:
    explicit SdkLayer(host::ILayer& layer) : layer_(layer) {}
    bool IsHidden(bool includeParent) const override { return layer_.IsHidden(includeParent); }

  private:
    host::ILayer& layer_;
};

std::unique_ptr<::Object> makeObject(host::IGameObject& object, SdkScene& scene) {
    host::Object& maxObject = *object.GetMaxObject();
    if (object.GetIGameType() == host::IGameObject::IGAME_LIGHT)
        return std::make_unique<SdkLight>(static_cast<host::LightObject&>(maxObject));
    host::TriObject* triangles = maxObject.ConvertToTriObject(0);
    if (triangles == nullptr) return std::make_unique<SdkPlainObject>(maxObject);
    if (scene.oddities.convertsMeshes)
        return std::make_unique<SdkPrimitive>(*triangles, scene.treatment.conversions);
    return std::make_unique<SdkTriObject>(*triangles, scene.treatment.conversions);
}

// The scene interface's view of an object. `SdkInterface` is IGameObject or IGameMesh.
template <class SdkInterface>
class SdkGameObject : public SdkInterface {
  public:
    SdkGameObject(host::IGameObject& object, SdkScene& scene)
        : object_(object), scene_(scene), maxObject_(makeObject(object, scene)) {}

    ::IGameObject::ObjectTypes GetIGameType() override {
        return static_cast<::IGameObject::ObjectTypes>(object_.GetIGameType());
    }
    bool InitializeData() override { return object_.InitializeData(); }

    ::Object* GetMaxObject() override {
        const bool isLight = object_.GetIGameType() == host::IGameObject::IGAME_LIGHT;
        if (scene_.oddities.hasNullMaxObjects || (isLight && scene_.oddities.hidesLights)) return nullptr;
        return maxObject_.get();
    }

    ::IPropertyContainer* GetIPropertyContainer() override {
        host::IPropertyContainer* container = object_.GetIPropertyContainer();
        if (container == nullptr) return nullptr;
        properties_ = std::make_unique<SdkProperties>(*container, scene_.materials());
        return properties_.get();
    }

  protected:
    host::IGameObject& object_;

  private:
    SdkScene& scene_;
    std::unique_ptr<::Object> maxObject_;
    std::unique_ptr<SdkProperties> properties_;
};

class SdkGameMesh final : public SdkGameObject<::IGameMesh> {
  public:
    using SdkGameObject::SdkGameObject;

    int GetNumberOfFaces() override { return mesh().GetNumberOfFaces(); }

    Tab<int> GetActiveMatIDs() override {
        Tab<int> ids;
        for (const int id : mesh().GetActiveMatIDs())
            ids.Append(1, &id);
        return ids;
    }

  private:
    host::IGameMesh& mesh() { return static_cast<host::IGameMesh&>(object_); }
};

}  // namespace

class SdkNode::Game final : public ::IGameNode {
  public:
    Game(SdkNode& node, SdkScene& scene) : node_(node), scene_(scene) {}

    const MCHAR* GetName() override { return node_.GetName(); }
    ::INode* GetMaxNode() override { return scene_.oddities.hasNullMaxNodes ? nullptr : &node_; }

    ::IGameObject* GetIGameObject() override {
        host::IGameObject* object = node_.source().GetIGameObject();
        if (object == nullptr || object_) return object_.get();
        if (object->GetIGameType() == host::IGameObject::IGAME_MESH) {
            object_ = std::make_unique<SdkGameMesh>(*object, scene_);
        } else {
            object_ = std::make_unique<SdkGameObject<::IGameObject>>(*object, scene_);
        }
        SdkTreatment& treatment = scene_.treatment;
        treatment.mostHeldObjects = std::max(treatment.mostHeldObjects, ++treatment.heldObjects);
        return object_.get();
    }

    void ReleaseIGameObject() override {
        --scene_.treatment.heldObjects;
        object_.reset();
    }

    ::GMatrix GetObjectTM(::TimeValue t) override {
        const host::GMatrix matrix = node_.source().GetObjectTM(t);
        ::GMatrix result;
        for (int i = 0; i < 4; ++i)
            result.SetRow(i, {matrix[i][0], matrix[i][1], matrix[i][2], matrix[i][3]});
        return result;
    }

    int GetChildCount() override { return node_.source().GetChildCount(); }
    ::IGameNode* GetNodeChild(int index) override { return scene_.game(node_.source().GetNodeChild(index)); }
    ::IGameMaterial* GetNodeMaterial() override {
        return scene_.materials().of(node_.source().GetNodeMaterial());
    }

  private:
    SdkNode& node_;
    SdkScene& scene_;
    std::unique_ptr<::IGameObject> object_;
};

SdkNode::SdkNode(host::IGameNode& node, SdkScene& scene)
    : node_(node), scene_(scene), name_(maxString(node.GetName())) {
    if (host::ILayer* layer = node.GetMaxNode()->GetLayer()) layer_ = std::make_unique<SdkLayer>(*layer);
}

SdkNode::~SdkNode() = default;

const MCHAR* SdkNode::GetName() {
    return scene_.oddities.hasNullTexts ? nullptr : name_.c_str();
}

::ReferenceTarget* SdkNode::GetReference(int index) {
    return index == NODE_LAYER_REF ? layer_.get() : nullptr;
}

BOOL SdkNode::GetUserPropInt(const MSTR& key, int& value) {
    return node_.GetMaxNode()->GetUserPropInt(hostText(key.data()), value) ? 1 : 0;
}

// The host's objects live as long as the scene interface's, so there is one here, too.
const ::ObjectState& SdkNode::EvalWorldState(::TimeValue /*t*/, BOOL /*evalHidden*/) {
    host::IGameObject* object = node_.GetIGameObject();
    evaluated_ = object == nullptr ? nullptr : makeObject(*object, scene_);
    state_.obj = evaluated_.get();
    return state_;
}

::IGameNode* SdkNode::game() {
    if (!game_) game_ = std::make_unique<Game>(*this, scene_);
    return game_.get();
}

SdkScene::SdkScene(host::Host& host) : host_(host) {
    walk();
}

SdkScene::~SdkScene() = default;

void SdkScene::walk() {
    std::set<host::IGameMaterial*> used;
    std::vector<host::IGameNode*> open;
    host::IGameScene& scene = *host_.GetIGameInterface();
    scene.InitialiseIGame(false);
    for (int i = 0; i < scene.GetTopLevelNodeCount(); ++i)
        open.push_back(scene.GetTopLevelNode(i));
    while (!open.empty()) {
        host::IGameNode* node = open.back();
        open.pop_back();
        byMaxNode_[node->GetMaxNode()] = &of(*node);
        used.insert(node->GetNodeMaterial());
        for (int i = 0; i < node->GetChildCount(); ++i)
            open.push_back(node->GetNodeChild(i));
    }
    materials_ = std::make_unique<SdkMaterials>(used);
}

SdkNode& SdkScene::of(host::IGameNode& node) {
    auto& made = nodes_[&node];
    if (!made) made = std::make_unique<SdkNode>(node, *this);
    return *made;
}

::IGameNode* SdkScene::game(host::IGameNode* node) {
    return oddities.hasNullNodes ? nullptr : of(*node).game();
}

bool SdkScene::InitialiseIGame(bool selected) {
    treatment.calls.emplace_back(selected ? "initialise the selection" : "initialise");
    return !oddities.isNotEnumerated && host_.GetIGameInterface()->InitialiseIGame(selected);
}

int SdkScene::GetTotalNodeCount() {
    return host_.GetIGameInterface()->GetTotalNodeCount();
}

int SdkScene::GetTopLevelNodeCount() {
    return host_.GetIGameInterface()->GetTopLevelNodeCount();
}

::IGameNode* SdkScene::GetTopLevelNode(int index) {
    return game(host_.GetIGameInterface()->GetTopLevelNode(index));
}

unsigned long SdkScene::GetInstances(::INode& source, ::INodeTab& instances) const {
    ++treatment.instanceQuestions;
    if (oddities.hasEmptyInstanceList) return 0;
    host::INode& node = *static_cast<SdkNode&>(source).source().GetMaxNode();
    const host::INodeTab given = host_.GetInstanceMgr()->GetInstances(node);
    for (int i = 0; i < given.Count(); ++i) {
        ::INode* instance = byMaxNode_.at(given[i]);
        instances.Append(1, &instance);
    }
    return static_cast<unsigned long>(instances.Count());
}

}  // namespace velinor
