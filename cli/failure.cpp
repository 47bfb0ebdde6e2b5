#include "cli/failure.h"

#include <filesystem>
#include <new>
#include <string_view>

#include "base/text.h"
#include "cli/interrupts.h"
#include "cli/package_replacement.h"
#include "host/node.h"
#include "hosts/snapshot/scene_error.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

// The operation word that the error was made with: what() is "filesystem error: OPERATION: REASON [PATH]".
std::string operationOf(const fs::filesystem_error& error) {
    constexpr std::string_view kPrefix = "filesystem error: ";
    std::string_view text = error.what();
    if (text.starts_with(kPrefix)) text.remove_prefix(kPrefix.size());
    return std::string(text.substr(0, text.find(": ")));
}

std::string removeAdvice(const fs::filesystem_error& error) {
    std::error_code ignored;  // the error itself is "access denied" on some systems
    if (!fs::is_directory(error.path1(), ignored) || fs::is_empty(error.path1(), ignored)) {
        return "check the permissions of the folder that holds it";
    }
    return isPackage(error.path1()) ? "a package is there already: export with --overwrite to replace it"
                                    : "a folder with other files is there: choose another TARGET";
}

std::string adviceFor(const std::string& operation, const fs::filesystem_error& error) {
    if (operation == "remove") return removeAdvice(error);
    if (operation == "create_directory")
        return "make sure that the folder above it exists and can be written to";
    if (operation == "write") return "check the free space there and the permissions";
    if (operation == "copy") return "check the free space there and the permissions of both";
    return "check the path and its permissions";
}

// "FILE: ", for a copy "SOURCE to TARGET: "; empty where the error has no file.
std::string filesOf(const fs::filesystem_error& error) {
    if (error.path1().empty()) return {};
    const std::string second = error.path2().empty() ? std::string() : " to " + utf8Path(error.path2());
    return utf8Path(error.path1()) + second + ": ";
}

std::string fileSystemText(const fs::filesystem_error& error) {
    const std::string operation = operationOf(error);
    return operation + ": " + filesOf(error) + error.code().message() + "; " + adviceFor(operation, error);
}

}  // namespace

Failure failureOf(const std::exception& error) {
    if (const auto* command = dynamic_cast<const CommandError*>(&error))
        return {command->status(), command->what()};
    if (dynamic_cast<const SceneError*>(&error) != nullptr) return {kNotRun, error.what()};
    if (const auto* file = dynamic_cast<const fs::filesystem_error*>(&error))
        return {kFailed, fileSystemText(*file)};
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
    return {kFailed,
            std::string("host error: ") + error.what() + "; please report this with a snapshot of the scene"};
}

}  // namespace velinor
