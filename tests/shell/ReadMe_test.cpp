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
    void Show() { ShowReadMe({first.Path(), second.Path()}); }

    TempFolder first;
    TempFolder second;
    OpenedFiles opened;
};

TEST_F(ReadMeTest, OfTheFoldersTheFirstThatHasItCounts) {
    const auto there = WriteFile(second / "ReadMe.txt", std::string("second"));
    Show();
    EXPECT_EQ(opened.paths, std::vector<std::string>{there.string()});
    const auto before = WriteFile(first / "ReadMe.txt", std::string("first"));
    Show();
    EXPECT_EQ(opened.paths, (std::vector<std::string>{there.string(), before.string()}));
}

TEST_F(ReadMeTest, ANameWithBlanksAndSignsIsOpenedAsItStands) {
    std::filesystem::create_directory(first / "a b#c%20d");
    const auto there = WriteFile(first / "a b#c%20d" / "ReadMe.txt", std::string("text"));
    ShowReadMe({first / "a b#c%20d"});
    EXPECT_EQ(opened.paths, std::vector<std::string>{there.string()});
}

TEST_F(ReadMeTest, WhereNoFolderHasItNothingHappens) {
    std::filesystem::create_directory(first / "ReadMe.txt");
    Show();
    ShowReadMe({});
    EXPECT_TRUE(opened.paths.empty());
}

}  // namespace
}  // namespace pictavo::tests

#include "ReadMe_test.moc"
