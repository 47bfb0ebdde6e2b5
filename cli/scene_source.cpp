#include "cli/scene_source.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <iterator>
#include <memory>
#include <new>
#include <set>
#include <system_error>
#include <vector>

#include "base/normal_path.h"
#include "base/text.h"
#include "cli/command_error.h"
#include "cli/interrupts.h"
#include "cli/isolated_import.h"
#include "cli/node_selection.h"
#include "hosts/ase/ase_reader.h"
#include "hosts/assimp/assimp_reader.h"
#include "platform/error_text.h"
#include "platform/open_file.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void refuse(const std::string& file, const std::string& text) {
    throw CommandError(kNotRun, file + ": " + text);
}

std::string readToEnd(std::FILE* file, const std::string& name) {
    constexpr std::size_t kPiece = 1 << 20;
    std::string bytes;
    for (;;) {
        const std::size_t size = bytes.size();
        bytes.resize(size + kPiece);
        const std::size_t got = std::fread(bytes.data() + size, 1, kPiece, file);
        bytes.resize(size + got);
        if (got < kPiece) break;
    }
    if (std::ferror(file) != 0) {
        refuse(name,
               "cannot be read: " + std::generic_category().message(errno) + "; check the file and its disk");
    }
    if (bytes.empty()) refuse(name, "is empty; save the scene again");
    return bytes;
}

bool endsWith(const std::string& text, std::string_view ending) {
    if (text.size() < ending.size()) return false;
    return std::equal(ending.begin(), ending.end(), text.end() - static_cast<std::ptrdiff_t>(ending.size()),
                      [](char a, char b) { return a == (b >= 'A' && b <= 'Z' ? b - 'A' + 'a' : b); });
}

// Each once: several formats have the ending ".xml".
std::string readableEndings() {
    std::string text;
    std::set<std::string> told;
    for (const ReadableFormat& format : readableFormats()) {
        for (const std::string& ending : format.endings) {
            if (told.insert(ending).second) text += (text.empty() ? "." : ", .") + ending;
        }
    }
    return text;
}

// What is wrong with the file before it is opened.
void requireFile(const fs::path& file) {
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    const std::string name = utf8Path(file);
    if (status.type() == fs::file_type::not_found) refuse(name, "does not exist; check the path");
    if (fs::is_directory(status)) refuse(name, "is a folder; name a scene file in it");
    if (error) refuse(name, "cannot be read: " + errorText(error) + "; check the path and its permissions");
    // Libraries wait for ever for what a pipe does not send.
    if (!fs::is_regular_file(status)) refuse(name, "is no ordinary file; copy the scene into one");
}

fs::path folderOf(const fs::path& file) {
    return absolutePath(file).parent_path();
}

SceneSource readSnapshotSource(const fs::path& scene, const ReadingOptions& reading) {
    SceneSource source;
    const std::string name = sceneName(scene);
    if (scene == "-") {
        const std::string bytes = readToEnd(stdin, name);
        source.scene = readSnapshot(bytes, guessSnapshotEncoding(bytes), name);
        source.folder = fs::current_path();
    } else {
        source.scene = readSnapshot(readSceneFile(scene), *snapshotEncodingByEnding(scene), name);
        source.folder = folderOf(scene);
    }
    if (reading.upAxis) source.notes.addHint(name, kUpAxisIsStated);
    return source;
}

std::unique_ptr<TemporaryFolder> makeImageFolder() {
    try {
        return std::make_unique<TemporaryFolder>();
    } catch (const std::system_error& error) {
        throw CommandError(kFailed, "create_directory: a folder for images of the scene cannot be made: " +
                                        errorText(error.code()) + "; set " + kTemporaryFolderVariable +
                                        " to a folder that can be written to");
    }
}

// Of no use later, and more likely mistyped than meant.
void requireFolders(const std::vector<fs::path>& folders) {
    for (const fs::path& folder : folders) {
        std::error_code error;
        if (!fs::is_directory(folder, error))
            refuse(utf8Path(folder), "is no folder; name an existing one for --asset-folder");
    }
}

// The folder's path as a scene holds it.
std::u16string hostPath(const fs::path& folder) {
    const std::string path = utf8Path(absolutePath(folder));
    const auto text = toUtf16(path);
    if (!text) refuse(path, "is not valid UTF-8; rename the folder");
    return *text;
}

SceneSource readScene(const fs::path& scene, Progress& progress, const SceneOptions& wanted) {
    const ReadingOptions& reading = wanted.reading;
    if (scene == "-" || snapshotEncodingByEnding(scene)) return readSnapshotSource(scene, reading);
    requireFile(scene);
    const bool isAse = isAseFile(scene);
    if (!isAse && !canReadWithAssimp(scene)) {
        refuse(utf8Path(scene), "files of this ending cannot be read; these can: " + readableEndings());
    }
    SceneSource source;
    source.folder = folderOf(scene);
    if (wanted.images == SceneImages::extract) {
        rememberInterrupts();
        source.images = makeImageFolder();
    }
    // Our own reader stands damage, so it needs no process of its own.
    if (isAse) {
        source.scene = readAse(readSceneFile(scene), scene, {reading.assetFolders}, progress, source.notes);
        if (reading.upAxis) source.notes.addHint(utf8Path(scene), kUpAxisIsStated);
        return source;
    }
    AssimpOptions options;
    options.upAxis = reading.upAxis;
    options.assetFolders = reading.assetFolders;
    if (source.images) options.imageFolder = source.images->path();
    source.scene = importIsolated(scene, options, progress, source.notes, reading.importLimits);
    return source;
}

}  // namespace

std::string sceneName(const fs::path& scene) {
    return scene == "-" ? "standard input" : utf8Path(scene);
}

std::vector<ReadableFormat> readableFormats() {
    std::vector<ReadableFormat> formats{
        {"Scene snapshot", {"scene.json", "scene.cbor", "json", "cbor"}, {}, {}}, aseFormat()};
    std::ranges::copy(assimpFormats(), std::back_inserter(formats));
    return formats;
}

std::optional<SnapshotEncoding> snapshotEncodingByEnding(const fs::path& file) {
    const std::string name = utf8Path(file.filename());
    if (endsWith(name, ".json")) return SnapshotEncoding::json;
    if (endsWith(name, ".cbor")) return SnapshotEncoding::cbor;
    return std::nullopt;
}

std::string readSceneFile(const fs::path& file) {
    requireFile(file);
    const std::string name = utf8Path(file);
    const OpenedFile stream = openFile(file, "rb");
    if (!stream) {
        refuse(name, "cannot be read: " + std::generic_category().message(errno) + "; check its permissions");
    }
    return readToEnd(stream.get(), name);
}

SceneSource openScene(const fs::path& scene, Progress& progress, const SceneOptions& options) {
    requireFolders(options.reading.assetFolders);
    const std::string phase = "Reading " + sceneName(scene);
    progress.beginPhase(phase, 0);
    try {
        SceneSource source = readScene(scene, progress, options);
        for (const fs::path& folder : options.reading.assetFolders)
            source.scene.assetFolders.push_back(hostPath(folder));
        selectNodes(source.scene, options.reading.selected);
        return source;
    } catch (const std::bad_alloc&) {
        refuse(sceneName(scene), "needs more memory than there is; close other programs, or split the scene");
    }
}

}  // namespace velinor
