#include "geometry/tool_commands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/support/platform_text.h"

namespace velinor {
namespace {

using testing::ElementsAre;

TEST(ToolCommands, AssembleTheConvertersCommand) {
    const ToolCommand command =
        converterCommand("/host/Plugins", "/p/room/resources/Chair.mesh.xml", "/p/Chair.mesh");
    const std::string tool = "/host/Plugins" + asPathText("/tolvex/ogrexmltools/OgreXMLConverter.exe");
    EXPECT_EQ(command.commandLine, "\"" + tool +
                                       "\" -d3d -q  "
                                       "\"/p/room/resources/Chair.mesh.xml\" \"/p/Chair.mesh\"");
    EXPECT_THAT(command.arguments,
                ElementsAre(tool, "-d3d", "-q", "/p/room/resources/Chair.mesh.xml", "/p/Chair.mesh"));
}

TEST(ToolCommands, AssembleTheProcessorsCommand) {
    const ToolCommand command =
        processorCommand("/host/Plugins", "/p/a.xml", "-convexDecomposition 8000 32", "/p/a.obj");
    const std::string tool = "/host/Plugins" + asPathText("/tolvex/ogrexmltools/meshprocessor.exe");
    EXPECT_EQ(command.commandLine, "\"" + tool +
                                       "\" -import \"/p/a.xml\" "
                                       "-convexDecomposition 8000 32 -saveCollisionShapes \"/p/a.obj\"");
    EXPECT_THAT(command.arguments, ElementsAre(tool, "-import", "/p/a.xml", "-convexDecomposition", "8000",
                                               "32", "-saveCollisionShapes", "/p/a.obj"));
}

TEST(ToolCommands, LeaveTwoBlanksWhereThereIsNoOption) {
    const ToolCommand command = processorCommand("/h", "/p/a.xml", "", "/p/a.obj");
    const std::string tool = "/h" + asPathText("/tolvex/ogrexmltools/meshprocessor.exe");
    EXPECT_EQ(command.commandLine, "\"" + tool +
                                       "\" -import \"/p/a.xml\"  "
                                       "-saveCollisionShapes \"/p/a.obj\"");
    EXPECT_THAT(command.arguments,
                ElementsAre(tool, "-import", "/p/a.xml", "-saveCollisionShapes", "/p/a.obj"));
}

TEST(ToolCommands, KeepAHostilePathOneArgument) {
    const std::string path = "/p/a b\"c\"; $(touch x) `y`\n-convexHull.xml";
    EXPECT_EQ(converterCommand("/h", path, "/p/a.mesh").arguments[3], path);
    EXPECT_EQ(processorCommand("/h", path, "-convexHull", "/p/a.obj").arguments[2], path);
    EXPECT_EQ(processorCommand("/a b/$(c)", path, "-convexHull", "/p/a.obj").arguments[0],
              "/a b/$(c)" + asPathText("/tolvex/ogrexmltools/meshprocessor.exe"));
}

TEST(FallbackOption, DependsOnTheQuality) {
    for (const auto& [quality, option] :
         {std::pair<std::int32_t, std::string_view>{0, ""},
          {1, "-meshDecimation 10 10 0.01"},
          {2, "-meshDecimation 10 10 0.1"},
          {3, "-meshDecimation 10 10 0.2"},
          {4, "-convexDecomposition 8000 32"},
          {5, "-convexHull"},
          {6, "-meshDecimation 10 10 0.01"},
          {-1, "-meshDecimation 10 10 0.01"},
          {std::numeric_limits<std::int32_t>::min(), "-meshDecimation 10 10 0.01"}}) {
        EXPECT_EQ(fallbackOption(quality), option) << quality;
    }
}

TEST(DecimationOption, IsAFractionWithSixDecimals) {
    EXPECT_EQ(decimationOption(decimationValue(5000, 200, 0)), "-meshDecimation 10 10 0.303030");
    EXPECT_EQ(decimationOption(decimationValue(5000, 200, 1)), "-meshDecimation 10 10 0.293030");
    EXPECT_EQ(decimationOption(decimationValue(199, 200, 0)), "-meshDecimation 10 10 0.000000");
    EXPECT_EQ(decimationOption(decimationValue(199, 200, 1)), "-meshDecimation 10 10 0.000000")
        << "never below 0";
    EXPECT_EQ(decimationOption(decimationValue(200, 200, 0)), "-meshDecimation 10 10 0.044444");
}

TEST(DecimationValue, IsSafeForEveryNumber) {
    constexpr auto kLowest = std::numeric_limits<std::int32_t>::min();
    constexpr auto kHighest = std::numeric_limits<std::int32_t>::max();
    EXPECT_FLOAT_EQ(decimationValue(5, 0, 0), decimationValue(5, 1, 0));
    EXPECT_NEAR(decimationValue(kLowest, -1, 0), 0.4F, 1e-6);
    EXPECT_NEAR(decimationValue(kHighest, 1, 0), 0.4F, 1e-6);
    for (const std::int32_t faces : {kLowest, -1, 0, 1, 1000, kHighest}) {
        for (const std::int32_t goal : {kLowest, -200, -1, 0, 1, 200, kHighest}) {
            for (const int attempt : {0, 1}) {
                const float value = decimationValue(faces, goal, attempt);
                EXPECT_TRUE(value >= 0 && value <= 0.4F) << faces << " / " << goal;
            }
        }
    }
}

}  // namespace
}  // namespace velinor
