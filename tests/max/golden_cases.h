// The golden packages' scenes.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "hosts/snapshot/snapshot_io.h"

namespace velinor {

inline std::filesystem::path caseFolder(const std::string& name) {
    return std::filesystem::path(TOLVEX_PACKAGE_CASES) / name;
}

inline std::vector<std::string> goldenCases() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(TOLVEX_PACKAGE_CASES)) {
        if (entry.is_directory()) names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    return names;
}

// Those that the settings of a fresh exporter give.
inline std::vector<std::string> goldenCasesWithoutOptions() {
    std::vector<std::string> names = goldenCases();
    std::erase_if(names, [](const std::string& name) {
        return std::filesystem::exists(caseFolder(name) / "arguments.txt");
    });
    return names;
}

inline SceneSnapshot goldenScene(const std::string& name) {
    std::ostringstream text;
    text << std::ifstream(caseFolder(name) / "scene.scene.json", std::ios::binary).rdbuf();
    return readSnapshot(text.str(), SnapshotEncoding::json, name);
}

// A case's name as tests may bear it.
inline std::string testName(std::string caseName) {
    std::ranges::replace(caseName, '-', '_');
    return caseName;
}

}  // namespace velinor
