#include "tests/architecture/include_rules.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

namespace velinor {
namespace {

namespace fs = std::filesystem;

std::string contentOf(const fs::path& path) {
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

bool isSource(const fs::path& path) {
    return path.extension() == ".h" || path.extension() == ".cpp";
}

// Every source file of the project, without what was built.
std::vector<SourceFile> sourceFiles() {
    const fs::path root = TOLVEX_SOURCE_DIR;
    std::vector<SourceFile> files;
    for (fs::recursive_directory_iterator entry(root), end; entry != end; ++entry) {
        const std::string name = entry->path().filename().string();
        if (entry->is_directory() && (name.starts_with("build") || name.starts_with("."))) {
            entry.disable_recursion_pending();
        } else if (entry->is_regular_file() && isSource(entry->path())) {
            files.push_back({fs::relative(entry->path(), root).generic_string(), contentOf(entry->path())});
        }
    }
    return files;
}

TEST(IncludeRules, HoldInTheWholeTree) {
    const std::vector<SourceFile> files = sourceFiles();
    EXPECT_GT(files.size(), 100U);
    for (const SourceFile& file : files) {
        for (const std::string& fault : includeFaults(file))
            ADD_FAILURE() << fault;
    }
}

TEST(IncludeRules, HaveNoCircle) {
    std::set<std::string_view> below;
    for (const PartRule& rule : partRules()) {
        for (const std::string_view used : rule.uses)
            EXPECT_TRUE(below.contains(used)) << rule.part << " uses " << used;
        below.insert(rule.part);
    }
}

TEST(IncludeRules, StandInTheDocument) {
    const std::string document = contentOf(fs::path(TOLVEX_SOURCE_DIR) / "docs/architecture.md");
    for (const PartRule& rule : partRules()) {
        if (rule.part == "element_tree" || rule.part == "settings" || rule.part == "folders") continue;
        EXPECT_NE(document.find("`" + std::string(rule.part) + "`"), std::string::npos) << rule.part;
    }
}

TEST(IncludeRules, FindWhatBreaksThem) {
    struct Case {
        const char* path;
        const char* text;
        std::vector<std::string> faults;
    };
    for (const Case& c : {
             Case{"scene/a.cpp", "#include \"host/node.h\"\n#include <vector>\n", {}},
             Case{"scene/a.cpp",
                  "// comment\n#include \"plugin/exporter.h\"\n",
                  {"scene/a.cpp:2: scene may not include plugin (plugin/exporter.h)"}},
             Case{"scene/a.cpp", "#include \"plugin/export_settings.h\"\n", {}},
             Case{"base/a.h",
                  "  #  include \"host/node.h\"\n",
                  {"base/a.h:1: base may not include host (host/node.h)"}},
             Case{"geometry/a.cpp", "#include \"descriptors/element_tree.h\"\n", {}},
             Case{"geometry/a.cpp",
                  "#include \"descriptors/jsx_text.h\"\n",
                  {"geometry/a.cpp:1: geometry may not include descriptors (descriptors/jsx_text.h)"}},
             Case{"scene/a.cpp",
                  "#include \"node_name.h\"\n",
                  {"scene/a.cpp:1: \"node_name.h\" is not written from the root"}},
             Case{"plugin/a.cpp",
                  "#include <assimp/scene.h>\n",
                  {"plugin/a.cpp:1: plugin may not include <assimp/scene.h>"}},
             Case{"cli/a.cpp", "#include <unistd.h>\n", {"cli/a.cpp:1: cli may not include <unistd.h>"}},
             Case{"plugin/a.cpp",
                  "#include \"tests/support/test_scene.h\"\n",
                  {"plugin/a.cpp:1: plugin may not include tests (tests/support/test_scene.h)"}},
             Case{"plugin/a_test.cpp", "#include \"tests/support/test_scene.h\"\n", {}},
             Case{"strange/a.cpp",
                  "",
                  {"strange/a.cpp:1: this folder is not in the table of who may include whom"}},
         }) {
        EXPECT_EQ(includeFaults({c.path, c.text}), c.faults) << c.path << "\n" << c.text;
    }
}

}  // namespace
}  // namespace velinor
