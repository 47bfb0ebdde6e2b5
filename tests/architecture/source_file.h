// The project's source files, for rules about them.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace velinor {

// A source file with its path from the root, e.g. "scene/node_name.cpp".
struct SourceFile {
    std::string path;
    std::string text;
};

std::string contentOf(const std::filesystem::path& path);

// Every source file of the project, without what was built.
std::vector<SourceFile> sourceFiles();

}  // namespace velinor
