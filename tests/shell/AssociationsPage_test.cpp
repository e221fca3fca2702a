/// docs/formats/associations.md, against what is written.

#include <gtest/gtest.h>

#include "docs/FormatPage.h"
#include "shell/CFileAssociation.h"
#include "shell/DefaultApplication.h"
#include "shell/DesktopEntry.h"
#include "shell/MimePackage.h"
#include "support/FakeKeyStore.h"

namespace pictavo::tests {
namespace {

const std::string kProgram = "/opt/the phone/pictavo";

std::string Joined(const Lines& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return text;
}

class AssociationsPage : public ::testing::Test {
  protected:
    const FormatPage page{"associations.md"};
};

TEST_F(AssociationsPage, ItsKeysAreWrittenInThisOrder) {
    FakeKeyStore store;
    ASSERT_TRUE(RegisterPictureFileType(store, kProgram, ".gpf", "Graphic Patch File"));
    Lines written;
    for (const std::string& change : store.changes)
        if (change.starts_with("write ")) written.push_back(change.substr(6));
    EXPECT_EQ(written, page.Text("keys"));
}

TEST_F(AssociationsPage, ItsFilesAreThoseThatAreWritten) {
    EXPECT_EQ(MimePackageText({".gpf", ".gpf2"}, "Graphic Patch File"), Joined(page.Text("package")));
    EXPECT_EQ(DesktopEntryText(kProgram + " \"%1\"", kPictureMimeType, kPictureMimeIcon),
              Joined(page.Text("entry")));
    EXPECT_EQ(
        WithDefaultApplication(Joined(page.Text("before")), kPictureMimeType, "pictavo-gpffile.desktop"),
        Joined(page.Text("after")));
}

}  // namespace
}  // namespace pictavo::tests
