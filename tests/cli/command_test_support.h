// What tests of the command share.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "base/text.h"
#include "platform/temporary_folder.h"
#include "tests/support/platform_text.h"
#include "tests/support/run_command.h"
#include "tests/support/tree_compare.h"

namespace velinor {

// Runs the command in a folder of its own that holds room.scene.json: a helper, and a hidden helper.
class CommandTest : public testing::Test {
  protected:
    static constexpr const char* kRoom =
        R"({"format": "tolvex-scene", "version": 1, "roots": [0, 1], "nodes": [)"
        R"({"name": "Seen", "object": {"type": "helper"}},)"
        R"({"name": "Unseen", "hidden": true, "object": {"type": "helper"}}]})";

    CommandTest() { write("room.scene.json", kRoom); }

    CommandResult run(const std::vector<std::string>& arguments, CommandInput input = {}) const {
        input.folder = folder();
        return runTolvex(arguments, input);
    }

    void write(const std::string& file, const std::string& content) const {
        std::ofstream(folder() / pathOfUtf8(file), std::ios::binary) << content;
    }

    // A package "room" with a file that no export writes, to tell it from a new one.
    void makeOldPackage() const {
        writeTree(folder() / "room",
                  {{"index.jsx", "old"}, {"where.json", "old"}, {"thumbs/old.png", "old"}});
    }

    std::size_t entryCount() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder()),
                                                      std::filesystem::directory_iterator()));
    }

    // Nothing but scenes is in the folder.
    void expectNothingButScenes() const {
        for (const auto& entry : std::filesystem::directory_iterator(folder())) {
            EXPECT_TRUE(utf8Path(entry.path().filename()).ends_with(".scene.json")) << entry.path();
        }
    }

    const std::filesystem::path& folder() const { return folder_.path(); }

  private:
    TemporaryFolder folder_;
};

// The last of the lines of standard error; all before it is progress.
inline std::string lastLine(const std::string& text) {
    if (text.empty()) return "";
    const std::size_t end = text.size() - (text.ends_with('\n') ? 1 : 0);
    const std::size_t before = text.rfind('\n', end == 0 ? 0 : end - 1);
    const std::size_t start = before == std::string::npos ? 0 : before + 1;
    return text.substr(start, end - start);
}

}  // namespace velinor
