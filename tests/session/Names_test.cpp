#include "session/Names.h"

#include <gtest/gtest.h>

namespace pictavo::tests {
namespace {

AppSettings Naming(bool hex, bool zeros) {
    AppSettings settings;
    settings.HEXFilename = hex;
    settings.ZeroFilename = zeros;
    return settings;
}

TEST(Names, ANumberIsPlainDecimalUnlessTheSettingsSayOtherwise) {
    EXPECT_EQ(NumberName(Naming(false, false), 0), "0");
    EXPECT_EQ(NumberName(Naming(false, false), 26), "26");
}

TEST(Names, ZerosFillADecimalNumberUpToFourDigits) {
    EXPECT_EQ(NumberName(Naming(false, true), 26), "0026");
    EXPECT_EQ(NumberName(Naming(false, true), 2000), "2000");
}

TEST(Names, AHexadecimalNumberIsUpperCase) {
    EXPECT_EQ(NumberName(Naming(true, false), 26), "1A");
    EXPECT_EQ(NumberName(Naming(true, false), 0), "0");
}

TEST(Names, ZerosFillAHexadecimalNumberUpToThreeDigits) {
    EXPECT_EQ(NumberName(Naming(true, true), 26), "01A");
    EXPECT_EQ(NumberName(Naming(true, true), 2500), "9C4");
}

TEST(Names, AFilledNumberIsNeverCut) {
    EXPECT_EQ(NumberName(Naming(true, true), 0x1234), "1234");
    EXPECT_EQ(NumberName(Naming(false, true), 12345), "12345");
}

TEST(Names, KeptANegativeNumberHasASignInDecimal) {
    EXPECT_EQ(NumberName(Naming(false, false), -32768), "-32768");
    EXPECT_EQ(NumberName(Naming(false, false), -1), "-1");
}

TEST(Names, KeptANegativeNumberIs8000ToFFFFInHexadecimal) {
    EXPECT_EQ(NumberName(Naming(true, false), -32768), "8000");
    EXPECT_EQ(NumberName(Naming(true, true), -1), "FFFF");
}

TEST(Names, KeptZerosAreFilledInBeforeTheSign) {
    EXPECT_EQ(NumberName(Naming(false, true), -1), "00-1");
    EXPECT_EQ(NumberName(Naming(false, true), -12345), "-12345");
}

TEST(Names, TrailingCharactersBelow41AreCutOff) {
    EXPECT_EQ(WithoutTail("Hello!"), "Hello");
    EXPECT_EQ(WithoutTail("a.gpf \t\r\n#$%&'("), "a.gpf");
}

TEST(Names, TheTailEndsAtTheFirstCharacterOf41OrMore) {
    EXPECT_EQ(WithoutTail("a!)"), "a!)");
    EXPECT_EQ(WithoutTail("a b!c"), "a b!c");
    EXPECT_EQ(WithoutTail("a0"), "a0");
}

TEST(Names, LettersBeyondAsciiAreNoTail) {
    EXPECT_EQ(WithoutTail("Bild\xC3\xA9 "), "Bild\xC3\xA9");
}

TEST(Names, ANameThatIsTailAllThroughBecomesEmpty) {
    EXPECT_EQ(WithoutTail(" !!"), "");
    EXPECT_EQ(WithoutTail(""), "");
}

TEST(Names, AnExtensionIsAppendedUnlessTheNameEndsInExactlyIt) {
    EXPECT_EQ(WithExtension("a", ".bmp"), "a.bmp");
    EXPECT_EQ(WithExtension("a.bmp", ".bmp"), "a.bmp");
    EXPECT_EQ(WithExtension("a.png", ".bmp"), "a.png.bmp");
    EXPECT_EQ(WithExtension("abmp", ".bmp"), "abmp.bmp");
}

TEST(Names, AnExtensionInUpperCaseDoesNotCount) {
    EXPECT_EQ(WithExtension("X.VKP", ".vkp"), "X.VKP.vkp");
}

TEST(Names, TheFolderOfANameStays) {
    EXPECT_EQ(WithExtension("/some folder.bmp/a", ".bmp"), "/some folder.bmp/a.bmp");
    EXPECT_EQ(GpfName("/folder.gpf/a", false), "/folder.gpf/a.gpf2");
}

TEST(Names, AGpfNameIsKept) {
    EXPECT_EQ(GpfName("x.gpf", false), "x.gpf");
    EXPECT_EQ(GpfName("x.gpf2", false), "x.gpf2");
    EXPECT_EQ(GpfName("x.gpf2", true), "x.gpf2");
}

TEST(Names, ForGpf2ATwoIsAppendedUnlessTheNameEndsInOne) {
    EXPECT_EQ(GpfName("x.gpf", true), "x.gpf2");
    EXPECT_EQ(GpfName("foo.bmp", true), "foo.bmp2.gpf2");
    EXPECT_EQ(GpfName("foo", true), "foo2.gpf2");
    EXPECT_EQ(GpfName("foo2", true), "foo2.gpf2");
}

TEST(Names, ANameThatIsNoGpfBecomesAGpf2InBothVariants) {
    EXPECT_EQ(GpfName("foo", false), "foo.gpf2");
    EXPECT_EQ(GpfName("foo.bmp", false), "foo.bmp.gpf2");
    EXPECT_EQ(GpfName("foo.GPF", false), "foo.GPF.gpf2");
    EXPECT_EQ(GpfName("foogpf", false), "foogpf.gpf2");
}

TEST(Names, Gpf2NeedsNoDotToBeLeftAlone) {
    EXPECT_EQ(GpfName("foogpf2", false), "foogpf2");
}

TEST(Names, TheVariantIsToldByTheEndingWithItsDot) {
    EXPECT_TRUE(NamesGpf2("a.gpf2"));
    EXPECT_FALSE(NamesGpf2("a.gpf"));
    EXPECT_FALSE(NamesGpf2("agpf2"));
    EXPECT_FALSE(NamesGpf2("a.GPF2"));
}

}  // namespace
}  // namespace pictavo::tests
