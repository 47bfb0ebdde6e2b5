#include "tools/ogre/isolated_files.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

#include "platform/forked_run.h"

namespace velinor {
namespace {

// Ends each text of a message. Texts that quote such a byte from a file lose it.
constexpr char kEnd = '\0';

std::string joined(const FileMessage& message) {
    std::string bytes;
    for (const std::string& text : message) {
        std::ranges::copy_if(text, std::back_inserter(bytes), [](char c) { return c != kEnd; });
        bytes.push_back(kEnd);
    }
    return bytes;
}

FileMessage split(std::string_view bytes) {
    FileMessage message;
    while (!bytes.empty()) {
        const std::size_t end = bytes.find(kEnd);
        message.emplace_back(bytes.substr(0, end));
        bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
    }
    return message;
}

std::string textOf(const IsolatedRun& run) {
    switch (run.end) {
        case IsolatedRun::End::timeLimit:
            return "no end within the time limit";
        case IsolatedRun::End::memoryLimit:
            return "too much memory";
        default:
            return run.cause.empty() ? "a crash" : "a crash (" + run.cause + ")";
    }
}

// A mesh of ten million triangles takes 1.5 GB as a file, and as much again as buffers.
constexpr IsolationLimits kLimits{.memoryBytes = std::uint64_t{16} << 30U, .processorSeconds = 600};

// The message that says that the next file is begun; every other one has texts.
const std::string kBegin;

}  // namespace

void lookAtFiles(const std::vector<std::string>& files, const IsolatedFiles& work) {
    std::size_t next = 0;
    while (next < files.size()) {
        const std::size_t first = next;
        const auto lookAtRest = [&](const SendMessage& send) {
            const LookAtFile look = work.prepare();
            const SendFileMessage sendJoined = [&](const FileMessage& message) { send(joined(message)); };
            for (std::size_t i = first; i < files.size(); ++i) {
                send(kBegin);
                look(files[i], sendJoined);
            }
        };
        const auto receive = [&](std::string_view message) {
            if (message == kBegin) {
                ++next;
            } else {
                work.receive(files[next - 1], split(message));
            }
        };
        const IsolatedRun run = runForked(lookAtRest, receive, kLimits);
        if (run.end == IsolatedRun::End::finished && next == files.size()) return;
        if (next == first)
            throw std::runtime_error("OGRE could not be started: it ended with " + textOf(run));
        work.broken(files[next - 1], textOf(run));
    }
}

}  // namespace velinor
