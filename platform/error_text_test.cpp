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

// Not all systems have the texts of all languages.
TEST(ErrorText, IsUtf8InLanguagesBeyondTheCodePage) {
    ULONG count = 0;
    constexpr wchar_t kRussian[] = L"ru-RU\0";
    if (SetThreadPreferredUILanguages(MUI_LANGUAGE_NAME, kRussian, &count) == 0 || count == 0)
        GTEST_SKIP() << "the system has one language";
    const std::string text = errorText(systemError(ERROR_FILE_NOT_FOUND));
    SetThreadPreferredUILanguages(0, nullptr, &count);
    EXPECT_TRUE(toUtf16(text)) << text;
    EXPECT_EQ(text.find('?'), std::string::npos) << text;
}
#else
TEST(ErrorText, IsWhatTheSystemSaysOfItsErrors) {
    EXPECT_EQ(errorText({13, std::system_category()}), "Permission denied");
}
#endif

}  // namespace
}  // namespace velinor
