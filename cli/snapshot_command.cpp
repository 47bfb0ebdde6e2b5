// The command "snapshot": saves any scene as a scene snapshot.
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "base/text.h"
#include "cli/commands.h"
#include "cli/interrupts.h"
#include "cli/progress_bar.h"
#include "cli/scene_images.h"
#include "cli/scene_source.h"
#include "cli/sibling_name.h"
#include "cli/standard_output.h"
#include "platform/error_text.h"
#include "platform/open_file.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const char* operation, const fs::path& path, const std::string& reason) {
    throw CommandError(kFailed, std::string(operation) + ": " + utf8Path(path) + ": " + reason +
                                    "; check free space and permissions of its folder");
}

// The reason why `bytes` are not all in the file `path`; empty where they are.
std::string writeBytes(const fs::path& path, const std::string& bytes) {
    OpenedFile file = openFile(path, "wb");
    if (!file) return std::generic_category().message(errno);
    int error = std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size() ? 0 : errno;
    if (std::fclose(file.release()) != 0 && error == 0) error = errno;
    return error == 0 ? std::string() : std::generic_category().message(error);
}

// Under a temporary name first, so that the file is whole or not there.
void replaceFile(const fs::path& path, const std::string& bytes) {
    const fs::path temporary = unusedSibling(path, "new");
    std::error_code error;
    if (const std::string reason = writeBytes(temporary, bytes); !reason.empty()) {
        fs::remove(temporary, error);
        fail("write", path, reason);
    }
    fs::rename(temporary, path, error);
    if (!error) return;
    const std::string reason = errorText(error);
    fs::remove(temporary, error);
    fail("rename", path, reason);
}

void showNotes(const ImportNotes& notes, ProgressBar& progress) {
    for (const ImportNote& note : notes.notes())
        progress.announce(note.subject + ": " + note.text);
}

}  // namespace

ExitStatus runSnapshot(const SnapshotArguments& arguments) {
    const auto encoding = snapshotEncodingByEnding(arguments.out);
    if (!encoding) {
        throw CommandError(kNotRun,
                           utf8Path(arguments.out) +
                               ": the ending does not say how to write it; use .scene.json or .scene.cbor");
    }
    requireImageLibrary();
    ProgressBar progress(progressStyleOfStandardError());
    progress.announce("reading " + sceneName(arguments.scene) + " ...");
    SceneSource source = openScene(arguments.scene, progress, {SceneImages::extract, arguments.reading});
    progress.clear();
    showNotes(source.notes, progress);

    throwIfInterrupted();
    SnapshotImages images(source, arguments.out);
    replaceFile(arguments.out, writeSnapshot(source.scene, *encoding));
    images.keep();

    StandardOutput output;
    output.write(printable(utf8Path(arguments.out)) + "\n");
    output.finish();
    return kDone;
}

}  // namespace velinor
