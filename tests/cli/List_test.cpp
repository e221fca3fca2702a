#include <nlohmann/json.hpp>

#include "support/CliFixture.h"

namespace pictavo::tests {
namespace {

using Json = nlohmann::ordered_json;

class ListTest : public CliTest {};

TEST_F(ListTest, AHeaderAndOneLineARowPartedByTabs) {
    FlashBuilder flash(FlashKind::NewSGold);
    flash.Size(2U << 20).PicturesAt(0x180000);
    flash.AddDrawing(samples::DrawIcon(16, 9, 1), 0x05).AddDrawing(samples::DrawIcon(132, 176, 2), 0x8A);
    ExpectDone(Cli({"list", Write(flash)}),
               "#\thex\twidth\theight\tType\tPIToffset\tPICoffset\n"
               "0000\t000\t16\t9\t0500\tA0000\t0180000\n"
               "0001\t001\t132\t176\t8A00\tA0008\t0180090\n");
}

TEST_F(ListTest, LongRecordsLieTwelveBytesApartAndHoldTallPictures) {
    FlashBuilder flash(FlashKind::NewSGoldEL71);
    flash.Size(2U << 20);
    flash.AddDrawing(samples::DrawIcon(240, 320, 1), 0x85).AddDrawing(samples::DrawIcon(8, 8, 2), 0x01);
    const auto lines = Lines(Cli({"list", Write(flash)}).out);
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_TRUE(lines[1].starts_with("0000\t000\t240\t320\t8500\tA0000\t00C0000")) << lines[1];
    EXPECT_TRUE(lines[2].starts_with("0001\t001\t8\t8\t0100\tA000C\t")) << lines[2];
}

TEST_F(ListTest, NumbersCountOnInHexadecimal) {
    FlashBuilder flash(FlashKind::NewSGold);
    for (int i = 0; i < 17; ++i) flash.AddDrawing(samples::DrawIcon(8, 8, 1), 0x05);
    const auto lines = Lines(Cli({"list", Write(flash)}).out);
    ASSERT_EQ(lines.size(), 18U);
    EXPECT_TRUE(lines[17].starts_with("0016\t010\t")) << lines[17];
}

TEST_F(ListTest, JsonIsAnArrayOfObjectsOfSevenTexts) {
    const std::string flash = Write(FourIcons());
    const Ended ended = Cli({"list", flash, "--json"});
    EXPECT_EQ(ended.status, 0);
    const Json list = Json::parse(ended.out, nullptr, false);
    ASSERT_TRUE(list.is_array());
    ASSERT_EQ(list.size(), 4U);
    const std::vector<std::string> keys{"#", "hex", "width", "height", "Type", "PIToffset", "PICoffset"};
    for (const Json& row : list) {
        std::vector<std::string> found;
        for (const auto& [key, value] : row.items()) {
            found.push_back(key);
            EXPECT_TRUE(value.is_string()) << key;
        }
        EXPECT_EQ(found, keys);
    }
    EXPECT_EQ(list[1]["Type"], "8500");
    EXPECT_EQ(list[3]["#"], "0003");
}

TEST_F(ListTest, JsonAndTextSayTheSame) {
    const std::string flash = Write(FourIcons());
    const auto lines = Lines(Cli({"list", flash}).out);
    const Json list = Json::parse(Cli({"list", flash, "--json"}).out, nullptr, false);
    for (std::size_t i = 0; i < list.size(); ++i) {
        std::string line;
        for (const auto& [key, value] : list[i].items())
            line += (line.empty() ? "" : "\t") + value.get<std::string>();
        EXPECT_EQ(line, lines.at(i + 1));
    }
}

TEST_F(ListTest, ATableWithoutPicturesGivesTheHeaderOrAnEmptyArray) {
    const std::string flash = Write(FlashBuilder(FlashKind::NewSGold));
    ExpectDone(Cli({"list", flash}), "#\thex\twidth\theight\tType\tPIToffset\tPICoffset\n");
    ExpectDone(Cli({"list", flash, "--json"}), "[]\n");
}

}  // namespace
}  // namespace pictavo::tests
