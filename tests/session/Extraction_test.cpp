#include "session/Extraction.h"

#include "support/ScriptedPorts.h"

namespace pictavo::tests {
namespace {

TEST(TellPosition, IsAPartOfTheSourceAndNeverMoreThanAllOfIt) {
    ScriptedPorts scripted;
    const MemorySource source(Bytes(8));
    for (const std::uint64_t position : {0U, 2U, 8U, 9U})
        EXPECT_TRUE(TellPosition(scripted.ports, position, source));
    EXPECT_EQ(scripted.progress.percents, (std::vector<double>{0, 25, 100, 100}));
}

TEST(TellPosition, AnEmptySourceIsDoneAtOnce) {
    ScriptedPorts scripted;
    EXPECT_TRUE(TellPosition(scripted.ports, 0, MemorySource(Bytes())));
    EXPECT_EQ(scripted.progress.percents, std::vector<double>{100});
}

TEST(TellPosition, PassesTheWishToStopOn) {
    ScriptedPorts scripted;
    scripted.progress.stopAfter = 1;
    EXPECT_FALSE(TellPosition(scripted.ports, 0, MemorySource(Bytes(8))));
}

}  // namespace
}  // namespace pictavo::tests
