#include "shell/TemporaryFolder.h"

#include "support/Environment.h"
#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

class TemporaryFolderTest : public ::testing::Test {
  protected:
    TemporaryFolderTest() { environment.Set("TMPDIR", system.Path().string()); }

    TempFolder named;
    TempFolder system;
    Environment environment;
};

TEST_F(TemporaryFolderTest, IsTheOneThatTmpNames) {
    environment.Set("TMP", named.Path().string());
    EXPECT_EQ(NamedTemporaryFolder(), named.Path());
    EXPECT_EQ(TemporaryFolder(), named.Path());
}

TEST_F(TemporaryFolderTest, IsTheSystemsWhereTmpNamesNoFolder) {
    for (const std::filesystem::path& none :
         {std::filesystem::path(), named / "missing", WriteFile(named / "file", std::string("x"))}) {
        environment.Set("TMP", none.string());
        EXPECT_EQ(NamedTemporaryFolder(), "") << none;
        EXPECT_EQ(TemporaryFolder(), system.Path()) << none;
    }
    environment.Unset("TMP");
    EXPECT_EQ(TemporaryFolder(), system.Path());
}

}  // namespace
}  // namespace pictavo::tests
