#include "plugin/file_error_text.h"

#include "base/text.h"
#include "platform/error_text.h"
#include "plugin/package_folders.h"

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

std::string_view removeAdvice(const fs::path& path, const FullFolderAdvice& advice) {
    std::error_code ignored;  // the error itself is "access denied" on some systems
    if (!fs::is_directory(path, ignored) || fs::is_empty(path, ignored))
        return "check the permissions of the folder that holds it";
    return isPackage(path) ? advice.package : advice.other;
}

std::string_view adviceFor(const std::string& operation, const fs::path& path,
                           const FullFolderAdvice& advice) {
    if (operation == "remove") return removeAdvice(path, advice);
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

}  // namespace

std::string fileErrorText(const fs::filesystem_error& error, const FullFolderAdvice& advice) {
    const std::string operation = operationOf(error);
    return operation + ": " + filesOf(error) + errorText(error.code()) + "; " +
           std::string(adviceFor(operation, error.path1(), advice));
}

}  // namespace velinor
