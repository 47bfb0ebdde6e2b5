#include "hosts/import/scene_losses.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "hosts/import/material_losses.h"

namespace velinor {
namespace {

std::vector<std::string> textsOf(const ImportNotes& notes) {
    std::vector<std::string> texts;
    for (const ImportNote& note : notes.notes())
        texts.push_back(note.subject + ": " + note.text);
    return texts;
}

TEST(SceneLosses, AreToldOnceAKindWithTheFirstNamesAndTheirNumber) {
    SceneLosses losses;
    for (const char* name : {"A", "B", "C", "D"})
        losses.add(SceneLoss::degenerateTriangles, name, 5);
    losses.add(SceneLoss::vertexColours, "A");
    ImportNotes notes;
    losses.writeTo(notes, "room.fbx");
    EXPECT_EQ(textsOf(notes),
              (std::vector<std::string>{"room.fbx: 1 mesh (\"A\") has vertex colours, which are left out",
                                        "room.fbx: 4 meshes (\"A\", \"B\", \"C\", ...) have 20 triangles "
                                        "with a corner twice, which are left out"}));
}

TEST(SceneLosses, NamesMakeNoSecondLine) {
    SceneLosses losses;
    losses.add(SceneLoss::bones, "a\nb\x01");
    ImportNotes notes;
    losses.writeTo(notes, "room.fbx");
    ASSERT_EQ(notes.notes().size(), 1U);
    EXPECT_EQ(notes.notes()[0].text.find('\n'), std::string::npos);
    EXPECT_EQ(notes.notes()[0].text.find('\x01'), std::string::npos);
    EXPECT_TRUE(notes.notes()[0].text.starts_with("1 mesh (\"a\\nb")) << notes.notes()[0].text;
}

TEST(SceneLosses, NothingLostIsNotTold) {
    ImportNotes notes;
    SceneLosses().writeTo(notes, "room.fbx");
    MaterialLosses().writeTo(notes, "room.fbx");
    EXPECT_TRUE(notes.notes().empty());
}

TEST(SceneLosses, EveryKindHasAText) {
    for (int kind = 0; kind <= static_cast<int>(SceneLoss::cameraWithoutNode); ++kind) {
        SceneLosses losses;
        losses.add(static_cast<SceneLoss>(kind), "N");
        ImportNotes notes;
        losses.writeTo(notes, "room.fbx");
        ASSERT_EQ(notes.notes().size(), 1U);
        EXPECT_GT(notes.notes()[0].text.size(), std::string_view("1 mesh (\"N\") has ").size()) << kind;
    }
}

}  // namespace
}  // namespace velinor
