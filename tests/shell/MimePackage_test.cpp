#include "shell/MimePackage.h"

#include <gmock/gmock.h>

#include "codec/GPFcodec.h"

namespace pictavo::tests {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

TEST(MimePackage, NamesEndingsAndMagicsOfBothKinds) {
    const std::string text = MimePackageText({".gpf", ".gpf2"}, "Graphic Patch File");
    EXPECT_THAT(text, HasSubstr("<mime-type type=\"image/x-gpffile\">"));
    EXPECT_THAT(text, HasSubstr("<comment>Graphic Patch File</comment>"));
    EXPECT_THAT(text, HasSubstr("<glob pattern=\"*.gpf\"/>"));
    EXPECT_THAT(text, HasSubstr("<glob pattern=\"*.gpf2\"/>"));
    for (const auto magic : {kGpfMagic, kGpf2Magic})
        EXPECT_THAT(text, HasSubstr("offset=\"0\" value=\"" + std::string(magic) + "\""));
}

TEST(MimePackage, NamesOnlyTheExtensionsAskedFor) {
    const std::string text = MimePackageText({".gpf2"}, "");
    EXPECT_TRUE(HasExtension(text, ".gpf2"));
    EXPECT_FALSE(HasExtension(text, ".gpf"));
    EXPECT_THAT(text, HasSubstr(std::string(kGpf2Magic)));
    EXPECT_THAT(text, Not(HasSubstr(std::string(kGpfMagic))));
    EXPECT_THAT(text, Not(HasSubstr("comment")));
    EXPECT_FALSE(HasExtension("", ".gpf"));
}

TEST(MimePackage, ItsDescriptionComesBack) {
    for (const std::string description : {"Graphic Patch File", "", "a & <b> &lt; \xD0\x96"})
        EXPECT_EQ(DescriptionOf(MimePackageText({".gpf"}, description)), description);
    for (const std::string odd : {"", "<comment>x", "</comment><comment>"}) EXPECT_EQ(DescriptionOf(odd), "");
}

TEST(MimePackage, KnowsTheProgramsExtensions) {
    for (const std::string extension : {".gpf", ".gpf2"}) EXPECT_TRUE(IsPictureExtension(extension));
    for (const std::string extension : {".xyz", "gpf", ".gpf3", ""})
        EXPECT_FALSE(IsPictureExtension(extension));
}

}  // namespace
}  // namespace pictavo::tests
