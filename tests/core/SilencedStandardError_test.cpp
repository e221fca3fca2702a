#include "core/SilencedStandardError.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <optional>

namespace pictavo::tests {
namespace {

TEST(SilencedStandardError, DropsWhatIsWrittenWhileItLastsAndNothingElse) {
    ::testing::internal::CaptureStderr();
    std::fputs("before ", stderr);
    std::optional<SilencedStandardError> silence(std::in_place);
    std::fputs("meanwhile ", stderr);
    silence.reset();
    std::fputs("after", stderr);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "before after");
}

TEST(SilencedStandardError, MayStandInsideAnother) {
    ::testing::internal::CaptureStderr();
    {
        const SilencedStandardError outer;
        { const SilencedStandardError inner; }
        std::fputs("meanwhile", stderr);
    }
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace pictavo::tests
