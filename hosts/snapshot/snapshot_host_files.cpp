#include "hosts/snapshot/snapshot_host_files.h"

#include <optional>
#include <system_error>

#include "base/normal_path.h"
#include "base/text.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

bool isThere(const fs::path& path) {
    std::error_code error;
    return fs::exists(path, error);
}

// A system call would take the text up to the zero for the name.
bool isName(host::HostText file) {
    return !file.empty() && file.find(u'\0') == host::HostText::npos;
}

// Nothing where the path is no text.
std::optional<std::u16string> textOf(const fs::path& path) {
    const std::u8string utf8 = path.u8string();
    return toUtf16({reinterpret_cast<const char*>(utf8.data()), utf8.size()});
}

}  // namespace

SnapshotHostFiles::SnapshotHostFiles(const std::vector<std::u16string>& assetFolders, const fs::path& folder)
    : folder_(folder.empty() ? fs::current_path() : absolutePath(folder)), searched_{folder_} {
    for (const auto& assetFolder : assetFolders)
        searched_.push_back(joinedPath(folder_, toPath(assetFolder)));
}

bool SnapshotHostFiles::exists(host::HostText file) const {
    return isName(file) && isThere(joinedPath(folder_, toPath(file)));
}

bool SnapshotHostFiles::GetFullFilePath(std::u16string& filePath, host::AssetType /*type*/) const {
    if (!isName(filePath)) return false;
    if (exists(filePath)) {
        const auto text = textOf(joinedPath(folder_, toPath(filePath)));
        if (text) filePath = *text;
        return text.has_value();
    }
    const host::HostText name = lastPathComponent(filePath);
    if (name.empty()) return false;
    for (const auto& searched : searched_) {
        const fs::path path = searched / toPath(name);
        if (!isThere(path)) continue;
        const auto text = textOf(path);
        if (!text) continue;
        filePath = *text;
        return true;
    }
    return false;
}

}  // namespace velinor
