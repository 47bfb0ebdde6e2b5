#include "materials/image_library.h"

#include <gtest/gtest.h>
#include <vips/vips.h>

#include <vector>

namespace velinor {
namespace {

struct LoggedLine {
    bool hasDomain;
    int level;
    std::string text;

    bool operator==(const LoggedLine&) const = default;
};

void keepLine(const gchar* domain, GLogLevelFlags level, const gchar* text, gpointer lines) {
    static_cast<std::vector<LoggedLine>*>(lines)->push_back({domain != nullptr, level, text});
}

TEST(ImageLibrary, AtHandHasTheInterfaceThatIsNeeded) {
    EXPECT_EQ(imageLibraryAbi(), kImageLibraryAbi);
    EXPECT_TRUE(acceptImageLibraryAbi(imageLibraryAbi()));
}

// What refusing another interface logs.
std::vector<LoggedLine> linesOfRefusal() {
    std::vector<LoggedLine> lines;
    const GLogFunc previous = g_log_set_default_handler(keepLine, &lines);
    EXPECT_FALSE(acceptImageLibraryAbi(41));
    g_log_set_default_handler(previous, nullptr);
    return lines;
}

const std::vector<LoggedLine> kRefusal{{false, 16, "ABI mismatch"},
                                       {false, 16, "library has ABI version 41"},
                                       {false, 16, "application needs ABI version 42"}};

TEST(ImageLibrary, LogsThreeWarningsForAnotherInterface) {
    EXPECT_EQ(linesOfRefusal(), kRefusal);
}

TEST(ImageLibrary, RecordsAnErrorForAnotherInterfaceOnceItWasStarted) {
    startImageLibrary("folder of the host");
    vips_error_clear();
    EXPECT_EQ(linesOfRefusal(), kRefusal);
    EXPECT_STREQ(vips_error_buffer(), "vips_init: ABI mismatch\n");
    vips_error_clear();
}

TEST(ImageLibrary, StartsAgainAndAgain) {
    for (int i = 0; i < 3; ++i)
        startImageLibrary("folder of the host");
    EXPECT_NE(vips_type_find("VipsOperation", "black"), G_TYPE_INVALID) << vips_error_buffer();
}

}  // namespace
}  // namespace velinor
