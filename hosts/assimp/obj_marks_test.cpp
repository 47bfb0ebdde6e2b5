#include "hosts/assimp/obj_marks.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace velinor {
namespace {

ObjMarks marksIn(const std::string& text) {
    std::istringstream stream(text);
    return readObjMarks(stream);
}

TEST(ObjMarks, SmoothingCountsWhereThereAreNoNormals) {
    EXPECT_TRUE(marksIn("v 0 0 0\r\ns 1\r\nf 1 1 1\r\n").hasSmoothing);
    EXPECT_TRUE(marksIn("  s\t2").hasSmoothing);
    EXPECT_FALSE(marksIn("s off\ns 0\n").hasSmoothing);
    EXPECT_FALSE(marksIn("s 1\nvn 0 0 1\n").hasSmoothing);
    EXPECT_FALSE(marksIn("# s 1\nsomething 1\n").hasSmoothing);
    EXPECT_FALSE(marksIn("").hasSmoothing);
}

TEST(ObjMarks, AnObjectThatGoesOnAfterAnotherIsToldOnce) {
    EXPECT_EQ(marksIn("o A\nf 1 2 3\no B\nf 1 2 3\no C\n").reopened.count(), 0U);
    EXPECT_EQ(marksIn("o A\no A\n").reopened.count(), 0U) << "nothing lies between";
    EXPECT_EQ(marksIn("o A\no B\no A\no B\no A\r\n").reopened.text("object", "objects"),
              "2 objects (\"A\", \"B\")");
    EXPECT_EQ(marksIn("g A\ng B\ng A\n").reopened.count(), 0U) << "groups become nodes of their own";
}

}  // namespace
}  // namespace velinor
