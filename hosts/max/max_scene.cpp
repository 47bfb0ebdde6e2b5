#include "hosts/max/max_scene.h"

#include <algorithm>

namespace velinor {
namespace {

// Other exporters of the process may have left axes of their own; the exporter converts by itself.
void keepNativeAxes() {
    ::IGameConversionManager* manager = ::GetConversionManager();
    if (manager != nullptr) manager->SetCoordSystem(::IGameConversionManager::IGAME_MAX);
}

}  // namespace

// An error of the host while it takes back its scene has nobody to go to.
MaxScene::~MaxScene() {
    try {
        release();
    } catch (...) {
        scene_ = nullptr;
    }
}

// The SDK documents setting the axes before the enumeration in one place and after it in another.
bool MaxScene::InitialiseIGame(bool selected) {
    release();
    ::IGameScene* scene = ::GetIGameInterface();
    if (scene == nullptr) return false;
    keepNativeAxes();
    if (!scene->InitialiseIGame(selected)) return false;
    scene_ = scene;
    keepNativeAxes();
    scene->SetStaticFrame(0);
    return true;
}

int MaxScene::GetTotalNodeCount() const {
    return scene_ == nullptr ? 0 : std::max(0, scene_->GetTotalNodeCount());
}

int MaxScene::GetTopLevelNodeCount() const {
    return scene_ == nullptr ? 0 : scene_->GetTopLevelNodeCount();
}

host::IGameNode* MaxScene::GetTopLevelNode(int index) const {
    return &nodes_.of(scene_ == nullptr ? nullptr : scene_->GetTopLevelNode(index));
}

void MaxScene::release() {
    instances_.clear();
    nodes_.clear();
    ::IGameScene* scene = scene_;
    scene_ = nullptr;
    if (scene != nullptr) scene->ReleaseIGame();
}

}  // namespace velinor
