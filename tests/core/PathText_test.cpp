#include "core/PathText.h"

#include <gtest/gtest.h>

namespace pictavo::tests {
namespace {

TEST(PathText, IsUtf8WhateverTheLetters) {
    EXPECT_EQ(PathText(std::filesystem::path(u8"Картинка \U0001F4F1 ﬁ.bmp")), "Картинка \U0001F4F1 ﬁ.bmp");
    EXPECT_EQ(PathOf("Картинка \U0001F4F1 ﬁ.bmp"), std::filesystem::path(u8"Картинка \U0001F4F1 ﬁ.bmp"));
    EXPECT_EQ(PathText({}), "");
    EXPECT_EQ(PathOf(""), std::filesystem::path());
}

#ifdef _WIN32

TEST(PathText, WhatIsNoUnicodeIsReplaced) {
    EXPECT_EQ(PathText(std::filesystem::path(std::wstring{L'a', wchar_t{0xD83D}, L'b'})), "a\uFFFDb");
    EXPECT_EQ(PathOf("a\xFFz").native(), (std::wstring{L'a', wchar_t{0xFFFD}, L'z'}));
}

#else

TEST(PathText, BytesThatAreNoUtf8StayAsTheyAre) {
    EXPECT_EQ(PathText(std::filesystem::path("a\xFFz")), "a\xFFz");
    EXPECT_EQ(PathOf("a\xFFz").native(), "a\xFFz");
}

#endif

}  // namespace
}  // namespace pictavo::tests
