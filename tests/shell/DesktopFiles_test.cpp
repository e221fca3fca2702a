#include "shell/DesktopFiles.h"

#include "support/Refusal.h"
#include "support/SystemMeans.h"
#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

TEST(DesktopFiles, AFileThatStaysIsAnErrorThatNamesIt) {
    PICTAVO_NEEDS_POSIX("/proc");
    const std::filesystem::path kept = "/proc/self/comm";
    const Error error = RefusalOf(RemoveText(kept));
    EXPECT_EQ(error.kind, ErrorKind::WriteFailed);
    EXPECT_EQ(error.path, kept);
    EXPECT_EQ(error.detail, "cannot be removed");
}

TEST(DesktopFiles, AnEmptyTextRemovesTheFileOnce) {
    const TempFolder temp;
    const auto path = WriteFile(temp / "list", std::string("text"));
    EXPECT_EQ(PutText(path, ""), true);
    EXPECT_FALSE(IsThere(path));
    EXPECT_EQ(PutText(path, ""), false);
}

}  // namespace
}  // namespace pictavo::tests
