#include <gmock/gmock.h>

#include "shell/AssociatedProgram.h"
#include "shell/CFileAssociation.h"
#include "shell/RegistryStore_win32.h"
#include "windows/ScratchRegistry.h"

namespace pictavo::tests {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

constexpr const char* kProgram = "C:\\the phone\\Pictavo.exe";
constexpr const char* kCommandKey = "gpffile\\shell\\open\\command";

std::string Utf16(std::u16string_view text) {
    return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)};
}

class RegistryStoreTest : public ::testing::Test {
  protected:
    void StoreText(const std::string& key, std::u16string_view text, DWORD type = REG_SZ) {
        ScratchRegistry::Store(key, type, text.data(), static_cast<DWORD>(text.size() * sizeof(char16_t)));
    }

    /// Without a terminating NUL.
    std::string Read(const std::string& key, const std::string& name) {
        const KeyStore::Value value = store.ReadValue(key, name);
        return value ? value->substr(0, value->find('\0')) : "error " + std::to_string(value.error());
    }

    std::string Lookup(const std::string& extension) {
        return GetAssociatedProgram(store, extension, [](const std::string& text) { FAIL() << text; });
    }

    void Register() {
        for (const char* extension : {".gpf", ".gpf2"}) {
            ASSERT_TRUE(RegisterPictureFileType(store, kProgram, extension, "Graphic Patch File"));
        }
    }

    ScratchRegistry registry;
    RegistryStore store;
};

TEST_F(RegistryStoreTest, KnowsTheKeysThatAreThere) {
    EXPECT_FALSE(store.HasKey(".gpf"));
    EXPECT_TRUE(store.CreateKey(".gpf\\ShellNew"));
    EXPECT_TRUE(store.HasKey(".gpf"));
    EXPECT_TRUE(store.HasKey(".gpf\\ShellNew"));
    EXPECT_FALSE(store.HasKey(".gpf\\ShellOld"));
}

TEST_F(RegistryStoreTest, WhatIsWrittenIsRead) {
    ASSERT_TRUE(store.CreateKey("key"));
    for (const std::string text : {"", "a", "C:\\телефон\\😀 \"%1\""}) {
        ASSERT_TRUE(store.WriteValue("key", "", text));
        EXPECT_EQ(Read("key", ""), text);
    }
    ASSERT_TRUE(store.WriteValue("key", "имя", "named"));
    EXPECT_EQ(Read("key", "имя"), "named");
}

TEST_F(RegistryStoreTest, AnEmptyTextIsStoredAsNothing) {
    ASSERT_TRUE(store.CreateKey("key"));
    ASSERT_TRUE(store.WriteValue("key", "NullFile", ""));
    EXPECT_EQ(ScratchRegistry::Stored("key", "NullFile"), "");
}

TEST_F(RegistryStoreTest, TheTwoWaysOfStoringATextReadAlike) {
    StoreText("with", std::u16string_view(u"gpffile\0", 8));
    StoreText("without", std::u16string_view(u"gpffile|", 7));  // the system takes a NUL behind it along
    ASSERT_EQ(ScratchRegistry::Stored("without", ""), Utf16(u"gpffile"));
    StoreText(kCommandKey, std::u16string_view(u"C:\\p.exe \"%1\"\0", 14), REG_EXPAND_SZ);
    EXPECT_EQ(Lookup("with"), "C:\\p.exe \"%1\"");
    EXPECT_EQ(Lookup("without"), "C:\\p.exe \"%1\"");
}

TEST_F(RegistryStoreTest, AValueThatIsNotThereHasTheSystemsNumber) {
    EXPECT_EQ(store.ReadValue("key", ""),
              KeyStore::Value(tl::unexpected<std::uint32_t>(ERROR_FILE_NOT_FOUND)));
    ASSERT_TRUE(store.CreateKey("key"));
    EXPECT_EQ(store.ReadValue("key", "x"),
              KeyStore::Value(tl::unexpected<std::uint32_t>(ERROR_FILE_NOT_FOUND)));
}

TEST_F(RegistryStoreTest, ANumberIsNoText) {
    const DWORD number = 7;
    ScratchRegistry::Store("key", REG_DWORD, &number, sizeof number);
    EXPECT_EQ(store.ReadValue("key", ""), KeyStore::Value(tl::unexpected<std::uint32_t>(ERROR_INVALID_DATA)));
}

TEST_F(RegistryStoreTest, HalfALetterAtTheEndIsNone) {
    ScratchRegistry::Store("key", REG_SZ, "g\0p\0f", 5);
    EXPECT_EQ(store.ReadValue("key", ""), KeyStore::Value("gp"));
}

