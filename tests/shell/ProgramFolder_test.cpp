#include "shell/ProgramFolder.h"

#include <gtest/gtest.h>

#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

TEST(ProgramFolder, HoldsThisProgram) {
    EXPECT_EQ(RunningProgram(), std::filesystem::canonical("/proc/self/exe"));
    EXPECT_EQ(ProgramFolder(), RunningProgram().parent_path());
    EXPECT_TRUE(std::filesystem::exists(ProgramFolder() / "pictavo_tests_shell"));
}

TEST(ProgramFolder, DoesNotFollowTheCurrentFolder) {
    const TempFolder temp;
    const std::filesystem::path before = std::filesystem::current_path();
    const std::filesystem::path expected = ProgramFolder();
    std::filesystem::current_path(temp.Path());
    EXPECT_EQ(ProgramFolder(), expected);
    std::filesystem::current_path(before);
}

TEST(ProgramFolder, HoldsTheConverterUnderItsNameOnThisSystem) {
    EXPECT_EQ(ConverterProgram("/opt/the phone"), "/opt/the phone/pictavo-convert");
}

TEST(ProgramFolder, AnyFileMayBeAConverterAndKeepsItsName) {
    EXPECT_STREQ(ConverterPattern(), "*");
    EXPECT_STREQ(ConverterExtension(), "");
}

}  // namespace
}  // namespace pictavo::tests
