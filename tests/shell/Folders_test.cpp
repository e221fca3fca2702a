#include "shell/Folders.h"

#include <unistd.h>

#include "support/Environment.h"
#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

/// A folder in which nobody, whatever his rights, can create a file.
constexpr const char* kUnwritable = "/proc";

/// As long as it lives, the test can read in a folder and not write there, even where it is the superuser's.
class UserWithoutRights {
  public:
    explicit UserWithoutRights(const std::filesystem::path& folder) : folder_(folder), user_(geteuid()) {
        std::filesystem::permissions(folder, static_cast<std::filesystem::perms>(0555));
        EXPECT_TRUE(user_ != 0 || seteuid(kNobody) == 0);
    }
    ~UserWithoutRights() {
        EXPECT_EQ(seteuid(user_), 0);
        std::filesystem::permissions(folder_, std::filesystem::perms::owner_all);
    }
    UserWithoutRights(const UserWithoutRights&) = delete;
    UserWithoutRights& operator=(const UserWithoutRights&) = delete;

  private:
    static constexpr uid_t kNobody = 65534;
    std::filesystem::path folder_;
    uid_t user_;
};

class SettingsFileTest : public ::testing::Test {
  protected:
    SettingsFileTest() { std::filesystem::create_directory(program); }

    void WriteBeside() { WriteFile(program / "Pictavo.ini", std::string("old")); }

    void WriteForUser() {
        std::filesystem::create_directory(user);
        WriteFile(user / "Pictavo.ini", std::string("old"));
    }

    /// Also to the user that the tests become.
    void OpenToAll(const std::filesystem::path& folder) {
        std::filesystem::create_directory(folder);
        for (const std::filesystem::path& open : {temp.Path(), folder})
            std::filesystem::permissions(open, std::filesystem::perms::all);
    }

    TempFolder temp;
    const std::filesystem::path program = temp / "program";
    const std::filesystem::path user = temp / "user";
};

TEST_F(SettingsFileTest, IsToBeWrittenBesideTheExecutable) {
    EXPECT_EQ(SettingsFile(program, user), program / "Pictavo.ini");
    EXPECT_TRUE(ListNames(program).empty());
    EXPECT_FALSE(std::filesystem::exists(user));
}

TEST_F(SettingsFileTest, BesideTheExecutableWinsOverTheUsers) {
    WriteBeside();
    WriteForUser();
    EXPECT_EQ(SettingsFile(program, user), program / "Pictavo.ini");
    EXPECT_EQ(ReadText(program / "Pictavo.ini"), "old");
}

TEST_F(SettingsFileTest, OfTheUserIsTakenWhenItIsTheOnlyOne) {
    WriteForUser();
    EXPECT_EQ(SettingsFile(program, user), user / "Pictavo.ini");
}

TEST_F(SettingsFileTest, GoesToTheUsersFolderWhereNoneCanBeWrittenBesideTheExecutable) {
    EXPECT_EQ(SettingsFile(kUnwritable, user / "deeper"), user / "deeper" / "Pictavo.ini");
    EXPECT_TRUE(std::filesystem::is_directory(user / "deeper"));
    EXPECT_TRUE(ListNames(user / "deeper").empty());
}

TEST_F(SettingsFileTest, AUserWithoutRightsBesideTheExecutableTakesOverWhatIsThere) {
    WriteBeside();
    OpenToAll(user);
    const UserWithoutRights nobody(program);
    EXPECT_EQ(SettingsFile(program, user), user / "Pictavo.ini");
    EXPECT_EQ(ReadText(user / "Pictavo.ini"), "old");
    WriteFile(user / "Pictavo.ini", std::string("the user's"));
    EXPECT_EQ(SettingsFile(program, user), user / "Pictavo.ini");
    EXPECT_EQ(ReadText(user / "Pictavo.ini"), "the user's");
}

TEST_F(SettingsFileTest, IsNamedEvenWhereTheUsersFolderCanNotBeMade) {
    const std::filesystem::path blocked = WriteFile(user, std::string("a file")) / "deeper";
    EXPECT_EQ(SettingsFile(kUnwritable, blocked), blocked / "Pictavo.ini");
}

TEST_F(SettingsFileTest, StaysBesideTheExecutableWithoutAUsersFolder) {
    EXPECT_EQ(SettingsFile(kUnwritable, {}), std::filesystem::path(kUnwritable) / "Pictavo.ini");
}

TEST(UserFolder, IsInTheConfigurationFolderThatIsSet) {
    Environment environment;
    environment.Set("XDG_CONFIG_HOME", "/home/x/settings");
    EXPECT_EQ(UserFolder(), "/home/x/settings/pictavo");
    environment.Unset("XDG_CONFIG_HOME");
    environment.Set("HOME", "/home/y");
    EXPECT_EQ(UserFolder(), "/home/y/.config/pictavo");
}

TEST(DataFolders, AreThatOfTheExecutableThenTheInstalledData) {
    EXPECT_EQ(DataFolders("/usr/local/bin"),
              (std::vector<std::filesystem::path>{"/usr/local/bin", "/usr/local/share/pictavo"}));
}

}  // namespace
}  // namespace pictavo::tests
