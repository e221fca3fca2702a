#include <gtest/gtest.h>

#include "core/CommandLine_win32.h"

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

}  // namespace
}  // namespace pictavo::tests
