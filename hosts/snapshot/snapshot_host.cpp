// The host over a snapshot: its scene, nodes and instances. One object a node, made once; what an object
// needs beyond its snapshot is made when it is asked for and freed with the object.
#include "hosts/snapshot/snapshot_host.h"

#include <unordered_map>
#include <utility>
#include <vector>

#include "hosts/snapshot/snapshot_host_files.h"
#include "hosts/snapshot/snapshot_host_material.h"
#include "hosts/snapshot/snapshot_host_objects.h"

namespace velinor {
namespace {

using host::HostText;
using host::INode;
using host::TimeValue;

class Layer final : public host::ILayer {
  public:
    explicit Layer(bool isHidden) : isHidden_(isHidden) {}
    bool IsHidden(bool /*includeParent*/) const override { return isHidden_; }

  private:
    bool isHidden_;
};

class Node;

// What the nodes of one scene share.
struct Scene {
    explicit Scene(const SceneSnapshot& scene);
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;
    ~Scene();

    const SceneSnapshot& snapshot;
    SnapshotHostMaterials materials;
    Layer shownLayer{false};
    Layer hiddenLayer{true};
    std::vector<Node> nodes;  // never grows once nodes refer to each other
};

// Both views of a node: the host's and the scene interface's.
class Node final : public INode, public host::IGameNode {
  public:
    Node(const SnapshotNode& node, Scene& scene) : node_(node), scene_(scene) {}

    HostText GetName() const override { return node_.name; }

    bool Selected() const override { return node_.selected; }
    bool IsObjectHidden() const override { return node_.hidden; }
    host::ILayer* GetLayer() const override {
        return node_.layerHidden ? &scene_.hiddenLayer : &scene_.shownLayer;
    }

    bool GetUserPropInt(HostText key, std::int32_t& value) const override {
        if (node_.userProperties.empty()) return false;
        const auto found = node_.userProperties.find(std::u16string(key));
        if (found == node_.userProperties.end()) return false;
        value = found->second;
        return true;
    }

    host::Object* EvalWorldState(TimeValue /*t*/) override {
        SnapshotHostObject* made = object();
        return made ? &made->maxObject() : nullptr;
    }

    INode* GetMaxNode() override { return this; }

    host::IGameObject* GetIGameObject() override {
        SnapshotHostObject* made = object();
        return made ? &made->gameObject() : nullptr;
    }

    void ReleaseIGameObject() override { object_.reset(); }

    host::GMatrix GetObjectTM(TimeValue /*t*/) const override { return node_.worldTransform; }

    int GetChildCount() const override { return static_cast<int>(node_.children.size()); }
    host::IGameNode* GetNodeChild(int index) const override {
        return &scene_.nodes[node_.children.at(static_cast<std::size_t>(index))];
    }

    host::IGameMaterial* GetNodeMaterial() override { return scene_.materials.material(node_.material); }

    const SnapshotNode& snapshot() const { return node_; }

    // The list that holds this node alone.
    std::span<INode* const> self() const { return {&self_, 1}; }

  private:
    SnapshotHostObject* object() {
        if (!object_ && node_.object) object_ = makeHostObject(*node_.object, scene_.snapshot);
        return object_.get();
    }

    const SnapshotNode& node_;
    Scene& scene_;
    INode* self_ = this;
    std::unique_ptr<SnapshotHostObject> object_;
};

Scene::Scene(const SceneSnapshot& scene) : snapshot(scene), materials(scene) {
    nodes.reserve(scene.nodes.size());
    for (const SnapshotNode& node : scene.nodes)
        nodes.emplace_back(node, *this);
}

Scene::~Scene() = default;

// A list that the members of a group share is made once for all of them.
class Instances final : public host::IInstanceMgr {
  public:
    explicit Instances(Scene& scene) {
        for (const Node& node : scene.nodes) {
            const auto& instances = node.snapshot().instances;
            if (!instances) continue;
            auto& list = lists_[&instances->nodes()];
            if (!list.empty()) continue;
            list.reserve(instances->nodes().size());
            for (const SnapshotRef ref : instances->nodes())
                list.push_back(&scene.nodes[ref]);
        }
    }

    host::INodeTab GetInstances(const INode& node) const override {
        const Node& own = static_cast<const Node&>(node);
        const auto& instances = own.snapshot().instances;
        return host::INodeTab(instances ? std::span<INode* const>(lists_.at(&instances->nodes()))
                                        : own.self());
    }

  private:
    std::unordered_map<const std::vector<SnapshotRef>*, std::vector<INode*>>
        lists_;  // only looked up, never walked
};

class SnapshotHost final : public host::Host, public host::IGameScene {
  public:
    SnapshotHost(const SceneSnapshot& scene, const std::filesystem::path& folder, SleepFunction sleep)
        : scene_(scene), instances_(scene_), files_(scene.assetFolders, folder), sleep_(std::move(sleep)) {}

    host::IGameScene* GetIGameInterface() override { return this; }
    host::IInstanceMgr* GetInstanceMgr() override { return &instances_; }
    host::Interval GetAnimRange() const override {
        return {scene_.snapshot.animationStart, scene_.snapshot.animationStart};
    }
    bool DoesFileExist(HostText file) const override { return files_.exists(file); }
    host::IFileResolutionManager* GetFileResolutionManager() override { return &files_; }
    void Sleep(std::uint32_t milliseconds) override {
        if (sleep_) sleep_(milliseconds);
    }

    // The whole scene only: exporters select for themselves.
    bool InitialiseIGame(bool selected) override { return !selected; }

    int GetTotalNodeCount() const override { return static_cast<int>(scene_.snapshot.nodes.size()); }
    int GetTopLevelNodeCount() const override { return static_cast<int>(scene_.snapshot.roots.size()); }
    host::IGameNode* GetTopLevelNode(int index) const override {
        return &scene_.nodes[scene_.snapshot.roots.at(static_cast<std::size_t>(index))];
    }

  private:
    mutable Scene scene_;  // the scene interface gives nodes that can change from operations that are const
    Instances instances_;
    SnapshotHostFiles files_;
    SleepFunction sleep_;
};

}  // namespace

std::unique_ptr<host::Host> makeSnapshotHost(const SceneSnapshot& scene, const std::filesystem::path& folder,
                                             SleepFunction sleep) {
    return std::make_unique<SnapshotHost>(scene, folder, std::move(sleep));
}

}  // namespace velinor
