#include <gtest/gtest.h>
#include <memory>
#include <windows.h>
// Behind what it builds on.
#include <shellapi.h>

#include "core/CommandLine_win32.h"
#include "core/WideText_win32.h"

namespace pictavo::tests {
namespace {

struct Case {
    const wchar_t* line;
    const wchar_t* rest;
};

class WithoutProgramTest : public ::testing::TestWithParam<Case> {};

TEST_P(WithoutProgramTest, LeavesWhatStandsBehindTheProgram) {
    EXPECT_EQ(WithoutProgram(GetParam().line), GetParam().rest);
}

INSTANTIATE_TEST_SUITE_P(Lines, WithoutProgramTest,
                         ::testing::Values(Case{L"", L""}, Case{L"p.exe", L""}, Case{L"p.exe ", L""},
                                           Case{L"p.exe a.gpf \"b c.gpf\"", L"a.gpf \"b c.gpf\""},
                                           Case{L"\"C:\\my programs\\p.exe\" a", L"a"},
                                           Case{L"\"C:\\p.exe\"   a  b", L"a  b"}, Case{L"\"C:\\p.exe", L""},
                                           Case{L"p.exe\ta", L"a"}, Case{L"\"p.exe\"", L""}));

TEST(CommandLineOfProgram, IsNotThatOfTheProgramItself) {
    EXPECT_EQ(CommandLineOfProgram().find(".exe"), std::string::npos);
}

/// As the system parts a line.
std::vector<std::string> Parted(const std::wstring& line) {
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&LocalFree)> words(CommandLineToArgvW(line.c_str(), &count),
                                                                LocalFree);
    std::vector<std::string> parts;
    for (int i = 0; words != nullptr && i < count; ++i) parts.push_back(Utf8Text(words.get()[i]));
    return parts;
}

TEST(CommandLineOf, ArrivesAsItStands) {
    const std::vector<std::string> arguments{
        "-out",      "",         " ",         "a b",    "\"",    "a\"b c\"d",        "\\",
        "\\\\",      "back\\sl", "end\\",     "end \\", "\\\"",  "\\\\\" x",         "%TMP%",
        "^&|<>();,", "it's",     "line\nend", "tab\t",  "$HOME", "\xD0\x96\xC3\xA9", "\xF0\x9F\x98\x80"};
    std::vector<std::string> whole{"C:\\a program\\of mine.exe"};
    whole.insert(whole.end(), arguments.begin(), arguments.end());
    EXPECT_EQ(Parted(CommandLineOf(L"C:\\a program\\of mine.exe", arguments)), whole);
}

}  // namespace
}  // namespace pictavo::tests
