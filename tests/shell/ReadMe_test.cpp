#include "shell/ReadMe.h"

#include <QDesktopServices>
#include <QObject>
#include <QUrl>
#include <gtest/gtest.h>

#include "support/TempFolder.h"

namespace pictavo::tests {

/// Stands in for the desktop's programs.
class OpenedFiles final : public QObject {
    Q_OBJECT

  public:
    OpenedFiles() { QDesktopServices::setUrlHandler("file", this, "Open"); }
    ~OpenedFiles() override { QDesktopServices::unsetUrlHandler("file"); }

    std::vector<std::string> paths;

  public slots:
    void Open(const QUrl& url) { paths.push_back(url.toLocalFile().toStdString()); }
};

namespace {

class ReadMeTest : public ::testing::Test {
  protected:
    std::filesystem::path Found() const { return ReadMeFile({first.Path(), second.Path()}); }

    TempFolder first;
    TempFolder second;
    OpenedFiles opened;
};

TEST_F(ReadMeTest, OfTheFoldersTheFirstThatHasItCounts) {
    const auto there = WriteFile(second / "ReadMe.txt", std::string("second"));
    EXPECT_EQ(Found(), there);
    const auto before = WriteFile(first / "ReadMe.txt", std::string("first"));
    EXPECT_EQ(Found(), before);
}

TEST_F(ReadMeTest, WhereNoFolderHasItThatOfTheFirstIsNamed) {
    EXPECT_EQ(Found(), first / "ReadMe.txt");
    std::filesystem::create_directory(second / "ReadMe.txt");
    EXPECT_EQ(Found(), first / "ReadMe.txt");
}

TEST_F(ReadMeTest, ANameWithBlanksAndSignsIsOpenedAsItStands) {
    std::filesystem::create_directory(first / "a b#c%20d");
    const auto there = WriteFile(first / "a b#c%20d" / "ReadMe.txt", std::string("text"));
    ShowReadMe(there);
    EXPECT_EQ(opened.paths, std::vector<std::string>{there.string()});
}

TEST_F(ReadMeTest, WhenItIsMissingNothingHappens) {
    ShowReadMe(Found());
    std::filesystem::create_directory(first / "ReadMe.txt");
    ShowReadMe(Found());
    EXPECT_TRUE(opened.paths.empty());
}

}  // namespace
}  // namespace pictavo::tests

#include "ReadMe_test.moc"
