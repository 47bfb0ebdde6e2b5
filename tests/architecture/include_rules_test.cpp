#include "tests/architecture/include_rules.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>

namespace velinor {
namespace {

namespace fs = std::filesystem;

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

// The name that the document's table gives to a part: a folder in backquotes, or words for a few files.
std::string nameInDocument(std::string_view part) {
    if (part == "settings" || part == "folders" || part == "plug-in") return std::string(part);
    if (part == "element_tree") return "element tree";
    return "`" + std::string(part) + "`";
}

// The second cell of the part's row in the document's table.
std::string usesInDocument(const PartRule& rule) {
    std::string uses;
    for (const std::string_view used : rule.uses) {
        uses += (uses.empty() ? "" : ", ") + nameInDocument(used);
    }
    return uses.empty() ? "nothing" : uses;
}

TEST(IncludeRules, StandInTheDocument) {
    const std::string document = contentOf(fs::path(TOLVEX_SOURCE_DIR) / "docs/architecture.md");
    for (const PartRule& rule : partRules()) {
        std::smatch row;
        const std::regex pattern("\n\\| " + nameInDocument(rule.part) + "[^|\n]* \\| ([^|\n]*) \\|\n");
        ASSERT_TRUE(std::regex_search(document, row, pattern)) << "no row for " << rule.part;
        EXPECT_EQ(row[1], usesInDocument(rule)) << "in the row of " << rule.part;
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
                  {"scene/a.cpp:2: scene may not include plugin (\"plugin/exporter.h\"); it may use host, "
                   "base, settings"}},
             Case{"scene/a.cpp", "#include \"plugin/export_settings.h\"\n", {}},
             Case{"base/a.h",
                  "  #  include \"host/node.h\"\n",
                  {"base/a.h:1: base may not include host (\"host/node.h\"); it may use nothing"}},
             Case{"geometry/a.cpp", "#include \"descriptors/element_tree.h\"\n", {}},
             Case{"geometry/a.cpp",
                  "#include \"descriptors/jsx_text.h\"\n",
                  {"geometry/a.cpp:1: geometry may not include descriptors (\"descriptors/jsx_text.h\"); it "
                   "may use scene, materials, element_tree, platform, host, base, settings, folders"}},
             Case{"scene/a.cpp",
                  "#include \"node_name.h\"\n",
                  {"scene/a.cpp:1: \"node_name.h\" is not written from the root"}},
             Case{"plugin/a.cpp",
                  "#include <assimp/scene.h>\n",
                  {"plugin/a.cpp:1: plugin may not include <assimp/scene.h>; only hosts/assimp may"}},
             Case{"cli/a.cpp",
                  "#include <unistd.h>\n",
                  {"cli/a.cpp:1: cli may not include <unistd.h>; only platform and plugin/*_max may"}},
             Case{"plugin/window_max.cpp", "#include <windows.h>\n", {}},
             Case{"plugin/window.cpp",
                  "#include <windows.h>\n",
                  {"plugin/window.cpp:1: plugin may not include <windows.h>; only platform and plugin/*_max "
                   "may"}},
             Case{"plugin/exporter.cpp",
                  "#include \"plugin/options_window_max.h\"\n",
                  {"plugin/exporter.cpp:1: plugin may not include plug-in (\"plugin/options_window_max.h\"); "
                   "it "
                   "may use geometry, descriptors, element_tree, materials, scene, host, platform, base, "
                   "settings, folders"}},
             Case{"hosts/max/max_nodes.cpp",
                  "#include <IGame/IGame.h>\n",
                  {"hosts/max/max_nodes.cpp:1: hosts/max may not include <IGame/IGame.h>; only "
                   "hosts/max/max_sdk.h may"}},
             Case{"platform/a_posix.cpp", "#include <unistd.h>\n#include <sys/wait.h>\n", {}},
             Case{"scene/a.cpp", "#include <signalling.h>\n#include <csignal>\n", {}},
             Case{"host/gmatrix.cpp", "#include <Eigen/Dense>\n", {}},
             Case{"host/a.cpp",
                  "#include <Eigen/Dense>\n",
                  {"host/a.cpp:1: host may not include <Eigen/Dense>; only host/gmatrix.cpp may"}},
             Case{"scene/a.cpp",
                  "#include <gtest/gtest.h>\n",
                  {"scene/a.cpp:1: scene may not include <gtest/gtest.h>; only tests and benchmarks may"}},
             Case{"plugin/a.cpp",
                  "#include \"tests/support/test_scene.h\"\n",
                  {"plugin/a.cpp:1: plugin may not include tests (\"tests/support/test_scene.h\"); it may "
                   "use geometry, descriptors, element_tree, materials, scene, host, platform, base, "
                   "settings, folders"}},
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
