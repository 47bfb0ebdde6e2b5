#include "tools/ogre/isolated_files.h"

#include <gmock/gmock.h>

#include <cstdlib>

namespace velinor {
namespace {

using testing::ElementsAre;

// Files named "abort" end their process, all others say their name.
struct Recording {
    std::vector<std::string> heard;

    IsolatedFiles work() {
        IsolatedFiles files;
        files.prepare = []() -> LookAtFile {
            return [](const std::string& file, const SendFileMessage& send) {
                send({"looking at", file, ""});
                if (file == "abort") std::abort();
            };
        };
        files.receive = [this](const std::string& file, const FileMessage& message) {
            heard.push_back(file + ": " + message.at(0) + " " + message.at(1) + "/" +
                            std::to_string(message.size()));
        };
        files.broken = [this](const std::string& file, const std::string& end) {
            heard.push_back(file + ": " + end);
        };
        return files;
    }
};

TEST(IsolatedFiles, GoOnAfterACrash) {
    Recording recording;
    lookAtFiles({"a", "abort", "b"}, recording.work());
    EXPECT_THAT(recording.heard, ElementsAre("a: looking at a/3", "abort: looking at abort/3",
                                             "abort: a crash (signal 6)", "b: looking at b/3"));
}

TEST(IsolatedFiles, MayCrashOnTheLastFile) {
    Recording recording;
    lookAtFiles({"abort"}, recording.work());
    EXPECT_THAT(recording.heard, ElementsAre("abort: looking at abort/3", "abort: a crash (signal 6)"));
}

TEST(IsolatedFiles, SayWhenNothingCanBeStarted) {
    Recording recording;
    IsolatedFiles work = recording.work();
    work.prepare = []() -> LookAtFile { std::abort(); };
    EXPECT_THROW(lookAtFiles({"a"}, work), std::runtime_error);
    lookAtFiles({}, work);
    EXPECT_THAT(recording.heard, ElementsAre());
}

}  // namespace
}  // namespace velinor
