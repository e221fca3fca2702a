#include "session/Messages.h"

#include <gtest/gtest.h>

namespace pictavo::tests {
namespace {

TEST(Messages, WithoutALanguageFileAMissingFileIsItsPathAndAnExclamationMark) {
    const LanguageTable empty;
    EXPECT_EQ(MissingFile(empty, "/a.bmp", MissingForm::PathThenText).text, "/a.bmp\r!");
    EXPECT_EQ(MissingFile(empty, "/a.bmp", MissingForm::TextThenPath).text, "!\r/a.bmp");
    EXPECT_EQ(MissingFile(empty, "/a.bmp", MissingForm::TextBeforePathEnd).text, "\r/a.bmp!");
    const Error missing{ErrorKind::FileMissing, "/a.bmp", std::nullopt, "cannot be opened"};
    ASSERT_EQ(NoticesOf(empty, missing).size(), 1U);
    EXPECT_EQ(NoticesOf(empty, missing)[0].text, "/a.bmp\r!");
}

}  // namespace
}  // namespace pictavo::tests