TEST_F(RegistryStoreTest, BothExtensionsAreRegisteredAsTheToolsOfTheSystemShowThem) {
    Register();
    const std::string root = "HKEY_CURRENT_USER\\Software\\Pictavo-test\\classes\\";
    const auto shown = [&](const std::string& key, const std::string& name, const std::string& value) {
        return root + key + "\n    " + name + "    REG_SZ    " + value + "\n";
    };
    const std::string keys = ScratchRegistry::ShownClasses();
    for (const std::string extension : {".gpf", ".gpf2"}) {
        EXPECT_THAT(keys, HasSubstr(shown(extension, "(Default)", "gpffile")));
        EXPECT_THAT(keys, HasSubstr(root + extension + "\\ShellNew\n    NullFile    REG_SZ    "));
    }
    EXPECT_THAT(keys, HasSubstr(shown("gpffile", "(Default)", "Graphic Patch File")));
    EXPECT_THAT(keys, HasSubstr(shown("gpffile\\DefaultIcon", "(Default)", std::string(kProgram) + ",0")));
    EXPECT_THAT(keys, HasSubstr(shown(kCommandKey, "(Default)", std::string(kProgram) + " \"%1\"")));
    EXPECT_THAT(ScratchRegistry::ShownUser(), Not(HasSubstr("gpf")));
}

TEST_F(RegistryStoreTest, WhatIsRegisteredIsFound) {
    Register();
    for (const char* extension : {".gpf", ".gpf2"})
        EXPECT_EQ(Lookup(extension), std::string(kProgram) + " \"%1\"");
    EXPECT_EQ(Lookup(".xyz"), "Unregistered file extension .xyz");
}

TEST_F(RegistryStoreTest, RegisteringTwiceChangesNothing) {
    Register();
    const std::string once = ScratchRegistry::ShownClasses();
    Register();
    EXPECT_EQ(ScratchRegistry::ShownClasses(), once);
}

TEST_F(RegistryStoreTest, DeletingUndoesIt) {
    const std::string before = ScratchRegistry::ShownClasses();
    Register();
    ASSERT_NE(ScratchRegistry::ShownClasses(), before);
    for (const char* extension : {".gpf", ".gpf2"}) {
        CFileAssociation association(store, kProgram);
        association.strExt = extension;
        association.strAppID = kPictureFileClass;
        association.DeleteAssociation();
        EXPECT_TRUE(association.Written());
    }
    EXPECT_EQ(ScratchRegistry::ShownClasses(), before);
}

TEST_F(RegistryStoreTest, WhereRightsLackTheUsersOwnTypesAreChanged) {
    ScratchRegistry::Protect(".gpf");
    ASSERT_TRUE(store.WriteValue(".gpf", "", "gpffile"));
    EXPECT_THAT(ScratchRegistry::ShownUser(),
                HasSubstr("\\user\\Software\\Classes\\.gpf\n    (Default)    REG_SZ    gpffile\n"));
    EXPECT_THAT(ScratchRegistry::ShownClasses(), Not(HasSubstr("gpffile")));
}

/// All that a registration writes to.
const std::vector<std::string> kKeys{".gpf",    ".gpf\\ShellNew",       ".gpf2",    ".gpf2\\ShellNew",
                                     "gpffile", "gpffile\\DefaultIcon", kCommandKey};

TEST_F(RegistryStoreTest, WhereTheTypesOfAllUsersCanNotBeChangedTheyAreMadeForTheUser) {
    for (const std::string& key : kKeys) ScratchRegistry::Protect(key);
    const std::string before = ScratchRegistry::ShownClasses();
    Register();
    EXPECT_EQ(ScratchRegistry::ShownClasses(), before);
    const std::string shown = ScratchRegistry::ShownUser();
    for (const std::string& key : kKeys)
        EXPECT_THAT(shown, HasSubstr("\\user\\Software\\Classes\\" + key + "\n    "));
    EXPECT_THAT(shown, HasSubstr(std::string("(Default)    REG_SZ    ") + kProgram + " \"%1\"\n"));
}

TEST_F(RegistryStoreTest, WhereNothingCanBeChangedThatIsToldAndNothingChanges) {
    for (const std::string& key : kKeys) {
        ScratchRegistry::Protect(key);
        ScratchRegistry::Protect("Software\\Classes\\" + key, HKEY_CURRENT_USER);
    }
    const std::string before = ScratchRegistry::ShownClasses() + ScratchRegistry::ShownUser();
    const Status written = RegisterPictureFileType(store, kProgram, ".gpf", "Graphic Patch File");
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().kind, ErrorKind::WriteFailed);
    EXPECT_EQ(written.error().detail, "the registry key .gpf cannot be changed (Permission denied)");
    EXPECT_EQ(ScratchRegistry::ShownClasses() + ScratchRegistry::ShownUser(), before);
}

TEST_F(RegistryStoreTest, TheRootIsNeverRemoved) {
    Register();
    const std::string before = ScratchRegistry::ShownClasses();
    EXPECT_FALSE(store.DeleteKey(""));
    EXPECT_EQ(ScratchRegistry::ShownClasses(), before);
}

TEST_F(RegistryStoreTest, AKeyWithoutANameThatThereCanBeIsRefused) {
    const Status created = store.CreateKey(std::string(300, 'k'));
    ASSERT_FALSE(created);
    EXPECT_EQ(created.error().kind, ErrorKind::WriteFailed);
    EXPECT_THAT(created.error().detail, HasSubstr("kkk"));
}

}  // namespace
}  // namespace pictavo::tests
