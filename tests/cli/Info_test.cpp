#include <nlohmann/json.hpp>

#include "support/CliFixture.h"

namespace pictavo::tests {
namespace {

using Json = nlohmann::ordered_json;

class InfoTest : public CliTest {
  protected:
    Json JsonOf(const FlashBuilder& flash) {
        const Ended ended = Cli({"info", Write(flash), "--json"});
        EXPECT_EQ(ended.status, 0) << ended.err;
        EXPECT_TRUE(ended.out.ends_with("}\n"));
        return Json::parse(ended.out, nullptr, false);
    }
};

TEST_F(InfoTest, TellsTheEightFactsInTheirOrder) {
    ExpectDone(Cli({"info", Write(FourIcons(FlashKind::NewSGoldE71))}),
               "platform: New-SGold\n"
               "model: E71\n"
               "firmware: 2E\n"
               "language_pack: lg1\n"
               "manufacturer: SIEMENS\n"
               "pit_address: 00A0000\n"
               "pictures: 4\n"
               "free_search_offset: 16777216\n");
}

TEST_F(InfoTest, AnSGoldFlashHasItsTableInTheDescriptorAndALowerSearchStart) {
    ExpectDone(Cli({"info", Write(FourIcons(FlashKind::SGold).Firmware(0x07).DescriptorAt(0x90200))}),
               "platform: SGold\n"
               "model: T55\n"
               "firmware: 07\n"
               "language_pack: lg1\n"
               "manufacturer: SIEMENS\n"
               "pit_address: 9021C\n"
               "pictures: 4\n"
               "free_search_offset: 262144\n");
}

TEST_F(InfoTest, AModelOfFourLettersIsShownWhole) {
    EXPECT_EQ(JsonOf(FourIcons(FlashKind::NewSGoldEL71))["model"], "EL71");
}

TEST_F(InfoTest, JsonHasTheSameKeysInTheSameOrder) {
    const Json info = JsonOf(FourIcons());
    std::vector<std::string> keys;
    for (const auto& [key, value] : info.items()) keys.push_back(key);
    EXPECT_EQ(keys,
              (std::vector<std::string>{"platform", "model", "firmware", "language_pack", "manufacturer",
                                        "pit_address", "pictures", "free_search_offset"}));
}

TEST_F(InfoTest, JsonHasTwoNumbersAndSixTexts) {
    const Json info = JsonOf(FourIcons());
    EXPECT_EQ(info["pictures"], 4);
    EXPECT_EQ(info["free_search_offset"], 0x1000000);
    for (const auto& [key, value] : info.items())
        EXPECT_EQ(value.is_string(), key != "pictures" && key != "free_search_offset") << key;
}

TEST_F(InfoTest, BytesOfTheFlashAreReadAsLatin1AndWrittenAsUtf8) {
    FlashBuilder flash = FourIcons();
    flash.Model("\xC4\xE0\xFF").Manufacturer("S\xFC\xDF GmbH");
    const Ended ended = Cli({"info", Write(flash)});
    EXPECT_THAT(ended.out, HasSubstr("model: \xC3\x84\xC3\xA0\xC3\xBF\n"));
    EXPECT_THAT(ended.out, HasSubstr("manufacturer: S\xC3\xBC\xC3\x9F GmbH\n"));
    const Json info = Json::parse(Cli({"info", Path("flash.bin"), "--json"}).out, nullptr, false);
    EXPECT_EQ(info["manufacturer"], "S\xC3\xBC\xC3\x9F GmbH");
}

TEST_F(InfoTest, ControlCharactersBecomeBlanksAndStayInJson) {
    FlashBuilder flash = FourIcons();
    flash.Manufacturer("a\nb\x1B\x7F\x80\x9F\xA0z");
    const Ended ended = Cli({"info", Write(flash)});
    EXPECT_THAT(ended.out, HasSubstr("manufacturer: a b    \xC2\xA0z\n"));
    EXPECT_EQ(Lines(ended.out).size(), 8U);
    const std::string json = Cli({"info", Path("flash.bin"), "--json"}).out;
    EXPECT_THAT(json, HasSubstr("\"a\\nb\\u001b\\u007F\\u0080\\u009F\xC2\xA0z\"")) << "as a terminal gets it";
    const Json info = Json::parse(json, nullptr, false);
    EXPECT_EQ(info["manufacturer"], "a\nb\x1B\x7F\xC2\x80\xC2\x9F\xC2\xA0z");
}

TEST_F(InfoTest, ATableWithoutPicturesIsNoFailure) {
    const Ended ended = Cli({"info", Write(FlashBuilder(FlashKind::NewSGold))});
    EXPECT_EQ(ended.status, 0);
    EXPECT_THAT(ended.out, HasSubstr("\npictures: 0\n"));
}

TEST_F(InfoTest, AFileThatIsNoFullflashIsComplainedOf) {
    const std::string text = Write("letter.txt", std::string("Dear phone,"));
    const Ended ended = Cli({"info", text});
    EXPECT_EQ(ended.status, 1);
    ExpectOneComplaint(ended, {text, "no fullflash"});
}

}  // namespace
}  // namespace pictavo::tests
