#include "shell/Folders.h"

#include <cstdlib>

#include "config/AppSettings.h"
#include "shell/ProgramFolder.h"
#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

TEST(UserFolder, IsInTheUsersDataFolderOfAnyName) {
    _wputenv_s(L"APPDATA", L"C:\\users\\\x0416 \xD83D\xDE00\\data");
    EXPECT_EQ(UserFolder(), L"C:\\users\\\x0416 \xD83D\xDE00\\data\\Pictavo");
    _wputenv_s(L"APPDATA", L"");
    EXPECT_EQ(UserFolder(), "");
}

TEST(DataFolders, IsThatOfTheProgramAlone) {
    EXPECT_EQ(DataFolders("C:\\the phone"), std::vector<std::filesystem::path>{"C:\\the phone"});
}

TEST(SettingsFile, IsTheUsersWhereNoneCanBeWrittenBesideTheExecutable) {
    const TempFolder temp;
    const std::filesystem::path user = temp / "user";
    EXPECT_EQ(SettingsFile(temp.Path(), user), temp / kSettingsFileName);
    EXPECT_FALSE(std::filesystem::exists(user));
    EXPECT_EQ(SettingsFile(temp / "no folder", user), user / kSettingsFileName);
    EXPECT_TRUE(std::filesystem::is_directory(user));
}

TEST(RunningProgram, IsThisOneAndTheConverterLiesBesideIt) {
    EXPECT_EQ(RunningProgram().filename(), "pictavo_tests_windows.exe");
    EXPECT_TRUE(std::filesystem::equivalent(ProgramFolder(), RunningProgram().parent_path()));
    EXPECT_EQ(ConverterProgram("C:\\the phone"), "C:\\the phone\\pictavo-convert.exe");
}

}  // namespace
}  // namespace pictavo::tests
