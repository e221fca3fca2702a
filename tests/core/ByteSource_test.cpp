#include "core/ByteSource.h"

#include <gtest/gtest.h>
#include <random>

#ifdef _WIN32
#include <windows.h>
#else
#include <fcntl.h>
#endif

#include "core/BasicCalculations_Tarsk.h"
#include "core/FolderIndex.h"
#include "core/LineReader.h"
#include "support/SystemMeans.h"
#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

Bytes RandomBytes(std::size_t length) {
    std::mt19937 random(3);
    Bytes bytes(length);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
    return bytes;
}

std::unique_ptr<FileSource> OpenFile(const std::filesystem::path& path) {
    auto source = FileSource::Open(path);
    EXPECT_TRUE(source);
    return std::move(*source);
}

TEST(ByteSource, AReadPastTheEndLeavesTheRestOfTheBufferAsItWas) {
    const MemorySource source(Bytes{1, 2, 3});
    Bytes buffer(4, 0xEE);
    EXPECT_EQ(source.ReadAt(1, buffer), 2U);
    EXPECT_EQ(buffer, (Bytes{2, 3, 0xEE, 0xEE}));
    EXPECT_EQ(source.ReadAt(3, buffer), 0U);
    EXPECT_EQ(source.ReadAt(~std::uint64_t{0}, buffer), 0U);
    EXPECT_EQ(buffer, (Bytes{2, 3, 0xEE, 0xEE}));
}

TEST(ByteSource, ReadExactlyRefusesWhatIsNotThere) {
    const MemorySource source(Bytes{1, 2, 3});
    EXPECT_EQ(source.ReadExactly(1, 2), (Bytes{2, 3}));
    EXPECT_EQ(source.ReadExactly(3, 0), Bytes{});
    for (const std::uint64_t length : {3U, 4U, ~0U}) {
        const auto bytes = source.ReadExactly(1, length);
        ASSERT_FALSE(bytes);
        EXPECT_EQ(bytes.error().kind, ErrorKind::Truncated);
        EXPECT_EQ(bytes.error().offset, 1U);
    }
    EXPECT_FALSE(source.ReadExactly(~std::uint64_t{0}, ~std::uint64_t{0}));
}

