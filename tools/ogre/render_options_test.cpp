#include "tools/ogre/render_options.h"

#include <gmock/gmock.h>

namespace velinor {
namespace {

TEST(RenderOptions, AreReadInAnyOrder) {
    const RenderOptions options =
        parseRenderOptions({"--size", "640x480", "room", "--aa", "3", "room.png", "--camera", "frame"});
    EXPECT_EQ(options.package, "room");
    EXPECT_EQ(options.picture, "room.png");
    EXPECT_EQ(options.width, 640U);
    EXPECT_EQ(options.height, 480U);
    EXPECT_EQ(options.oversampling, 3U);
    EXPECT_EQ(options.view, ViewChoice::frame);
    EXPECT_FALSE(options.programs.empty());
}

TEST(RenderOptions, AreRefusedWithAReason) {
    struct Case {
        std::vector<std::string> arguments;
        const char* reason;
    };
    for (const auto& [arguments, reason] :
         {Case{{"room"}, "a package and the name of a picture"},
          Case{{"room", "room.jpg"}, "has to end with .png"},
          Case{{"room", "a.png", "--size", "640"}, "is no size"},
          Case{{"room", "a.png", "--size", "0x1"}, "from 1 to"},
          Case{{"room", "a.png", "--size", "8192x1", "--aa", "4"}, "more than 16384"},
          Case{{"room", "a.png", "--aa", "two"}, "\"two\" is no number"},
          Case{{"room", "a.png", "--aa"}, "value is missing"},
          Case{{"room", "a.png", "--camera", "top"}, "is no camera"},
          Case{{"room", "a.png", "--big", "1"}, "no option --big"}}) {
        try {
            parseRenderOptions(arguments);
            ADD_FAILURE() << "accepted; expected: " << reason;
        } catch (const ArgumentError& error) {
            EXPECT_THAT(error.what(), testing::HasSubstr(reason));
        }
    }
}

}  // namespace
}  // namespace velinor
