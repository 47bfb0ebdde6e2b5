// Working through files with code that may crash on one of them.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace velinor {

// What the isolated code has to say about a file: a few texts, in an order that both sides know.
using FileMessage = std::vector<std::string>;
using SendFileMessage = std::function<void(const FileMessage&)>;

// Looks at one file in the isolated process.
using LookAtFile = std::function<void(const std::string& file, const SendFileMessage& send)>;

struct IsolatedFiles {
    // Makes, in a fresh process, what looks at files there. It may hold a library's state.
    std::function<LookAtFile()> prepare;
    // Gets each message about `file`, here.
    std::function<void(const std::string& file, const FileMessage& message)> receive;
    // Gets each file that ended its process, with how that went: "a crash (signal 6)".
    std::function<void(const std::string& file, const std::string& end)> broken;
};

// Looks at `files` in order, in one process, and in a new one after each file that ended it. Throws
// std::runtime_error where it ends before its first file.
void lookAtFiles(const std::vector<std::string>& files, const IsolatedFiles& work);

}  // namespace velinor
