// A folder with a source and a target, for tests of copies.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "base/text.h"
#include "materials/file_copy.h"
#include "materials/materials_test_support.h"

namespace velinor {

class FileCopyTest : public testing::Test {
  protected:
    FileCopy copy(const std::filesystem::path& source, const std::filesystem::path& target) {
        return copyWholeFile(source, target, progress_);
    }
    // The operation word and the paths of the error that `action` ends with.
    static std::string errorOf(const std::function<void()>& action) {
        try {
            action();
        } catch (const std::filesystem::filesystem_error& error) {
            std::string text = error.what();
            const std::string prefix = "filesystem error: ";
            if (text.starts_with(prefix)) text.erase(0, prefix.size());
            return text.substr(0, text.find(": ")) + " " + utf8Path(error.path1().filename()) + " " +
                   utf8Path(error.path2().filename());
        }
        return "no error";
    }
    std::vector<std::string> names() const {
        std::vector<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(folder_))
            found.push_back(utf8Path(entry.path().filename()));
        std::ranges::sort(found);
        return found;
    }

    TemporaryFolder temporary_;
    std::filesystem::path folder_ = temporary_.path();
    std::filesystem::path source_ = folder_ / "source";
    std::filesystem::path target_ = folder_ / "target";
    NoProgress progress_;
};

}  // namespace velinor
