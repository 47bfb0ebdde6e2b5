// docs/messages.md is made of the catalogue of messages. TOLVEX_REWRITE_EXPECTED=1 in the environment
// rewrites it.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string_view>

#include "base/messages.h"
#include "tests/support/platform_text.h"

namespace velinor {
namespace {

std::string renderedCatalogue() {
    std::string text =
        "# Messages of a report\n\n"
        "Everything that an export can tell about a scene. Codes are stable: `--json` gives them to "
        "programs.\n"
        "This page is made of `base/messages.cpp`.\n";
    for (const Severity severity : {Severity::error, Severity::skipped, Severity::warning, Severity::note}) {
        std::string rows;
        for (const Message& message : messageCatalogue()) {
            if (message.severity != severity) continue;
            rows += "| `" + std::string(message.code) + "` | " + std::string(message.text) + " | " +
                    std::string(message.advice) + " |\n";
        }
        if (rows.empty()) continue;
        text += "\n## " + std::string(severityName(severity)) +
                "\n\n| code | what | what to do |\n|---|---|---|\n" + rows;
    }
    return text;
}

TEST(MessagesDocument, HoldsTheCatalogue) {
    const std::filesystem::path path = std::filesystem::path(TOLVEX_SOURCE_DIR) / "docs/messages.md";
    const char* rewrite = std::getenv("TOLVEX_REWRITE_EXPECTED");
    if (rewrite != nullptr && std::string_view(rewrite) == "1") {
        ASSERT_FALSE(kIsWindows) << "the document has the line ends of Linux: rewrite it there";
        std::ofstream(path) << renderedCatalogue();
    }
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    EXPECT_EQ(text.str(), renderedCatalogue())
        << "run with TOLVEX_REWRITE_EXPECTED=1 to rewrite docs/messages.md";
}

}  // namespace
}  // namespace velinor