TEST(FileSource, GivesTheFilesBytesInAnyOrderAndAcrossItsWindows) {
    const TempFolder temp;
    const Bytes bytes = RandomBytes(400'003);
    const auto source = OpenFile(WriteFile(temp / "file", bytes));
    std::mt19937 random(5);
    for (int round = 0; round < 2000; ++round) {
        const std::size_t offset = random() % bytes.size();
        const std::size_t length = random() % 5000;
        Bytes read(length, 0xEE);
        const auto count = source->ReadAt(offset, read);
        ASSERT_EQ(count, std::min(length, bytes.size() - offset));
        ASSERT_TRUE(std::equal(read.begin(), read.begin() + static_cast<std::ptrdiff_t>(*count),
                               bytes.begin() + static_cast<std::ptrdiff_t>(offset)));
    }
}

void ExpectRefused(const std::filesystem::path& path, const std::string& reason) {
    const auto source = FileSource::Open(path);
    ASSERT_FALSE(source) << path;
    EXPECT_EQ(source.error(), (Error{ErrorKind::FileMissing, path, std::nullopt, reason}));
}

TEST(FileSource, RefusesFoldersDevicesAndMissingFilesWithTheReason) {
    const TempFolder temp;
    ExpectRefused(temp.Path(), "cannot be opened (it is a folder)");
    ExpectRefused(temp / "none", "cannot be opened (No such file or directory)");
    ExpectRefused(temp / "none" / "below", "cannot be opened (No such file or directory)");
    ExpectRefused(kNullDevice, "cannot be opened (it is no regular file)");
}

TEST(FileSource, RefusesAPipeWithoutWaitingForItsOtherEnd) {
    PICTAVO_NEEDS_POSIX("named pipes in folders");
    const TempFolder temp;
    ASSERT_TRUE(MakePipe(temp / "pipe"));
    ExpectRefused(temp / "pipe", "cannot be opened (it is no regular file)");
}

TEST(FileSource, AFileThatBecameShorterIsAnErrorAndNoCrash) {
    const TempFolder temp;
    const auto path = WriteFile(temp / "file", RandomBytes(400'000));
    const auto source = OpenFile(path);
    std::filesystem::resize_file(path, 1000);
    const auto view = source->ViewAt(300'000);
    ASSERT_FALSE(view);
    EXPECT_EQ(view.error(), (Error{ErrorKind::ReadFailed, path, 300'000, "the file became shorter"}));
}

#ifndef _WIN32

TEST(FileSource, IsOpenedReadOnly) {
    const TempFolder temp;
    const auto path = WriteFile(temp / "file", std::string("x"));
    const auto source = OpenFile(path);
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code error;
        if (std::filesystem::read_symlink(entry, error) != path) continue;
        const int handle = std::stoi(entry.path().filename());
        EXPECT_EQ(fcntl(handle, F_GETFL) & O_ACCMODE, O_RDONLY);
        return;
    }
    FAIL() << "the open file was not found";
}

#else

TEST(FileSource, OthersMayWriteRenameAndRemoveTheFileMeanwhile) {
    const TempFolder temp;
    const auto path = WriteFile(temp / "file", std::string("x"));
    const auto source = OpenFile(path);
    EXPECT_EQ(ReadText(WriteFile(path, std::string("y"))), "y");
    std::filesystem::rename(path, temp / "renamed");
    EXPECT_TRUE(std::filesystem::remove(temp / "renamed"));
}

TEST(FileSource, IsOpenedReadOnly) {
    const TempFolder temp;
    const auto path = WriteFile(temp / "file", std::string("x"));
    const auto source = OpenFile(path);
    // One that lets others only read is refused while somebody may write.
    const HANDLE reader =
        CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_NE(reader, INVALID_HANDLE_VALUE);
    CloseHandle(reader);
}

#endif

std::vector<std::string> Lines(const std::string& text) {
    const MemorySource source(Bytes(text.begin(), text.end()));
    LineReader reader(source);
    std::vector<std::string> lines;
    for (auto line = reader.Next(); line && *line; line = reader.Next()) {
        lines.push_back(**line);
        EXPECT_EQ(reader.Number(), lines.size());
    }
    return lines;
}

TEST(LineReader, TakesLinesWithEitherEndAndTheLastWithout) {
    EXPECT_EQ(Lines("a\r\nb\n\r\nc"), (std::vector<std::string>{"a", "b", "", "c"}));
    EXPECT_EQ(Lines("a\n"), (std::vector<std::string>{"a"}));
    EXPECT_TRUE(Lines("").empty());
}

TEST(LineReader, OnlyTheReturnAtTheEndIsTakenOff) {
    EXPECT_EQ(Lines("a\rb\r\r\n"), (std::vector<std::string>{"a\rb\r"}));
}

TEST(LineReader, TakesALineLongerThanTheFilesWindow) {
    const TempFolder temp;
    const std::string longLine(300'000, 'x');
    const auto source = OpenFile(WriteFile(temp / "file", longLine + "\r\nend"));
    LineReader reader(*source);
    EXPECT_EQ(reader.Next().value(), longLine);
    EXPECT_EQ(reader.Next().value(), "end");
    EXPECT_EQ(reader.Next().value(), std::nullopt);
}

TEST(LineReader, RefusesALineOfMoreThanAMebibyteByItsNumber) {
    constexpr std::size_t kLongest = 1U << 20;
    const TempFolder temp;
    const auto path =
        WriteFile(temp / "file", std::string(kLongest, 'x') + "\n" + std::string(kLongest + 1, 'y'));
    const auto source = OpenFile(path);
    LineReader reader(*source);
    EXPECT_EQ(reader.Next().value(), std::string(kLongest, 'x'));
    const auto refused = reader.Next();
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().kind, ErrorKind::Malformed);
    EXPECT_EQ(refused.error().path, path);
    EXPECT_EQ(refused.error().detail, "line 2 is longer than 1 MiB");
}

TEST(FolderIndex, TakesTheExactNameFirstThenIgnoresTheCase) {
    const TempFolder temp;
    PICTAVO_NEEDS_POSIX("two names that differ in case only");
    for (const char* name : {"A.BMP", "a.bmp", "B.Bmp", "b.bMP"}) WriteFile(temp / name, std::string("x"));
    const auto index = FolderIndex::Read(temp.Path());
    ASSERT_TRUE(index);
    EXPECT_EQ(index->Find("a.bmp"), temp / "a.bmp");
    EXPECT_EQ(index->Find("A.BMP"), temp / "A.BMP");
    EXPECT_EQ(index->Find("b.bmp"), temp / "B.Bmp");
    EXPECT_EQ(index->Find("c.bmp"), std::nullopt);
}

TEST(FolderIndex, FindsAnyLettersByTheirTextInUtf8) {
    const TempFolder temp;
    const std::filesystem::path file = WriteFile(temp.Path() / u8"Картинка \U0001F4F1.BMP", std::string("x"));
    const auto index = FolderIndex::Read(temp.Path());
    ASSERT_TRUE(index);
    EXPECT_EQ(index->Find("Картинка \U0001F4F1.bmp"), file);
    EXPECT_EQ(index->Find("картинка \U0001F4F1.bmp"), std::nullopt);
}

TEST(FolderIndex, HoldsRegularFilesOnlyAlsoThroughLinks) {
    PICTAVO_NEEDS_POSIX("named pipes in folders");
    const TempFolder temp;
    const auto file = WriteFile(temp / "file", std::string("x"));
    std::filesystem::create_directory(temp / "folder");
    ASSERT_TRUE(MakePipe(temp / "pipe"));
    std::filesystem::create_symlink(file, temp / "to file");
    std::filesystem::create_symlink(temp / "folder", temp / "to folder");
    std::filesystem::create_symlink("nowhere", temp / "to nothing");
    const auto index = FolderIndex::Read(temp.Path());
    ASSERT_TRUE(index);
    for (const char* name : {"file", "to file"}) EXPECT_EQ(index->Find(name), temp / name);
    for (const char* name : {"folder", "pipe", "to folder", "to nothing"})
        EXPECT_EQ(index->Find(name), std::nullopt) << name;
}

TEST(FolderIndex, AFolderThatIsNotThereIsAnError) {
    const TempFolder temp;
    const auto index = FolderIndex::Read(temp / "none");
    ASSERT_FALSE(index);
    EXPECT_EQ(index.error().kind, ErrorKind::FileMissing);
    EXPECT_EQ(index.error().path, temp / "none");
}

}  // namespace
}  // namespace pictavo::tests
