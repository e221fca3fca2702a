#include "core/SignatureSearch.h"

#include <gtest/gtest.h>

#include "tests/support/TempFolder.h"

namespace pictavo::tests {
namespace {

constexpr Signature kFound{"ABAC", 3};
constexpr std::uint64_t kWindow = 128 * 1024;

MemorySource Source(std::string_view text) {
    const ByteView bytes = AsBytes(text);
    return MemorySource(Bytes(bytes.begin(), bytes.end()));
}

std::optional<std::uint64_t> Find(const ByteSource& source, std::uint64_t from, std::uint64_t limit) {
    const auto place = FindSignature(source, kFound, from, limit, [](std::uint64_t) { return true; });
    EXPECT_TRUE(place);
    return place.value_or(std::nullopt);
}

TEST(SignatureSearch, TheFirstPlaceAtOrBehindTheOneGivenIsFound) {
    const MemorySource source = Source("ABAC-ABABAC");
    EXPECT_EQ(Find(source, 0, 100), 0U);
    EXPECT_EQ(Find(source, 1, 100), 7U);
    EXPECT_EQ(Find(source, 7, 100), 7U);
    EXPECT_EQ(Find(source, 8, 100), std::nullopt);
    EXPECT_EQ(Find(source, 50, 100), std::nullopt);
}

TEST(SignatureSearch, APlaceAtTheLimitIsNoneAndOneBeforeItMayReachBeyond) {
    const MemorySource source = Source("xxABACxx");
    EXPECT_EQ(Find(source, 0, 2), std::nullopt);
    EXPECT_EQ(Find(source, 0, 3), 2U);
    EXPECT_EQ(Find(source, 5, 3), std::nullopt);
}

TEST(SignatureSearch, ASignatureThatTheEndCutsIsNone) {
    EXPECT_EQ(Find(Source("xxABA"), 0, 100), std::nullopt);
    EXPECT_EQ(Find(Source("A"), 0, 100), std::nullopt);
    EXPECT_EQ(Find(Source(""), 0, 100), std::nullopt);
}

TEST(SignatureSearch, EveryPlaceAroundTheWindowsOfAFileIsFound) {
    const TempFolder folder;
    for (std::uint64_t place = kWindow - 5; place <= kWindow + 1; ++place) {
        std::string text(2 * kWindow, '.');
        text.replace(place, 4, "ABAC");
        const auto path = WriteFile(folder / "source", text);
        const auto source = FileSource::Open(path);
        ASSERT_TRUE(source);
        for (const std::uint64_t from : std::initializer_list<std::uint64_t>{0, 100, place})
            EXPECT_EQ(Find(**source, from, text.size()), place) << "from " << from;
        EXPECT_EQ(Find(**source, place + 1, text.size()), std::nullopt) << place;
    }
}

TEST(SignatureSearch, AStopIsAnErrorOfItsOwn) {
    const auto place = FindSignature(Source("xxABAC"), kFound, 0, 100, [](std::uint64_t) { return false; });
    ASSERT_FALSE(place);
    EXPECT_EQ(place.error().kind, ErrorKind::Stopped);
}

}  // namespace
}  // namespace pictavo::tests
