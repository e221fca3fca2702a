#include "core/SystemFile.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>
// Behind what they build on.
#include <aclapi.h>
#include <sddl.h>

#include "core/SystemPath_win32.h"
#endif

#include "core/FolderIndex.h"
#include "core/OutputFile.h"
#include "core/PathText.h"
#include "core/SystemNames.h"
#include "support/SystemMeans.h"
#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

using std::filesystem::file_type;

TEST(SystemFile, ALockHasOneHolderUntilItIsGivenBack) {
    const TempFolder temp;
    const auto lock = system_file::TakeLock(temp / "lock");
    ASSERT_TRUE(lock);
    EXPECT_FALSE(system_file::TakeLock(temp / "lock"));
    system_file::ReleaseLock(*lock, temp / "lock");
    EXPECT_TRUE(ListNames(temp.Path()).empty());
    const auto next = system_file::TakeLock(temp / "lock");
    ASSERT_TRUE(next);
    system_file::ReleaseLock(*next, temp / "lock");
}

TEST(SystemFile, ALockFileThatWasLeftBehindHoldsNobodyOff) {
    const TempFolder temp;
    const auto lock = system_file::TakeLock(WriteFile(temp / "lock", std::string("left")));
    ASSERT_TRUE(lock);
    system_file::ReleaseLock(*lock, temp / "lock");
    EXPECT_TRUE(ListNames(temp.Path()).empty());
}

TEST(SystemFile, AFolderOfTheLocksNameIsNoLock) {
    const TempFolder temp;
    std::filesystem::create_directory(temp / "lock");
    EXPECT_FALSE(system_file::TakeLock(temp / "lock"));
    EXPECT_TRUE(std::filesystem::is_directory(temp / "lock"));
}

TEST(SystemFile, NoFileIsCreatedOverAnother) {
    const TempFolder temp;
    const auto path = WriteFile(temp / "file", std::string("old"));
    const auto created = system_file::CreateNew(path);
    ASSERT_FALSE(created);
    EXPECT_EQ(created.error().kind, ErrorKind::FileExists);
    EXPECT_EQ(ReadText(path), "old");
}

TEST(SystemFile, APrivateFolderIsNewAndCanBeWritten) {
    const TempFolder temp;
    const auto one = system_file::CreatePrivateFolder(temp.Path(), "mine-");
    const auto other = system_file::CreatePrivateFolder(temp.Path(), "mine-");
    ASSERT_TRUE(one && other);
    EXPECT_NE(*one, *other);
    for (const auto& folder : {*one, *other}) {
        EXPECT_EQ(folder.parent_path(), temp.Path());
        EXPECT_EQ(folder.filename().string().substr(0, 5), "mine-");
        EXPECT_EQ(folder.filename().string().size(), 11U);
        EXPECT_EQ(ReadText(WriteFile(folder / "file", std::string("x"))), "x");
    }
}

TEST(SystemFile, APrivateFolderNeedsAFolderToStandIn) {
    const TempFolder temp;
    const auto folder = system_file::CreatePrivateFolder(temp / "none", "mine-");
    ASSERT_FALSE(folder);
    EXPECT_EQ(folder.error(), (Error{ErrorKind::WriteFailed, temp / "none", std::nullopt,
                                     "no folder can be created here (No such file or directory)"}));
}

/// A folder in which everybody may create files.
void CreateFolderForAll(const std::filesystem::path& folder) {
    std::filesystem::create_directory(folder);
#ifdef _WIN32
    PSECURITY_DESCRIPTOR rights = nullptr;
    ASSERT_NE(ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;OICI;FA;;;WD)", SDDL_REVISION_1,
                                                                   &rights, nullptr),
              0);
    EXPECT_NE(SetFileSecurityW(folder.c_str(), DACL_SECURITY_INFORMATION, rights), 0);
    LocalFree(rights);
#else
    std::filesystem::permissions(folder, std::filesystem::perms::all);
#endif
}

TEST(SystemFile, TellsWhetherOthersMayWriteInAFolder) {
    const TempFolder temp;
    const auto own = system_file::CreatePrivateFolder(temp.Path(), "mine-");
    ASSERT_TRUE(own);
    EXPECT_FALSE(system_file::OthersMayWrite(*own));
    CreateFolderForAll(temp / "all");
    EXPECT_TRUE(system_file::OthersMayWrite(temp / "all"));
    EXPECT_TRUE(system_file::OthersMayWrite(temp / "none"));
}

