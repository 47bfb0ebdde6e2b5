#include "base/report.h"

#include <gtest/gtest.h>

#include <set>

namespace velinor {
namespace {

TEST(Report, KeepsEntriesInOrderAndCountsThemBySeverity) {
    Report report;
    report.add(MessageId::nodeHidden, "Box");
    report.add(MessageId::nodeMirrored, "Chair", "determinant -1");
    report.add(MessageId::nodeUnderDroppedParent, "Leg", "below \"Box\"");
    report.addWritten("out/index.jsx", 15);

    ASSERT_EQ(report.entries().size(), 3U);
    EXPECT_EQ(report.entries()[1], (ReportEntry{MessageId::nodeMirrored, "Chair", "determinant -1"}));
    EXPECT_EQ(report.count(Severity::skipped), 2U);
    EXPECT_EQ(report.count(Severity::warning), 1U);
    EXPECT_EQ(report.count(Severity::error), 0U);
    ASSERT_EQ(report.written().size(), 1U);
    EXPECT_EQ(report.written()[0], (WrittenFile{"out/index.jsx", 15}));
}

TEST(Report, KeepsThePlaceOfAFileThatIsWrittenAgain) {
    Report report;
    report.addWritten("out/a", 1);
    report.addWritten("out/b", 2);
    report.addWritten("out/a", 3);
    EXPECT_EQ(report.written(), (std::vector<WrittenFile>{{"out/a", 3}, {"out/b", 2}}));
}

TEST(Report, CutsLongTextsBetweenCharacters) {
    Report report;
    std::string name(299, 'a');
    report.add(MessageId::nodeHidden, name + "Ж", name + "bЖ");
    EXPECT_EQ(report.entries()[0].subject, name + "…");
    EXPECT_EQ(report.entries()[0].detail, name + "b…");
    report.add(MessageId::nodeHidden, name + "b");
    EXPECT_EQ(report.entries()[1].subject, name + "b");
}

TEST(MessageCatalogue, GivesEachMessageACodeAndATextOfItsOwn) {
    std::set<std::string_view> codes;
    std::set<std::string_view> texts;
    for (const Message& entry : messageCatalogue()) {
        EXPECT_TRUE(codes.insert(entry.code).second) << entry.code;
        EXPECT_TRUE(texts.insert(entry.text).second) << entry.code;
        EXPECT_EQ(&message(entry.id), &entry);
    }
}

}  // namespace
}  // namespace velinor
