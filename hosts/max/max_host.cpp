#include "hosts/max/max_host.h"

#include <chrono>
#include <thread>

#include "hosts/max/max_values.h"

namespace velinor {
namespace {

// The SDK would take the text up to the zero for the name.
bool isName(host::HostText file) {
    return !file.empty() && file.find(u'\0') == host::HostText::npos;
}

}  // namespace

bool MaxFiles::GetFullFilePath(std::u16string& filePath, host::AssetType type) const {
    constexpr bool kPastCache = false;
    ::IFileResolutionManager* manager = ::IFileResolutionManager::GetInstance();
    if (manager == nullptr || !isName(filePath)) return false;
    MaxSDK::Util::Path path(maxString(filePath).c_str());
    const auto kind = static_cast<MaxSDK::AssetManagement::AssetType>(type);
    if (!manager->GetFullFilePath(path, kind, kPastCache)) return false;
    filePath = hostText(path.GetCStr());
    return true;
}

host::Interval MaxHost::GetAnimRange() const {
    ::Interface* core = ::GetCOREInterface();
    if (core == nullptr) return {0, 0};
    const ::Interval range = core->GetAnimRange();
    return {range.Start(), range.End()};
}

bool MaxHost::DoesFileExist(host::HostText file) const {
    return isName(file) && ::DoesFileExist(maxString(file).c_str()) != 0;
}

host::IFileResolutionManager* MaxHost::GetFileResolutionManager() {
    return ::IFileResolutionManager::GetInstance() == nullptr ? nullptr : &files_;
}

void MaxHost::Sleep(std::uint32_t milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

}  // namespace velinor
