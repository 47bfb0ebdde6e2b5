// The command where the image library, which is loaded late on Windows, is not beside it.
#include <gmock/gmock.h>

#include "platform/copy_file_over.h"
#include "tests/cli/command_test_support.h"

namespace velinor {
namespace {

namespace fs = std::filesystem;

class ImageLibraryTest : public CommandTest {
  protected:
    ImageLibraryTest() { copyFileOver(TOLVEX_PROGRAM, program_); }

    CommandResult runCopy(const std::vector<std::string>& arguments) const {
        CommandInput input;
        input.folder = folder();
        return runProgram(program_, arguments, input);
    }

    TemporaryFolder programs_;
    fs::path program_ = programs_.path() / "tolvex.exe";
};

TEST_F(ImageLibraryTest, WritesNothingWithoutIt) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"export", "room.scene.json", "room.jsx"},
          std::vector<std::string>{"snapshot", "room.scene.json", "other.scene.cbor"}}) {
        const CommandResult result = runCopy(arguments);
        EXPECT_EQ(result.status, 3);
        EXPECT_THAT(result.err,
                    testing::MatchesRegex("tolvex: .*libvips-42.dll: .*: the image library cannot be "
                                          "loaded; it belongs beside the program, put it there\n"));
        EXPECT_EQ(entryCount(), 1U) << "the scene";
    }
}

TEST_F(ImageLibraryTest, ChecksAndLooksWithoutIt) {
    EXPECT_EQ(runCopy({"inspect", "room.scene.json"}).status, 0);
}

TEST_F(ImageLibraryTest, RefusesOneThatIsNoLibrary) {
    std::ofstream(programs_.path() / "libvips-42.dll") << "text";
    const CommandResult result = runCopy({"export", "room.scene.json", "room.jsx"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err, testing::HasSubstr("libvips-42.dll: "));
    EXPECT_EQ(result.err.find("%1"), std::string::npos) << result.err;
    EXPECT_EQ(entryCount(), 1U);
}

}  // namespace
}  // namespace velinor
