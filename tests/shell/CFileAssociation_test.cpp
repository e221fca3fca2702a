#include "shell/CFileAssociation.h"

#include <gmock/gmock.h>

#include "support/FakeKeyStore.h"

namespace pictavo::tests {
namespace {

using ::testing::IsEmpty;
using Lines = std::vector<std::string>;

const std::string kWindowsProgram = "C:\\Program Files\\Pictavo\\Pictavo.exe";

class CFileAssociationTest : public ::testing::Test {
  protected:
    CFileAssociationTest() {
        association.strExt = ".abc";
        association.strAppID = "abcfile";
    }

    Status Register(const std::string& extension) {
        return RegisterPictureFileType(store, kWindowsProgram, extension, "Graphic Patch File");
    }

    std::string IconFor(const std::string& icon, const std::string& exePath) {
        association.strIcon = icon;
        association.strExePath = exePath;
        association.CreateAssociation();
        return store.keys["abcfile\\DefaultIcon"][""];
    }

    FakeKeyStore store;
    CFileAssociation association{store, kWindowsProgram};
};

/// Kept: the command is "open" at first.
TEST_F(CFileAssociationTest, APictureFileTypeIsWrittenInThisOrder) {
    EXPECT_TRUE(Register(".gpf"));
    EXPECT_EQ(
        store.changes,
        (Lines{"create .gpf", "write .gpf [] gpffile", "create .gpf\\ShellNew",
               "write .gpf\\ShellNew [NullFile] ", "create gpffile", "write gpffile [] Graphic Patch File",
               "create gpffile\\shell\\open\\command", "write gpffile\\shell\\open\\command [] open",
               "create gpffile\\DefaultIcon", "write gpffile\\DefaultIcon [] " + kWindowsProgram + ",0",
               "create gpffile\\shell\\open\\command",
               "write gpffile\\shell\\open\\command [] " + kWindowsProgram + " \"%1\""}));
}

TEST_F(CFileAssociationTest, BothExtensionsShareTheType) {
    EXPECT_TRUE(Register(".gpf"));
    EXPECT_TRUE(Register(".gpf2"));
    EXPECT_EQ(store.keys.size(), 7U);
    for (const std::string extension : {".gpf", ".gpf2"}) {
        EXPECT_EQ(store.keys[extension][""], "gpffile");
        EXPECT_EQ(store.keys[extension + "\\ShellNew"].at("NullFile"), "");
    }
    EXPECT_EQ(store.keys["gpffile"][""], "Graphic Patch File");
}

/// Kept: no quotation marks around a path with blanks.
TEST_F(CFileAssociationTest, TheProgramStandsUnquotedInTheCommand) {
    EXPECT_TRUE(Register(".gpf"));
    EXPECT_EQ(store.keys["gpffile\\shell\\open\\command"][""], kWindowsProgram + " \"%1\"");
}

TEST_F(CFileAssociationTest, RegisteringTwiceChangesNothing) {
    EXPECT_TRUE(Register(".gpf"));
    const auto once = store.keys;
    EXPECT_TRUE(Register(".gpf"));
    EXPECT_EQ(store.keys, once);
}

TEST_F(CFileAssociationTest, OldValuesAreOverwritten) {
    store.keys[".gpf"][""] = "other";
    store.keys["gpffile\\shell\\open\\command"][""] = "other.exe \"%1\"";
    EXPECT_TRUE(Register(".gpf"));
    EXPECT_EQ(store.keys[".gpf"][""], "gpffile");
    EXPECT_EQ(store.keys["gpffile\\shell\\open\\command"][""], kWindowsProgram + " \"%1\"");
}

TEST_F(CFileAssociationTest, TheIconIsTheProgramANumberInItOrALocation) {
    EXPECT_EQ(IconFor("", "D:\\x.exe"), "D:\\x.exe");
    EXPECT_EQ(IconFor("3", "D:\\x.exe"), kWindowsProgram + ",3");
    EXPECT_EQ(IconFor("-101", ""), kWindowsProgram + ",-101");
    EXPECT_EQ(IconFor("D:\\icons.dll,7", "D:\\x.exe"), "D:\\icons.dll,7");
    for (const std::string noNumber : {"-", "3a", "3,1"}) EXPECT_EQ(IconFor(noNumber, ""), noNumber);
}

TEST_F(CFileAssociationTest, WithoutIconAndProgramThereIsNoIconKey) {
    EXPECT_EQ(association.CreateAssociation(), 0);
    EXPECT_FALSE(store.HasKey("abcfile\\DefaultIcon"));
}

TEST_F(CFileAssociationTest, NullFileEmptiesTheNewCommand) {
    association.strNewFileType = "NullFile";
    association.strNewFileCommand = "something";
    association.CreateAssociation();
    EXPECT_EQ(store.keys[".abc\\ShellNew"].at("NullFile"), "");
    EXPECT_EQ(association.strNewFileCommand, "");
}

TEST_F(CFileAssociationTest, TheOtherKindsOfNewEntryKeepTheirCommand) {
    association.strNewFileCommand = "something";
    for (const std::string kind : {"Command", "FileName"}) {
        association.strNewFileType = kind;
        association.CreateAssociation();
        EXPECT_EQ(store.keys[".abc\\ShellNew"].at(kind), "something");
    }
}

TEST_F(CFileAssociationTest, AnyOtherKindMakesNoNewEntry) {
    for (const std::string kind : {"", "nullfile", "NullFile ", "Other"}) {
        association.strNewFileType = kind;
        association.CreateAssociation();
    }
    EXPECT_FALSE(store.HasKey(".abc\\ShellNew"));
}

TEST_F(CFileAssociationTest, ATypeWithoutDescriptionIsAKeyWithoutValue) {
    association.CreateAssociation();
    EXPECT_TRUE(store.HasKey("abcfile"));
    EXPECT_THAT(store.keys["abcfile"], IsEmpty());
}

TEST_F(CFileAssociationTest, WithoutExtensionOrTypeNothingIsWritten) {
    for (std::string CFileAssociation::*field : {&CFileAssociation::strExt, &CFileAssociation::strAppID}) {
        CFileAssociation incomplete = association;
        (incomplete.*field).clear();
        EXPECT_EQ(incomplete.CreateAssociation(), 1);
        incomplete.DeleteAssociation();
    }
    EXPECT_THAT(store.changes, IsEmpty());
}

TEST_F(CFileAssociationTest, DeletingIsOneDeletionForExtensionAndTypeEach) {
    association.DeleteAssociation();
    EXPECT_EQ(store.changes, (Lines{"delete .abc", "delete abcfile"}));
}

TEST_F(CFileAssociationTest, AContextMenuItemIsAVerbOfTheType) {
    association.CreateContextMenuItem("print", "p.exe");
    EXPECT_EQ(store.keys["abcfile\\shell\\print\\command"][""], "p.exe");
}

TEST_F(CFileAssociationTest, AfterAFailureTheRestIsStillWrittenAndTheFirstOneIsTold) {
    store.refusedKey = ".gpf";
    const Status status = Register(".gpf");
    ASSERT_FALSE(status);
    EXPECT_EQ(status.error(), (Error{ErrorKind::WriteFailed, ".gpf", std::nullopt, "refused"}));
    EXPECT_EQ(store.changes.size(), 12U);
    EXPECT_TRUE(store.HasKey("gpffile\\DefaultIcon"));
}

}  // namespace
}  // namespace pictavo::tests
