#include "config/TextEncoding.h"

#include <gtest/gtest.h>

#include "support/Refusal.h"

namespace pictavo::tests {
namespace {

Bytes BytesOf(const std::string& text) {
    const ByteView bytes = AsBytes(text);
    return {bytes.begin(), bytes.end()};
}

bool IsUtf8Text(const std::string& text) {
    const auto isUtf8 = IsUtf8(MemorySource(BytesOf(text)));
    EXPECT_TRUE(isUtf8);
    return isUtf8.value_or(false);
}

TEST(IsUtf8, TakesCharactersOfEveryLength) {
    EXPECT_TRUE(IsUtf8Text(""));
    EXPECT_TRUE(IsUtf8Text("plain\r\n\x7F"));
    EXPECT_TRUE(IsUtf8Text("ä Ж € \xF0\x9F\x93\xB1"));
    EXPECT_TRUE(
        IsUtf8Text("\xEF\xBB\xBF"
                   "x"));
    EXPECT_TRUE(IsUtf8Text(std::string(1, '\0')));
}

TEST(IsUtf8, TakesTheFirstAndTheLastCharacterOfEveryLength) {
    for (const std::string text : {"\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80",
                                   "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"})
        EXPECT_TRUE(IsUtf8Text("a" + text + "z")) << text;
}

TEST(IsUtf8, RefusesWhatLiesJustBeyond) {
    for (const std::string text : {"\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF0\x8F\xBF\xBF",
                                   "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF", "\x80"})
        EXPECT_FALSE(IsUtf8Text("a" + text + "z")) << text;
}

TEST(IsUtf8, RefusesACharacterThatIsCut) {
    for (const std::string text : {"\xC3", "\xE2\x82", "\xE2", "\xF0\x9F\x93"}) {
        EXPECT_FALSE(IsUtf8Text(text)) << text << " at the end";
        EXPECT_FALSE(IsUtf8Text(text + "x")) << text << " before another";
    }
}

/// Gives one byte at a time.
class DripSource final : public ByteSource {
  public:
    explicit DripSource(const std::string& text) : whole_(BytesOf(text)) {}
    std::uint64_t Size() const override { return whole_.Size(); }
    Result<ByteView> ViewAt(std::uint64_t offset) const override {
        PICTAVO_TRY(const ByteView view, whole_.ViewAt(offset));
        return view.first(std::min<std::size_t>(view.size(), 1));
    }
    const std::filesystem::path& Path() const override { return whole_.Path(); }

  private:
    MemorySource whole_;
};

TEST(IsUtf8, MindsNoBordersOfThePiecesThatAreRead) {
    EXPECT_TRUE(IsUtf8(DripSource("ä Ж € \xF0\x9F\x93\xB1")).value_or(false));
    EXPECT_FALSE(IsUtf8(DripSource("ä Ж \xE2\x82")).value_or(true));
}

class BrokenSource final : public ByteSource {
  public:
    std::uint64_t Size() const override { return 1; }
    Result<ByteView> ViewAt(std::uint64_t) const override { return Fail(ErrorKind::ReadFailed, "broken"); }
    const std::filesystem::path& Path() const override { return path_; }

  private:
    std::filesystem::path path_;
};

TEST(IsUtf8, PassesAReadErrorUp) {
    EXPECT_EQ(RefusalOf(IsUtf8(BrokenSource())), (Error{ErrorKind::ReadFailed, {}, std::nullopt, "broken"}));
}

/// Bytes 80 to FF.
std::string UpperHalf() {
    std::string text;
    for (int byte = 0x80; byte <= 0xFF; ++byte) text.push_back(static_cast<char>(byte));
    return text;
}

constexpr const char* kUpperHalfOf1251 =
    "ЂЃ‚ѓ„…†‡€‰Љ‹ЊЌЋЏ"
    "ђ‘’“”•–—"
    "\xC2\x98"
    "™љ›њќћџ"
    "\u00A0ЎўЈ¤Ґ¦§Ё©Є«¬\u00AD®Ї"
    "°±Ііґµ¶·ё№є»јЅѕї"
    "АБВГДЕЖЗИЙКЛМНОП"
    "РСТУФХЦЧШЩЪЫЬЭЮЯ"
    "абвгдежзийклмноп"
    "рстуфхцчшщъыьэюя";

constexpr const char* kUpperHalfOf1252 =
    "€"
    "\xC2\x81"
    "‚ƒ„…†‡ˆ‰Š‹Œ"
    "\xC2\x8D"
    "Ž"
    "\xC2\x8F"
    "\xC2\x90"
    "‘’“”•–—˜™š›œ"
    "\xC2\x9D"
    "žŸ"
    "\u00A0¡¢£¤¥¦§¨©ª«¬\u00AD®¯"
    "°±²³´µ¶·¸¹º»¼½¾¿"
    "ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏ"
    "ÐÑÒÓÔÕÖ×ØÙÚÛÜÝÞß"
    "àáâãäåæçèéêëìíîï"
    "ðñòóôõö÷øùúûüýþÿ";

TEST(Utf8FromCodePage, KnowsEveryCharacterOfBothSets) {
    EXPECT_EQ(Utf8FromCodePage(UpperHalf(), CodePage::Windows1251), kUpperHalfOf1251);
    EXPECT_EQ(Utf8FromCodePage(UpperHalf(), CodePage::Windows1252), kUpperHalfOf1252);
}

TEST(Utf8FromCodePage, LeavesTheLowerHalfAsItIs) {
    std::string text;
    for (int byte = 0; byte < 0x80; ++byte) text.push_back(static_cast<char>(byte));
    EXPECT_EQ(Utf8FromCodePage(text, CodePage::Windows1251), text);
    EXPECT_EQ(Utf8FromCodePage(text, CodePage::Windows1252), text);
}

TEST(CharacterCount, CountsCharactersAndNotBytes) {
    EXPECT_EQ(CharacterCount(""), 0U);
    EXPECT_EQ(CharacterCount("Pictavo"), 7U);
    EXPECT_EQ(CharacterCount("äЖ€\xF0\x9F\x93\xB1"), 4U);
}

}  // namespace
}  // namespace pictavo::tests
