#include "cli/failure.h"

#include <filesystem>
#include <new>
#include <system_error>

#include "cli/interrupts.h"
#include "host/node.h"
#include "hosts/snapshot/scene_error.h"
#include "platform/error_text.h"
#include "plugin/file_error_text.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

constexpr FullFolderAdvice kAdvice{
    "a package is there already: export with --overwrite to replace it",
    "a folder with other files is there: choose another TARGET",
};

}  // namespace

Failure failureOf(const std::exception& error) {
    if (const auto* command = dynamic_cast<const CommandError*>(&error))
        return {command->status(), command->what()};
    if (dynamic_cast<const SceneError*>(&error) != nullptr) return {kNotRun, error.what()};
    if (const auto* file = dynamic_cast<const fs::filesystem_error*>(&error))
        return {kFailed, fileErrorText(*file, kAdvice)};
    if (dynamic_cast<const Interrupted*>(&error) != nullptr) {
        return {kFailed, "interrupted: the export was stopped and what it had written is removed"};
    }
    if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) {
        return {
            kFailed,
            "out of memory: the scene needs more than there is; close other programs, or split the scene"};
    }
    if (dynamic_cast<const host::TabOutOfRangeException*>(&error) != nullptr) {
        return {kFailed, std::string("host error: TabOutOfRangeException: ") + error.what() +
                             "; a node's list of instances is empty: \"tolvex inspect\" shows which"};
    }
    if (const auto* system = dynamic_cast<const std::system_error*>(&error)) {
        return {kFailed,
                "the system refuses: " + errorText(system->code()) + "; close other programs and try again"};
    }
    return {kFailed,
            std::string("host error: ") + error.what() + "; please report this with a snapshot of the scene"};
}

}  // namespace velinor
