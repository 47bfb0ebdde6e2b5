#include "hosts/import/texture_files.h"

#include <algorithm>
#include <system_error>

#include "base/normal_path.h"
#include "base/regular_file.h"
#include "base/text.h"
#include "hosts/import/import_text.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

std::optional<unsigned> hexDigit(char16_t c) {
    if (c >= u'0' && c <= u'9') return c - u'0';
    if (c >= u'A' && c <= u'F') return c - u'A' + 10U;
    if (c >= u'a' && c <= u'f') return c - u'a' + 10U;
    return std::nullopt;
}

// "%" and two hexadecimal digits stand for a byte of UTF-8. Nothing where there are none, or what comes out
// is no text.
std::optional<std::u16string> decodePercent(std::u16string_view uri) {
    std::string bytes;
    bool isEncoded = false;
    for (std::size_t at = 0; at < uri.size(); ++at) {
        const bool hasRoom = uri[at] == u'%' && at + 2 < uri.size();
        const auto high = hasRoom ? hexDigit(uri[at + 1]) : std::nullopt;
        const auto low = hasRoom ? hexDigit(uri[at + 2]) : std::nullopt;
        if (!high || !low) {
            const std::size_t pair = uri[at] >= 0xD800 && uri[at] < 0xDC00 ? 2 : 1;
            bytes += toUtf8(uri.substr(at, pair));
            at += pair - 1;
            continue;
        }
        bytes.push_back(static_cast<char>(*high << 4U | *low));
        at += 2;
        isEncoded = true;
    }
    return isEncoded ? toUtf16(bytes) : std::nullopt;
}

// "file:///tmp/a.png" is "/tmp/a.png", "file:///C:/a.png" is "C:/a.png".
std::u16string withoutScheme(std::u16string_view name) {
    constexpr std::u16string_view kScheme = u"file://";
    if (!name.starts_with(kScheme)) return std::u16string(name);
    name.remove_prefix(kScheme.size());
    if (name.size() > 2 && name[0] == u'/' && name[2] == u':') name.remove_prefix(1);
    return std::u16string(name);
}

fs::path portablePath(std::u16string_view name) {
    std::u16string path(name);
    std::ranges::replace(path, u'\\', u'/');
    return toPath(path);
}

// Without "." and "..", where that still names a file: behind a link it may not.
fs::path tidied(const fs::path& path) {
    const fs::path tidy = normalPath(path);
    return isRegularFile(tidy) ? tidy : path;
}

// A system call would take the text up to the zero for the name.
bool isName(std::u16string_view name) {
    return !lastPathComponent(name).empty() && name.find(u'\0') == std::u16string_view::npos;
}

std::string utf8Of(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {reinterpret_cast<const char*>(text.data()), text.size()};
}

std::string shown(std::u16string_view name) {
    return "\"" + oneLine(toUtf8(name)) + "\"";
}

// "/scenes, its folders room.fbm, textures, Textures, maps, /assets".
std::string shownFolders(const TextureFiles& files) {
    const fs::path& scene = files.searched().front();
    std::string inScene;
    std::string others;
    for (const fs::path& folder : files.searched()) {
        if (folder == scene) continue;
        const bool isInScene = folder.parent_path() == scene;
        const std::string text = printable(utf8Path(isInScene ? folder.filename() : folder));
        (isInScene ? inScene : others) += (isInScene && inScene.empty() ? "" : ", ") + text;
    }
    return printable(utf8Path(scene)) + ", its folders " + inScene + others;
}

}  // namespace

TextureFiles::TextureFiles(const fs::path& scene, TextureNames names, std::span<const fs::path> assetFolders)
    : folder_(normalPath(absolutePath(scene).parent_path())), isEncoded_(names == TextureNames::uris) {
    fs::path media = folder_ / scene.stem();
    media += ".fbm";
    searched_ = {folder_, media, folder_ / "textures", folder_ / "Textures", folder_ / "maps"};
    for (const fs::path& folder : assetFolders)
        searched_.push_back(absolutePath(folder));
}

std::optional<fs::path> TextureFiles::find(std::u16string_view name) const {
    if (!isName(name)) return std::nullopt;
    const std::u16string plain = withoutScheme(name);
    if (isEncoded_) {
        if (const auto decoded = decodePercent(plain); decoded && isName(*decoded)) {
            if (auto found = findExactly(*decoded)) return found;
            if (auto found = findLoosely(*decoded)) return found;
        }
    }
    if (auto found = findExactly(plain)) return found;
    return findLoosely(plain);
}

// The path as it stands; then, since some writers put a separator before relative paths, without that.
std::vector<fs::path> TextureFiles::pathsOf(std::u16string_view name) const {
    std::vector<fs::path> paths{joinedPath(folder_, portablePath(name))};
    const auto start = std::min(name.find_first_not_of(u"\\/"), name.size());
    if (start != 0) paths.push_back(joinedPath(folder_, portablePath(name.substr(start))));
    return paths;
}

std::optional<fs::path> TextureFiles::findExactly(std::u16string_view name) const {
    for (const fs::path& path : pathsOf(name)) {
        if (isRegularFile(path)) return tidied(path);
    }
    const fs::path last = toPath(lastPathComponent(name));
    for (const fs::path& folder : searched_) {
        if (isRegularFile(folder / last)) return folder / last;
    }
    return std::nullopt;
}

std::optional<fs::path> TextureFiles::findLoosely(std::u16string_view name) const {
    const std::string last = lowerCase(toUtf8(lastPathComponent(name)));
    std::vector<fs::path> folders;
    for (const fs::path& path : pathsOf(name))
        folders.push_back(path.parent_path());
    folders.insert(folders.end(), searched_.begin(), searched_.end());
    for (const fs::path& folder : folders) {
        const Listing& names = listing(folder);
        const auto found = names.find(last);
        if (found == names.end()) continue;
        const fs::path path = folder / toPath(toUtf16Lossy(found->second));
        if (isRegularFile(path)) return tidied(path);
    }
    return std::nullopt;
}

// Of names that differ in case alone the first in the order of their bytes counts, on every system.
const TextureFiles::Listing& TextureFiles::listing(const fs::path& folder) const {
    const auto [found, isNew] = listings_.try_emplace(folder);
    if (!isNew) return found->second;
    std::error_code error;
    for (fs::directory_iterator entries(folder, error), end; !error && entries != end;
         entries.increment(error)) {
        const std::string name = utf8Of(entries->path().filename());
        const auto [listed, isFirst] = found->second.try_emplace(lowerCase(name), name);
        if (!isFirst) listed->second = std::min(listed->second, name);
    }
    return found->second;
}

std::string missingBitmapText(std::u16string_view name, const TextureFiles& files) {
    return "the bitmap " + shown(name) + " is missing: it was looked for at this path, and as " +
           shown(lastPathComponent(name)) + " in " + shownFolders(files) + "; put it there";
}

}  // namespace velinor
