#include "tests/cli/command_test_support.h"

namespace velinor {
namespace {

using ArgumentsTest = CommandTest;

struct WrongArguments {
    const char* name;
    std::vector<std::string> arguments;
    const char* message;  // a part of it
};

TEST_F(ArgumentsTest, WrongOnesEndWithStatus2AndOneLine) {
    const WrongArguments cases[] = {
        {"none", {}, "a command is missing"},
        {"misspelt command", {"exprot", "a", "b"}, "did you mean \"export\"?"},
        {"unknown option of the program", {"--verison"}, "did you mean \"--version\"?"},
        {"no scene", {"export"}, "SCENE is missing"},
        {"no target", {"export", "room.scene.json"}, "TARGET is missing"},
        {"one too many", {"export", "room.scene.json", "a.jsx", "b"}, "unexpected argument \"b\""},
        {"misspelt option",
         {"export", "--overwite", "room.scene.json", "a.jsx"},
         "did you mean \"--overwrite\"?"},
        {"misspelt cleared flag",
         {"export", "--no-export-light", "room.scene.json", "a.jsx"},
         "did you mean \"--no-export-lights\"?"},
        {"value of a flag",
         {"export", "--strict=maybe", "room.scene.json", "a.jsx"},
         "--strict: takes no value"},
        {"rest after a number", {"export", "--ambient-red", "0.5x", "room.scene.json", "a.jsx"}, "\"0.5x\""},
        {"comma", {"export", "--ambient-red=0,5", "room.scene.json", "a.jsx"}, "\"0,5\" is not a number"},
        {"not a number",
         {"export", "--ambient-red", "nan", "room.scene.json", "a.jsx"},
         "\"nan\" is not a number"},
        {"infinity",
         {"export", "--ambient-red", "inf", "room.scene.json", "a.jsx"},
         "\"inf\" is not a number"},
        {"too large", {"export", "--ambient-red", "1e40", "room.scene.json", "a.jsx"}, "is out of range"},
        {"fraction of a whole number",
         {"export", "--fallback-quality", "2.5", "room.scene.json", "a.jsx"},
         "is not a whole number"},
        {"33 bits",
         {"export", "--polycount-goal", "4294967296", "room.scene.json", "a.jsx"},
         "is out of range"},
        {"target is a folder", {"export", "room.scene.json", "out/"}, "TARGET has no file name"},
        {"target is here", {"export", "room.scene.json", "."}, "TARGET has no file name"},
        {"target is above", {"export", "room.scene.json", "a/.."}, "TARGET has no file name"},
        {"unknown snapshot ending",
         {"snapshot", "room.scene.json", "room.txt"},
         "use .scene.json or .scene.cbor"},
        {"no axis",
         {"inspect", "room.scene.json", "--up-axis", "Y"},
         "\"Y\" is not an axis that can point up"},
        {"no memory",
         {"inspect", "room.scene.json", "--import-memory-limit", "0"},
         "--import-memory-limit: \"0\" leaves nothing to read with"},
        {"more memory than there can be",
         {"inspect", "room.scene.json", "--import-memory-limit", "17592186044416"},
         "is out of range"},
        {"no time",
         {"inspect", "room.scene.json", "--import-time-limit", "-1"},
         "\"-1\" is not a whole number"},
        {"argument of a command without any", {"formats", "fbx"}, "unexpected argument \"fbx\""},
        {"no package", {"check", "nowhere"}, "does not exist"},
        {"package is a file", {"check", "room.scene.json"}, "is no folder"},
    };
    for (const auto& c : cases) {
        const CommandResult result = run(c.arguments);
        EXPECT_EQ(result.status, 2) << c.name;
        EXPECT_EQ(result.out, "") << c.name;
        EXPECT_EQ(result.err.find('\n'), result.err.size() - 1) << c.name << ": " << result.err;
        EXPECT_TRUE(result.err.starts_with("tolvex: ")) << c.name << ": " << result.err;
        EXPECT_NE(result.err.find(c.message), std::string::npos) << c.name << ": " << result.err;
    }
    expectNothingButScenes();
}

#ifndef _WIN32  // where arguments are UTF-16
TEST_F(ArgumentsTest, BytesThatAreNotUtf8EndWithStatus2) {
    const CommandResult result = run({"export", "room.scene.json", "a\xFF.jsx"});
    EXPECT_EQ(result.status, 2);
    EXPECT_NE(result.err.find("argument 3 (\"a\xEF\xBF\xBD.jsx\") is not valid UTF-8"), std::string::npos)
        << result.err;
}
#endif

TEST_F(ArgumentsTest, ArgumentsBeyondTheCodePageAreUnderstood) {
    const std::string name = "\xE6\x97\xA5\xE6\x9C\xAC.scene.json";
    write(name, kRoom);
    const CommandResult result = run({"inspect", name});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(
        run({"inspect", "\xE6\x97\xA5.json"}).err,
        "tolvex: reading \xE6\x97\xA5.json ...\ntolvex: \xE6\x97\xA5.json: does not exist; check the path\n");
}

TEST_F(ArgumentsTest, HelpAndVersionGoToStandardOutput) {
    EXPECT_EQ(run({"--version"}).out, "tolvex 1.63\n");
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"--help"},
                                                      {"export", "--help"},
                                                      {"inspect", "--help"},
                                                      {"snapshot", "--help"},
                                                      {"check", "--help"},
                                                      {"formats", "--help"}}) {
        const CommandResult result = run(arguments);
        EXPECT_EQ(result.status, 0) << arguments.front();
        EXPECT_NE(result.out.find("tolvex"), std::string::npos) << arguments.front();
        EXPECT_EQ(result.err, "") << arguments.front();
    }
    EXPECT_NE(run({"export", "--help"}).out.find("--[no-]export-lights"), std::string::npos);
}

TEST_F(ArgumentsTest, ControlCharactersAreShownEscaped) {
    const CommandResult result = run({"export", "a\x1b[31m\n.scene.json", "b.jsx"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(lastLine(result.err), "tolvex: a\\x1b[31m\\n.scene.json: does not exist; check the path");
}

}  // namespace
}  // namespace velinor
