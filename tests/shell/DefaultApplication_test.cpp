#include "shell/DefaultApplication.h"

#include <gtest/gtest.h>

namespace pictavo::tests {
namespace {

constexpr const char* kOthers =
    "[Added Associations]\nx/y=mine.desktop;other.desktop;\n\n[Default "
    "Applications]\ntext/plain=ed.desktop\n";

std::string With(const std::string& text) {
    return WithDefaultApplication(text, "x/y", "mine.desktop");
}

std::string Without(const std::string& text) {
    return WithoutDefaultApplication(text, "x/y", "mine.desktop");
}

TEST(DefaultApplication, IsListedByItsType) {
    EXPECT_EQ(DefaultApplications("[Default Applications]\nx/y=a.desktop;b.desktop\n", "x/y"),
              (std::vector<std::string>{"a.desktop", "b.desktop"}));
    EXPECT_TRUE(DefaultApplications(kOthers, "x/y").empty());
}

TEST(DefaultApplication, OthersAreListedInGroupsOfTheirOwn) {
    const std::string all =
        "[Added Associations]\nx/y=a.desktop;b.desktop;\n[Removed Associations]\n"
        "x/y=c.desktop;\n[MIME Cache]\nx/y=d.desktop;\n";
    EXPECT_EQ(AddedApplications(all, "x/y"), (std::vector<std::string>{"a.desktop", "b.desktop"}));
    EXPECT_EQ(RemovedApplications(all, "x/y"), std::vector<std::string>{"c.desktop"});
    EXPECT_EQ(InstalledApplications(all, "x/y"), std::vector<std::string>{"d.desktop"});
    EXPECT_TRUE(DefaultApplications(all, "x/y").empty());
    EXPECT_TRUE(InstalledApplications(all, "x/z").empty());
}

TEST(DefaultApplication, IsAddedAmongTheLinesOfOthers) {
    EXPECT_EQ(With(kOthers),
              "[Added Associations]\nx/y=mine.desktop;other.desktop;\n\n[Default Applications]\n"
              "x/y=mine.desktop;\ntext/plain=ed.desktop\n");
    EXPECT_EQ(With(""), "[Default Applications]\nx/y=mine.desktop;\n");
}

TEST(DefaultApplication, StandsBeforeTheFormerOnes) {
    for (const std::string before : {"a.desktop", "a.desktop;", "a.desktop;mine.desktop"})
        EXPECT_EQ(With("[Default Applications]\nx/y=" + before + "\n"),
                  "[Default Applications]\nx/y=mine.desktop;a.desktop;\n");
}

TEST(DefaultApplication, TwiceIsOnce) {
    for (const std::string text : {"", kOthers, "[Default Applications]\nx/y=mine.desktop\n"})
        EXPECT_EQ(With(With(text)), With(text));
    EXPECT_EQ(With("[Default Applications]\nx/y=mine.desktop\n"),
              "[Default Applications]\nx/y=mine.desktop\n");
}

TEST(DefaultApplication, RemovedItLeavesWhatStoodThere) {
    for (const std::string text : {"", kOthers, "[Default Applications]\nx/y=a.desktop;\n"})
        EXPECT_EQ(Without(With(text)), text);
    EXPECT_EQ(Without(kOthers), kOthers);
}

}  // namespace
}  // namespace pictavo::tests
