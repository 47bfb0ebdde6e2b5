#include "tests/architecture/include_rules.h"

#include <algorithm>
#include <optional>
#include <sstream>

namespace velinor {
namespace {

// Files that are parts of their own: plain data at the bottom of the plugin folder, and the shared element
// tree.
struct PlainFile {
    std::string_view prefix;
    std::string_view part;
};
constexpr PlainFile kPlainFiles[] = {
    {"plugin/export_settings", "settings"},
    {"plugin/options_dialog.h", "settings"},
    {"plugin/package_folders", "folders"},
    {"descriptors/element_tree", "element_tree"},
};

// Headers of libraries and systems, and the only parts or files that may include them.
struct LibraryRule {
    std::string_view prefix;
    std::vector<std::string_view> users;
};
const std::vector<LibraryRule>& libraryRules() {
    static const std::vector<LibraryRule> rules{
        {"assimp/", {"hosts/assimp"}},
        {"cbor.h", {"hosts/snapshot"}},
        {"re2/", {"scene", "cli"}},
        {"Eigen/", {"host/gmatrix.cpp"}},
        {"vips/", {"materials", "hosts/assimp"}},
        {"utf8.h", {"base"}},
        {"utf8/", {"base"}},
        {"CLI/", {"cli"}},
        {"pugixml.hpp", {"geometry"}},
        {"maxapi.h", {"hosts/max/max_sdk.h"}},
        {"max.h", {"hosts/max/max_sdk.h"}},
        {"IGame/", {"hosts/max/max_sdk.h"}},
        {"nlohmann/", {"hosts/snapshot", "descriptors", "plugin", "cli"}},
        {"gtest/", {}},
        {"gmock/", {}},
        {"benchmark/", {}},
    };
    return rules;
}

// Headers of operating systems, which only platform and the files that speak to 3ds Max may include.
constexpr std::string_view kSystemHeaders[] = {
    "arpa/",  "commdlg.h", "direct.h",   "dirent.h",   "dlfcn.h",   "fcntl.h",    "glob.h",     "io.h",
    "linux/", "malloc.h",  "netinet/",   "objbase.h",  "poll.h",    "process.h",  "psapi.h",    "pthread.h",
    "pwd.h",  "sched.h",   "shellapi.h", "shlobj.h",   "shlwapi.h", "shobjidl.h", "signal.h",   "spawn.h",
    "sys/",   "syslog.h",  "termios.h",  "ucontext.h", "unistd.h",  "windows.h",  "winsock2.h",
};

bool maySpeakToTheSystem(std::string_view part) {
    return part == "platform" || part == "plug-in";
}

// Tests, fuzz targets, benchmarks and tools may include what they need; nothing includes them.
bool isFree(std::string_view path) {
    const auto isIn = [path](std::string_view folder) { return path.starts_with(folder); };
    return isIn("tests/") || isIn("fuzz/") || isIn("benchmarks/") || isIn("tools/") ||
           path.ends_with("_test.cpp") || path.find("_test_support") != std::string_view::npos;
}

struct Include {
    std::string header;
    bool isOurs = false;  // "…" and not <…>
};

std::optional<Include> includeOf(std::string_view line) {
    const auto skipBlanks = [&line] {
        line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    };
    skipBlanks();
    if (!line.starts_with('#')) return std::nullopt;
    line.remove_prefix(1);
    skipBlanks();
    if (!line.starts_with("include")) return std::nullopt;
    line.remove_prefix(std::string_view("include").size());
    skipBlanks();
    const bool isOurs = line.starts_with('"');
    if (!isOurs && !line.starts_with('<')) return std::nullopt;
    const std::size_t end = line.find(isOurs ? '"' : '>', 1);
    return Include{std::string(line.substr(1, end - 1)), isOurs};
}

const PartRule* ruleOf(std::string_view part) {
    const auto found = std::ranges::find(partRules(), part, &PartRule::part);
    return found == partRules().end() ? nullptr : &*found;
}

std::string listed(const std::vector<std::string_view>& names) {
    std::string list;
    for (const std::string_view name : names) {
        list += (list.empty() ? "" : ", ") + std::string(name);
    }
    return list.empty() ? "nothing" : list;
}

// What is wrong with an include of one of our own headers; empty where nothing is.
std::string faultOfOwn(const std::string& from, const std::string& header) {
    const std::string to = partOf(header);
    if (to.empty()) return '"' + header + "\" is not written from the root";
    const PartRule* rule = ruleOf(from);
    if (rule == nullptr || from == to || std::ranges::find(rule->uses, to) != rule->uses.end()) return {};
    return from + " may not include " + to + " (\"" + header + "\"); it may use " + listed(rule->uses);
}

// What is wrong with an include of a header of a library or a system; empty where nothing is.
std::string faultOfForeign(const std::string& path, const std::string& from, const std::string& header) {
    const auto isNamedBy = [&header](std::string_view prefix) {
        return prefix.ends_with('/') ? header.starts_with(prefix) : header == prefix;
    };
    const std::string fault = from + " may not include <" + header + ">; ";
    if (!maySpeakToTheSystem(from) && std::ranges::any_of(kSystemHeaders, isNamedBy))
        return fault + "only platform and plugin/*_max may";
    for (const LibraryRule& rule : libraryRules()) {
        if (!isNamedBy(rule.prefix)) continue;
        const auto isUser = [&](std::string_view user) { return user == from || user == path; };
        if (std::ranges::any_of(rule.users, isUser)) return {};
        return fault +
               (rule.users.empty() ? "only tests and benchmarks may" : "only " + listed(rule.users) + " may");
    }
    return {};
}

}  // namespace

const std::vector<PartRule>& partRules() {
    static const std::vector<PartRule> rules{
        {"base", {}},
        {"platform", {"base"}},
        {"host", {"base"}},
        {"settings", {"base"}},
        {"folders", {"base"}},
        {"element_tree", {"base"}},
        {"scene", {"host", "base", "settings"}},
        {"materials", {"host", "base", "platform", "settings", "folders"}},
        {"descriptors", {"scene", "host", "base", "settings", "element_tree"}},
        {"geometry",
         {"scene", "materials", "element_tree", "platform", "host", "base", "settings", "folders"}},
        {"plugin",
         {"geometry", "descriptors", "element_tree", "materials", "scene", "host", "platform", "base",
          "settings", "folders"}},
        {"hosts/snapshot", {"host", "base"}},
        {"hosts/import", {"base"}},
        {"hosts/ase", {"hosts/import", "hosts/snapshot", "host", "base"}},
        {"hosts/assimp", {"hosts/import", "hosts/snapshot", "host", "platform", "base"}},
        {"hosts/max/sdk_standin", {}},
        {"hosts/max", {"hosts/max/sdk_standin", "host", "base"}},
        {"plug-in",
         {"plugin", "hosts/max", "hosts/max/sdk_standin", "materials", "host", "platform", "base", "settings",
          "folders"}},
        {"cli",
         {"plugin", "hosts/ase", "hosts/assimp", "hosts/import", "hosts/snapshot", "geometry", "descriptors",
          "element_tree", "materials", "scene", "host", "platform", "base", "settings", "folders"}},
    };
    return rules;
}

std::string partOf(std::string_view path) {
    for (const PlainFile& file : kPlainFiles) {
        if (path.starts_with(file.prefix)) return std::string(file.part);
    }
    if (path.starts_with("plugin/") && path.find("_max") != std::string_view::npos) return "plug-in";
    const std::size_t nameAt = path.rfind('/');
    if (nameAt == std::string_view::npos) return {};
    const std::string_view folder = path.substr(0, nameAt);
    for (const std::string_view freeFolder : {"tests", "fuzz", "benchmarks", "tools"}) {
        if (folder == freeFolder || folder.starts_with(std::string(freeFolder) + "/"))
            return std::string(freeFolder);
    }
    return ruleOf(folder) == nullptr ? std::string() : std::string(folder);
}

std::vector<std::string> includeFaults(const SourceFile& file) {
    std::vector<std::string> faults;
    const std::string from = partOf(file.path);
    if (from.empty()) return {file.path + ":1: this folder is not in the table of who may include whom"};
    if (isFree(file.path)) return faults;
    std::istringstream lines(file.text);
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        const std::optional<Include> include = includeOf(line);
        if (!include) continue;
        const std::string fault = include->isOurs ? faultOfOwn(from, include->header)
                                                  : faultOfForeign(file.path, from, include->header);
        if (!fault.empty()) faults.push_back(file.path + ":" + std::to_string(number) + ": " + fault);
    }
    return faults;
}

}  // namespace velinor
