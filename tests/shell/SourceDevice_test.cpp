#include "shell/SourceDevice.h"

#include <gtest/gtest.h>

#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

TEST(SourceDevice, GivesTheBytesInAnyOrder) {
    const MemorySource source(Bytes{'a', 'b', 'c', 'd', 'e'});
    SourceDevice device(source);
    EXPECT_EQ(device.size(), 5);
    EXPECT_EQ(device.peek(2), "ab");
    EXPECT_EQ(device.read(3), "abc");
    EXPECT_EQ(device.pos(), 3);
    EXPECT_TRUE(device.seek(1));
    EXPECT_EQ(device.read(100), "bcde");
    EXPECT_TRUE(device.atEnd());
    EXPECT_EQ(device.read(1), "");
}

TEST(SourceDevice, StaysInsideTheSource) {
    const MemorySource source(Bytes{'a', 'b'});
    SourceDevice device(source);
    EXPECT_TRUE(device.seek(2));
    EXPECT_FALSE(device.seek(3));
    EXPECT_FALSE(device.seek(-1));
    EXPECT_EQ(device.pos(), 2);
}

TEST(SourceDevice, CanNotBeWritten) {
    const MemorySource source(Bytes{'a'});
    SourceDevice device(source);
    EXPECT_FALSE(device.isWritable());
    EXPECT_TRUE(device.isReadable());
}

TEST(SourceDevice, AFileThatBecameShorterIsAnError) {
    const TempFolder temp;
    const auto path = WriteFile(temp / "file", Bytes(300'000, 1));
    const auto source = FileSource::Open(path);
    ASSERT_TRUE(source);
    SourceDevice device(**source);
    std::filesystem::resize_file(path, 10);
    ASSERT_TRUE(device.seek(200'000));
    char byte = 0;
    EXPECT_EQ(device.read(&byte, 1), -1);
}

}  // namespace
}  // namespace pictavo::tests
