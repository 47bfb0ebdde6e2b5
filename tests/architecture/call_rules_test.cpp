#include "tests/architecture/call_rules.h"

#include <gtest/gtest.h>

namespace velinor {
namespace {

TEST(CallRules, HoldInTheWholeTree) {
    for (const SourceFile& file : sourceFiles()) {
        for (const std::string& fault : callFaults(file))
            ADD_FAILURE() << fault;
    }
}

TEST(CallRules, FindWhatBreaksThem) {
    struct Case {
        const char* path;
        const char* text;
        std::vector<std::string> faults;
    };
    for (const Case& c : {
             Case{"cli/a.cpp",
                  "int a;\nconst auto path = fs::absolute(b);\n",
                  {"cli/a.cpp:2: absolute() knows no paths of servers; use absolutePath of "
                   "base/normal_path.h"}},
             Case{"cli/a.cpp", "// fs::absolute(b)\nabsolutePath(b);\n", {}},
             Case{"tools/x/a.h",
                  "return std::filesystem::absolute(b);",
                  {"tools/x/a.h:1: absolute() knows no paths of servers; use absolutePath of "
                   "base/normal_path.h"}},
             Case{"cli/a.cpp",
                  "b.is_absolute()",
                  {"cli/a.cpp:1: is_absolute() knows no paths of servers; use isAbsolutePath of "
                   "base/normal_path.h"}},
             Case{"tools/a.cpp",
                  "x = error.code().message();",
                  {"tools/a.cpp:1: message() is not UTF-8 on Windows; use errorText of "
                   "platform/error_text.h"}},
             Case{"cli/a.cpp", "message(entry.id); std::generic_category().message(errno);", {}},
             Case{"base/normal_path.cpp", "b.is_absolute() || fs::absolute(b)", {}},
             Case{"cli/a_test.cpp", "b.is_absolute()", {}},
         }) {
        EXPECT_EQ(callFaults({c.path, c.text}), c.faults) << c.path << "\n" << c.text;
    }
}

}  // namespace
}  // namespace velinor