TEST(SystemFile, TellsWhatStandsUnderAName) {
    const TempFolder temp;
    EXPECT_EQ(system_file::TypeOfName(WriteFile(temp / "file", std::string())), file_type::regular);
    EXPECT_EQ(system_file::TypeOfName(temp.Path()), file_type::directory);
    EXPECT_EQ(system_file::TypeOfName(temp / "none"), file_type::not_found);
    EXPECT_EQ(system_file::TypeOfName(temp / "none" / "below"), file_type::not_found);
    EXPECT_EQ(system_file::TypeOfFile(temp / "file"), file_type::regular);
    EXPECT_EQ(system_file::TypeOfFile(temp / "none"), file_type::not_found);
    EXPECT_EQ(system_file::TypeOfName(kNullDevice), file_type::character);
}

TEST(SystemFile, AFolderIsEmptyUntilAnythingStandsInIt) {
    const TempFolder temp;
    EXPECT_TRUE(system_file::IsEmptyFolder(temp.Path()));
    EXPECT_FALSE(system_file::IsEmptyFolder(temp / "none"));
    std::filesystem::create_directory(temp / "folder");
    EXPECT_FALSE(system_file::IsEmptyFolder(temp.Path()));
}

void WriteThrough(const std::filesystem::path& path, const std::string& text, CommitMode mode) {
    const Status written = WriteWholeFile(path, AsBytes(text), mode, Durability::Synced);
    EXPECT_TRUE(written) << written.error().detail;
}

std::string ReadThrough(const std::filesystem::path& path) {
    const auto source = FileSource::Open(path);
    if (!source) return source.error().detail;
    return std::string(AsText(source.value()->ReadExactly(0, source.value()->Size()).value()));
}

/// A file is written, replaced, refused, found, compared and removed under this name.
void ExpectUsable(const std::filesystem::path& folder, const std::string& name) {
    const std::filesystem::path path = folder / PathOf(name);
    WriteThrough(path, "first", CommitMode::KeepExisting);
    WriteThrough(path, "second", CommitMode::Replace);
    EXPECT_FALSE(WriteWholeFile(path, AsBytes("third"), CommitMode::KeepExisting));
    EXPECT_EQ(ReadThrough(path), "second");
    EXPECT_EQ(system_file::TypeOfName(path), file_type::regular);
    EXPECT_EQ(IsSameFile(path, folder / "." / PathOf(name)), true);
    const auto index = FolderIndex::Read(folder);
    ASSERT_TRUE(index);
    EXPECT_EQ(index->Find(name), path);
    system_file::RemoveFile(path);
    EXPECT_TRUE(system_file::IsEmptyFolder(folder)) << folder;
}

TEST(SystemFile, RemovingAFileLeavesAFolderOfThatName) {
    const TempFolder temp;
    std::filesystem::create_directory(temp / "empty");
    system_file::RemoveFile(temp / "empty");
    system_file::RemoveFile(temp / "missing");
    EXPECT_EQ(ListNames(temp.Path()), std::vector<std::string>{"empty"});
}

TEST(SystemFile, AFolderGoesWithAllThatStandsInIt) {
    const TempFolder temp;
    std::filesystem::create_directories(temp / "gone" / "below" / "empty");
    WriteFile(temp / "gone" / "file", std::string("x"));
    WriteFile(temp / "gone" / "below" / "file", std::string("x"));
    system_file::RemoveFolder(temp / "gone");
    system_file::RemoveFolder(temp / "missing");
    EXPECT_TRUE(ListNames(temp.Path()).empty());
}

TEST(SystemFile, WhatALinkInARemovedFolderLeadsToStays) {
    PICTAVO_NEEDS_POSIX("symbolic links");
    const TempFolder temp;
    std::filesystem::create_directory(temp / "gone");
    std::filesystem::create_directory(temp / "other");
    WriteFile(temp / "other" / "kept", std::string("x"));
    std::filesystem::create_directory_symlink(temp / "other", temp / "gone" / "link");
    system_file::RemoveFolder(temp / "gone");
    EXPECT_EQ(ListNames(temp.Path()), std::vector<std::string>{"other"});
    EXPECT_EQ(ListNames(temp / "other"), std::vector<std::string>{"kept"});
}

TEST(SystemFile, AWholePathIsReadFromEverywhere) {
    EXPECT_EQ(system_file::WholePath("name"), std::filesystem::current_path() / "name");
    const TempFolder temp;
    EXPECT_EQ(system_file::WholePath(temp / "name"), temp / "name");
    EXPECT_EQ(system_file::WholePath(""), "");
}

