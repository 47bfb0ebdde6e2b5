// A scene of the SDK's stand-in over that of a host, and how it was treated.
#pragma once

#include "hosts/max/max_sdk.h"

#include <map>
#include <memory>
#include <vector>

#include "host/core.h"
#include "tests/max/sdk_materials.h"
#include "tests/max/sdk_mesh_object.h"

namespace velinor {

// Answers that a host may give and should not.
struct SdkOddities {
    bool isNotEnumerated = false;    // InitialiseIGame fails
    bool hasNullNodes = false;       // every node of the scene interface is null
    bool hasNullMaxNodes = false;    // the scene interface has nodes, the host has none for them
    bool hasNullMaxObjects = false;  // the scene interface has objects, the host has none for them
    bool hasNullTexts = false;       // nodes have no names
    bool hasEmptyInstanceList = false;
    bool convertsMeshes = false;  // no mesh is its own triangle object
    bool hidesLights = false;     // the object of a light is none; its node's evaluation is
};

// What was asked of the scene.
struct SdkTreatment {
    std::vector<std::string> calls;  // of the life cycle, in order
    int heldObjects = 0;             // gotten and not released
    int mostHeldObjects = 0;
    int instanceQuestions = 0;
    ConversionCount conversions;
};

class SdkScene;

// Both views of one node.
class SdkNode final : public ::INode {
  public:
    SdkNode(host::IGameNode& node, SdkScene& scene);
    ~SdkNode() override;

    const MCHAR* GetName() override;
    int Selected() override { return node_.GetMaxNode()->Selected() ? 1 : 0; }
    int IsObjectHidden() override { return node_.GetMaxNode()->IsObjectHidden() ? 1 : 0; }
    ::ReferenceTarget* GetReference(int index) override;
    BOOL GetUserPropInt(const MSTR& key, int& value) override;
    const ::ObjectState& EvalWorldState(::TimeValue t, BOOL evalHidden) override;

    // The scene interface's view.
    ::IGameNode* game();
    host::IGameNode& source() { return node_; }

  private:
    class Game;

    host::IGameNode& node_;
    SdkScene& scene_;
    SdkString name_;
    std::unique_ptr<::ILayer> layer_;
    std::unique_ptr<::Object> evaluated_;
    ::ObjectState state_;
    std::unique_ptr<Game> game_;
};

class SdkScene final : public ::IGameScene, public ::IGameConversionManager, public ::IInstanceMgr {
  public:
    using ::IGameScene::operator new;
    using ::IGameScene::operator delete;

    explicit SdkScene(host::Host& host);
    SdkScene(const SdkScene&) = delete;
    SdkScene& operator=(const SdkScene&) = delete;
    ~SdkScene() override;

    bool InitialiseIGame(bool selected) override;
    void ReleaseIGame() override { treatment.calls.emplace_back("release"); }
    void SetStaticFrame(int frame) override {
        treatment.calls.push_back("static frame " + std::to_string(frame));
    }
    void SetCoordSystem(CoordSystem system) override {
        treatment.calls.push_back("axes " + std::to_string(system));
    }
    int GetTotalNodeCount() override;
    int GetTopLevelNodeCount() override;
    ::IGameNode* GetTopLevelNode(int index) override;
    unsigned long GetInstances(::INode& source, ::INodeTab& instances) const override;

    SdkNode& of(host::IGameNode& node);
    ::IGameNode* game(host::IGameNode* node);
    SdkMaterials& materials() { return *materials_; }

    SdkOddities oddities;
    mutable SdkTreatment treatment;

  private:
    void walk();

    host::Host& host_;
    std::map<host::IGameNode*, std::unique_ptr<SdkNode>> nodes_;
    std::map<host::INode*, SdkNode*> byMaxNode_;
    std::unique_ptr<SdkMaterials> materials_;
};

}  // namespace velinor
