#include "cli/Command.h"
#include "cli/PathOption.h"
#include "cli/Text.h"
#include "tools/PNGcodec.h"

namespace pictavo::cli {

namespace {

Json PaletteOf(const PNGInfo& info) {
    Json palette = Json::array();
    for (int i = 0; i < info.paletteEntries; ++i) {
        const PaletteEntry& entry = info.palette[static_cast<std::size_t>(i)];
        palette.push_back({entry.red, entry.green, entry.blue, entry.alpha});
    }
    return palette;
}

Json InfoOf(const PNGInfo& info) {
    Json json;
    json["width"] = info.width;
    json["height"] = info.height;
    json["bit_depth"] = info.bitDepth;
    json["colour_type"] = info.colourType;
    json["colour_type_name"] = info.colourTypeName;
    json["compression"] = info.compression;
    json["filter"] = info.filter;
    json["interlace"] = info.interlace;
    json["note"] = info.note;
    json["dpi_x"] = info.horizontalDpi;
    json["dpi_y"] = info.verticalDpi;
    json["background"] = info.background;
    json["palette_entries"] = info.paletteEntries;
    return json;
}

/// Whole numbers are shown without a fraction.
std::string ValueText(const Json& value) {
    if (value.is_string()) return value.get<std::string>();
    if (!value.is_number_float()) return value.dump();
    const std::string text = value.dump();
    return text.ends_with(".0") ? text.substr(0, text.size() - 2) : text;
}

std::string AsLines(const Json& json) {
    std::string lines;
    for (const auto& [key, value] : json.items()) lines += KeyLine(key, ValueText(value));
    return lines;
}

class PngInfoCommand final : public Command {
  public:
    PngInfoCommand() : Command("png-info", "Print what a PNG file's chunks say") {}

    void Declare(CLI::App& app) override {
        AddPath(app, "FILE", file_, "The PNG file")->required();
        app.add_flag("--json", json_, "Print a JSON object, with the palette");
    }

    int Run(Front& front) override {
        const auto info = Read();
        if (!info) return front.Fail(info.error());
        Json json = InfoOf(*info);
        if (!json_) return front.Print(AsLines(json));
        json["palette"] = PaletteOf(*info);
        return front.Print(JsonText(json.dump(2)));
    }

  private:
    Result<PNGInfo> Read() const {
        PICTAVO_TRY(const auto source, FileSource::Open(file_));
        return ReadPNGInfo(*source);
    }

    std::filesystem::path file_;
    bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakePngInfoCommand() {
    return std::make_unique<PngInfoCommand>();
}

}  // namespace pictavo::cli
