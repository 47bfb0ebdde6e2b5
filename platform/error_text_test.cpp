#include "platform/error_text.h"

#include <gtest/gtest.h>

#include "base/text.h"

#ifdef _WIN32
#include <windows.h>

#include "platform/system_message.h"
#endif

namespace velinor {
namespace {

TEST(ErrorText, IsWhatTheCLibrarySaysOfItsErrors) {
    EXPECT_EQ(errorText(std::make_error_code(std::errc::permission_denied)), "Permission denied");
}

#ifdef _WIN32
std::error_code systemError(unsigned long code) {
    return {static_cast<int>(code), std::system_category()};
}

TEST(ErrorText, IsWhatWindowsSaysOfItsErrors) {
    for (const unsigned long code : {ERROR_FILE_NOT_FOUND, ERROR_ACCESS_DENIED, ERROR_DIR_NOT_EMPTY}) {
        EXPECT_EQ(errorText(systemError(code)), systemMessage(code));
        EXPECT_TRUE(toUtf16(errorText(systemError(code)))) << errorText(systemError(code));
    }
}
#else
TEST(ErrorText, IsWhatTheSystemSaysOfItsErrors) {
    EXPECT_EQ(errorText({13, std::system_category()}), "Permission denied");
}
#endif

}  // namespace
}  // namespace velinor