TEST(SystemFile, NamesMayHoldAnyLetters) {
    const TempFolder temp;
    for (const std::string name : {"with blanks ;$(x)&'.bmp", "Картинка.gpf", "\U0001F4F1.png"}) {
        const std::filesystem::path folder = temp.Path() / PathOf("in " + name);
        ASSERT_TRUE(EnsureFolder(folder));
        ExpectUsable(folder, name);
    }
}

TEST(SystemFile, PathsMayBeLongerThan260Characters) {
    const TempFolder temp;
    std::filesystem::path folder = temp.Path();
    for (const char letter : {'a', 'b', 'c', 'd'}) folder /= std::string(90, letter);
    ASSERT_TRUE(EnsureFolder(folder));
    ExpectUsable(folder, std::string(200, 'n') + ".bmp");
    const auto lock = system_file::TakeLock(folder / "lock");
    ASSERT_TRUE(lock);
    system_file::ReleaseLock(*lock, folder / "lock");
    const auto inside = system_file::CreatePrivateFolder(folder, "mine-");
    ASSERT_TRUE(inside);
    EXPECT_EQ(system_file::TypeOfName(*inside), file_type::directory);
}

#ifdef _WIN32

/// The rights to a folder in the system's notation.
std::wstring RightsOf(const std::filesystem::path& folder) {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    LPWSTR text = nullptr;
    EXPECT_EQ(GetNamedSecurityInfoW(folder.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                                    nullptr, nullptr, nullptr, &descriptor),
              DWORD{ERROR_SUCCESS});
    EXPECT_NE(ConvertSecurityDescriptorToStringSecurityDescriptorW(descriptor, SDDL_REVISION_1,
                                                                   DACL_SECURITY_INFORMATION, &text, nullptr),
              0);
    const std::wstring rights = text == nullptr ? L"" : text;
    LocalFree(text);
    LocalFree(descriptor);
    return rights;
}

/// Wine adds the system itself to whatever rights it is given, so a count of the entries would say nothing.
TEST(SystemFile, NoGroupOfUsersHasRightsToAPrivateFolder) {
    const TempFolder temp;
    const auto folder = system_file::CreatePrivateFolder(temp.Path(), "mine-");
    ASSERT_TRUE(folder);
    const std::wstring rights = RightsOf(*folder);
    EXPECT_NE(rights.find(L"(A;OICI;FA;;;S-1-5-21-"), std::wstring::npos) << PathText(rights);
    for (const wchar_t* group : {L";;;WD)", L";;;BU)", L";;;AU)"})
        EXPECT_EQ(rights.find(group), std::wstring::npos) << PathText(rights);
}

/// Wine takes long paths as they are, so only this tells that Windows will.
TEST(SystemFile, LongPathsAreMarkedForTheSystem) {
    using system_file::SystemPath;
    const std::wstring name(300, L'n');
    EXPECT_EQ(SystemPath(L"C:\\short\\file"), L"C:\\short\\file");
    EXPECT_EQ(SystemPath(L"file"), L"file");
    EXPECT_EQ(SystemPath(L""), L"");
    EXPECT_EQ(SystemPath(L"C:\\a\\" + name), L"\\\\?\\C:\\a\\" + name);
    EXPECT_EQ(SystemPath(L"C:/a/./b/../" + name), L"\\\\?\\C:\\a\\" + name);
    EXPECT_EQ(SystemPath(L"\\\\server\\share\\" + name), L"\\\\?\\UNC\\server\\share\\" + name);
    EXPECT_EQ(SystemPath(L"\\\\?\\C:\\a\\" + name), L"\\\\?\\C:\\a\\" + name);
    const std::wstring current = std::filesystem::current_path().native();
    EXPECT_EQ(SystemPath(name), L"\\\\?\\" + (std::filesystem::path(current) / name).native());
    EXPECT_EQ(SystemPath(L"C:\\" + name.substr(0, 244)), L"C:\\" + name.substr(0, 244));
    EXPECT_EQ(SystemPath(L"C:\\" + name.substr(0, 245)), L"\\\\?\\C:\\" + name.substr(0, 245));
}

TEST(SystemFile, SeparatorsOfEitherKindWorkInLongPaths) {
    const TempFolder temp;
    std::string folder = PathText(temp.Path());
    std::replace(folder.begin(), folder.end(), '\\', '/');
    for (const char letter : {'a', 'b', 'c', 'd'}) folder += "/" + std::string(90, letter);
    ASSERT_TRUE(EnsureFolder(PathOf(folder)));
    ExpectUsable(PathOf(folder), "file");
}

#endif

}  // namespace
}  // namespace pictavo::tests
