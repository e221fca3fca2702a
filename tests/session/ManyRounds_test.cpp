/// A window that stays open for days.

#ifdef _WIN32
#include <windows.h>
#endif

#include "session/OpenFullflash.h"
#include "session/ShowPicture.h"
#include "support/SessionFixture.h"

namespace pictavo::tests {
namespace {

constexpr int kRounds = 10'000;
constexpr int kWarmUp = 500;

#ifdef _WIN32

/// The system's own pace of keeping and giving back memory says nothing here.
long ResidentPages() {
    return 0;
}

std::ptrdiff_t OpenHandles() {
    DWORD count = 0;
    EXPECT_TRUE(GetProcessHandleCount(GetCurrentProcess(), &count));
    return static_cast<std::ptrdiff_t>(count);
}

#else

/// Pages of memory that the process holds.
long ResidentPages() {
    std::ifstream statistics("/proc/self/statm");
    long size = 0;
    long resident = 0;
    statistics >> size >> resident;
    return resident;
}

std::ptrdiff_t OpenHandles() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

#endif

class ManyRoundsTest : public SessionFixture {
  protected:
    void OpenLookAndClose(int rounds) {
        for (int round = 0; round < rounds; ++round) {
            ASSERT_TRUE(OpenFullflash(session, flashPath, scripted.progress));
            ASSERT_TRUE(ShowRow(session, static_cast<std::size_t>(round) % session.rows.size()));
            CloseFullflash(session);
            scripted.progress.percents.clear();
        }
    }
};

TEST_F(ManyRoundsTest, OpeningAndClosingKeepsNeitherMemoryNorHandles) {
    Open(FourIcons());
    OpenLookAndClose(kWarmUp);
    const long pages = ResidentPages();
    const std::ptrdiff_t handles = OpenHandles();
    OpenLookAndClose(kRounds);
    EXPECT_EQ(OpenHandles(), handles);
#ifndef __SANITIZE_ADDRESS__          // which keeps what is freed, and itself finds what is not
    constexpr long kMostPages = 256;  // 1 MiB, less than a hundredth of the windows that were filled
    EXPECT_LE(ResidentPages(), pages + kMostPages);
#else
    static_cast<void>(pages);
#endif
}

}  // namespace
}  // namespace pictavo::tests
