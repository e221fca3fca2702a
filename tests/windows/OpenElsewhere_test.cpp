#include <windows.h>

#include "core/ByteSource.h"
#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

TEST(OpenElsewhere, AFileThatAnotherProgramKeepsForItselfIsToldAsSuch) {
    const TempFolder temp;
    const std::filesystem::path path = WriteFile(temp / "flash.bin", std::string("x"));
    const HANDLE elsewhere =
        CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(elsewhere, INVALID_HANDLE_VALUE);
    const auto opened = FileSource::Open(path);
    CloseHandle(elsewhere);
    ASSERT_FALSE(opened);
    EXPECT_EQ(opened.error().path, path);
    EXPECT_EQ(opened.error().detail, "cannot be opened (another program has it open)");
}

}  // namespace
}  // namespace pictavo::tests
