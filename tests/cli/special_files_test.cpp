// Scene files that are no files. Only POSIX systems have them among the others.
#include <sys/stat.h>

#include "base/text.h"
#include "tests/cli/command_test_support.h"

namespace velinor {
namespace {

class SpecialFilesTest : public CommandTest {};

// A library would wait for the other end of a pipe for ever, and no limit of processor time ends that.
TEST_F(SpecialFilesTest, APipeIsNoSceneFile) {
    for (const char* name : {"pipe.fbx", "pipe.obj", "pipe.ase", "pipe.scene.json"}) {
        ASSERT_EQ(::mkfifo(utf8Path(folder() / name).c_str(), 0600), 0);
        const CommandResult result = run({"inspect", name});
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(lastLine(result.err),
                  std::string("tolvex: ") + name + ": is no ordinary file; copy the scene into one");
        std::filesystem::remove(folder() / name);
    }
}

}  // namespace
}  // namespace velinor
