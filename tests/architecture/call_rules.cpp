#include "tests/architecture/call_rules.h"

#include <regex>
#include <sstream>
#include <string_view>

namespace velinor {
namespace {

struct CallRule {
    std::regex call;
    std::string_view home;  // the files that may use it begin so
    std::string_view advice;
};

const std::vector<CallRule>& callRules() {
    static const std::vector<CallRule> rules{
        {std::regex(R"(\b(fs|filesystem)::absolute\()"), "base/normal_path.",
         "absolute() knows no paths of servers; use absolutePath of base/normal_path.h"},
        {std::regex(R"(\bis_absolute\()"), "base/normal_path.",
         "is_absolute() knows no paths of servers; use isAbsolutePath of base/normal_path.h"},
        {std::regex(R"((\.|->)message\(\))"), "platform/error_text",
         "message() is not UTF-8 on Windows; use errorText of platform/error_text.h"},
    };
    return rules;
}

bool isTest(std::string_view path) {
    return path.starts_with("tests/") || path.starts_with("fuzz/") || path.starts_with("benchmarks/") ||
           path.ends_with("_test.cpp") || path.find("_test_support") != std::string_view::npos;
}

}  // namespace

std::vector<std::string> callFaults(const SourceFile& file) {
    std::vector<std::string> faults;
    if (isTest(file.path)) return faults;
    std::istringstream lines(file.text);
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        const std::string code = line.substr(0, line.find("//"));
        for (const CallRule& rule : callRules()) {
            if (file.path.starts_with(rule.home) || !std::regex_search(code, rule.call)) continue;
            faults.push_back(file.path + ":" + std::to_string(number) + ": " + std::string(rule.advice));
        }
    }
    return faults;
}

}  // namespace velinor
