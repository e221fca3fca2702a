#include <gtest/gtest.h>

#include "core/WideText_win32.h"

namespace pictavo::tests {
namespace {

TEST(WideText, EveryLetterComesBack) {
    for (const std::string text : {"", "a", "телефон", "😀", "€ 1"}) EXPECT_EQ(Utf8Text(WideText(text)), text);
    EXPECT_EQ(WideText("ж😀"), L"\x0436\xD83D\xDE00");
}

TEST(WideText, ANulIsALetterToo) {
    EXPECT_EQ(WideText(std::string_view("a\0b", 3)), std::wstring(L"a\0b", 3));
    EXPECT_EQ(Utf8Text(std::wstring_view(L"a\0b", 3)), std::string("a\0b", 3));
}

TEST(WideText, WhatIsNoTextBecomesTheSignForThat) {
    EXPECT_EQ(WideText("a\xFFz"), L"a\xFFFDz");
    EXPECT_EQ(Utf8Text(L"a\xD83Dz"), "a\xEF\xBF\xBDz");
}

}  // namespace
}  // namespace pictavo::tests
