#include "tools/meshprocessor/options.h"

#include <gtest/gtest.h>

namespace velinor {
namespace {

using Arguments = std::vector<std::string>;

std::string faultOf(const Arguments& arguments) {
    try {
        parseOptions(arguments);
    } catch (const UsageError& error) {
        return error.what();
    }
    return "no fault";
}

TEST(Options, TakesEachShape) {
    struct Case {
        Arguments shape;
        ShapeChoice choice;
    };
    for (const auto& [shape, choice] :
         {Case{{}, TakeAsItIs()},
          Case{{"-meshDecimation", "10", "20", "0.303030"}, DecimationLimits{10, 20, 0.30303}},
          Case{{"-meshDecimation", "0", "0", "0"}, DecimationLimits{0, 0, 0}},
          Case{{"-convexDecomposition", "8000", "32"}, DecompositionLimits{8000, 32}},
          Case{{"-convexHull"}, TakeConvexHull()}}) {
        Arguments arguments{"-import", "a b.xml"};
        arguments.insert(arguments.end(), shape.begin(), shape.end());
        arguments.insert(arguments.end(), {"-saveCollisionShapes", "-.obj"});
        EXPECT_EQ(parseOptions(arguments), (ProcessorOptions{"a b.xml", "-.obj", choice, false}));
    }
}

TEST(Options, TakesAnyOrder) {
    EXPECT_EQ(parseOptions(Arguments{"-convexHull", "-saveCollisionShapes", "b", "-import", "a"}),
              (ProcessorOptions{"a", "b", TakeConvexHull(), false}));
}

TEST(Options, NamesWhatIsWrong) {
    const auto faultOfShape = [](Arguments shape) {
        shape.insert(shape.begin(), {"-import", "a", "-saveCollisionShapes", "b"});
        return faultOf(shape);
    };
    EXPECT_EQ(faultOf({}), "-import FILE is missing");
    EXPECT_EQ(faultOf({"-import", "a"}), "-saveCollisionShapes OUT is missing");
    EXPECT_EQ(faultOf({"-import"}), "-import: FILE is missing");
    EXPECT_EQ(faultOf({"-import", ""}), "-import: FILE is \"\"; give the path of a file");
    EXPECT_EQ(faultOf({"-import", "-convexHull"}), "-import: FILE is missing");
    EXPECT_EQ(faultOfShape({"-import", "c"}), "-import is given twice");
    EXPECT_EQ(faultOfShape({"-convex\nHull"}), "unknown argument \"-convex\\nHull\"");
    EXPECT_EQ(faultOfShape({"c"}), "unknown argument \"c\"");
    EXPECT_EQ(faultOfShape({"-meshDecimation", "10", "10"}), "-meshDecimation: TOLERANCE is missing");
    EXPECT_EQ(faultOfShape({"-convexHull", "-meshDecimation", "1", "1", "0"}),
              "-meshDecimation, -convexDecomposition and -convexHull exclude each other; give one");
    for (const char* text : {"", "x", "-1", "1.5", "99999999999999999999", "10 "}) {
        EXPECT_EQ(
            faultOfShape({"-meshDecimation", text, "10", "0"}),
            "-meshDecimation: MINFACES is \"" + std::string(text) + "\"; give a whole number of at least 0");
    }
    for (const char* text : {"", "x", "-0.1", "1.1", "nan", "inf", "0,1", "0.1x"}) {
        EXPECT_EQ(faultOfShape({"-meshDecimation", "10", "10", text}),
                  "-meshDecimation: TOLERANCE is \"" + std::string(text) +
                      "\"; give a number of 0 to 1, a fraction of the mesh's extent");
    }
    EXPECT_EQ(faultOfShape({"-convexDecomposition", "3", "1"}),
              "-convexDecomposition: RESOLUTION is \"3\"; give a whole number of at least 4");
    EXPECT_EQ(faultOfShape({"-convexDecomposition", "8000", "0"}),
              "-convexDecomposition: HULLS is \"0\"; give a whole number of at least 1");
}

TEST(Options, HelpNeedsNothingElse) {
    EXPECT_TRUE(parseOptions(Arguments{"--help"}).isHelpWanted);
    EXPECT_TRUE(parseOptions(Arguments{"-import", "a", "--help"}).isHelpWanted);
}

}  // namespace
}  // namespace velinor
