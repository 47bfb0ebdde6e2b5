#include "hosts/max/sdk_standin/sdk_environment.h"

#include <atomic>
#include <new>

namespace {

SdkEnvironment* current = nullptr;
int languagePackRequestCount = 0;
// Tests look at them from another thread, while the host's waits in a dialog.
std::atomic<int> acceleratorsOff = 0;
std::atomic<int> acceleratorsOn = 0;

}  // namespace

void setSdkEnvironment(SdkEnvironment* environment) {
    current = environment;
}

int languagePackRequests() {
    return languagePackRequestCount;
}

AcceleratorSwitches acceleratorSwitches() {
    return {acceleratorsOff, acceleratorsOn};
}

void* MaxHeapOperators::operator new(size_t size) {
    if (current != nullptr && !current->hasRoom()) throw std::bad_alloc();
    return ::operator new(size);
}

void MaxHeapOperators::operator delete(void* memory) {
    ::operator delete(memory);
}

Interface* GetCOREInterface() {
    return current == nullptr ? nullptr : current->core();
}

IGameScene* GetIGameInterface() {
    return current == nullptr ? nullptr : current->scene();
}

IGameConversionManager* GetConversionManager() {
    return current == nullptr ? nullptr : current->conversionManager();
}

IInstanceMgr* IInstanceMgr::GetInstanceMgr() {
    return current == nullptr ? nullptr : current->instanceMgr();
}

IFileResolutionManager* IFileResolutionManager::GetInstance() {
    return current == nullptr ? nullptr : current->fileResolutionManager();
}

BOOL DoesFileExist(const MCHAR* file, bool /*allowDirectory*/) {
    return current == nullptr ? 0 : current->doesFileExist(file);
}

void DisableAccelerators() {
    ++acceleratorsOff;
}

void EnableAccelerators() {
    ++acceleratorsOn;
}

namespace MaxSDK {

int MaxMessageBox(HWND /*owner*/, const MCHAR* text, const MCHAR* caption, UINT type) {
    return current == nullptr ? 0 : current->showMessage(text, caption, type);
}

namespace Util {

void UseLanguagePackLocale() {
    ++languagePackRequestCount;
}

}  // namespace Util
}  // namespace MaxSDK
