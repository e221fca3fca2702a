#include <nlohmann/json.hpp>

#include "support/CliFixture.h"

namespace pictavo::tests {
namespace {

using Json = nlohmann::ordered_json;

class PngInfoTest : public CliTest {
  protected:
    std::string Png(const Drawing& drawing, samples::PngColour colour, const Bytes& ancillary = {}) {
        return Write("a.png", samples::MakePng(drawing, colour, ancillary));
    }
};

TEST_F(PngInfoTest, TellsTheThirteenFactsInTheirOrder) {
    ExpectDone(Cli({"png-info", Png(samples::DrawIcon(12, 34, 1), samples::PngColour::Rgb)}),
               "width: 12\n"
               "height: 34\n"
               "bit_depth: 8\n"
               "colour_type: 2\n"
               "colour_type_name: Truecolor\n"
               "compression: 0\n"
               "filter: 0\n"
               "interlace: 0\n"
               "note: \n"
               "dpi_x: 0\n"
               "dpi_y: 0\n"
               "background: 0\n"
               "palette_entries: 0\n");
}

TEST_F(PngInfoTest, JsonHasTheSameKeysAndThePalette) {
    Drawing drawing = samples::DrawOneColour(2, 1, {1, 2, 3, 255});
    drawing.At(1, 0) = {4, 5, 6, 0};
    const std::string png = Png(drawing, samples::PngColour::Palette);
    const Ended text = Cli({"png-info", png});
    const Ended ended = Cli({"png-info", png, "--json"});
    EXPECT_EQ(ended.status, 0);
    const Json info = Json::parse(ended.out, nullptr, false);
    std::vector<std::string> keys;
    for (const auto& [key, value] : info.items()) keys.push_back(key);
    ASSERT_EQ(keys.size(), 14U);
    EXPECT_EQ(keys.back(), "palette");
    for (std::size_t i = 0; i < 13; ++i) EXPECT_TRUE(Lines(text.out).at(i).starts_with(keys[i] + ": "));
    EXPECT_EQ(info["palette_entries"], 2);
    EXPECT_EQ(info["palette"].dump(), "[[1,2,3,255],[4,5,6,0]]");
    EXPECT_TRUE(info["width"].is_number());
    EXPECT_TRUE(info["dpi_x"].is_number());
    EXPECT_TRUE(info["note"].is_string());
}

TEST_F(PngInfoTest, AnythingElseIsRefused) {
    const std::string bmp = Write("a.bmp", samples::MakeBmp(samples::DrawIcon(4, 4, 1), 24));
    ExpectRefused(Cli({"png-info", bmp}), {bmp, "This is not PNG!"});
    ExpectRefused(Cli({"png-info", Write("empty.png", Bytes()), "--json"}), {Path("empty.png")});
    ExpectRefused(Cli({"png-info", Path("none.png")}), {Path("none.png"), "No such file"});
}

}  // namespace
}  // namespace pictavo::tests
