#include "cli/FlashReport.h"
#include "cli/Text.h"
#include "core/FlashText.h"

namespace pictavo::cli {

namespace {

class InfoCommand final : public FlashReport {
  public:
    InfoCommand() : FlashReport("info", "Identify the phone that a fullflash comes from", "object") {}

  private:
    Json AsJson(const Session& session) const override {
        const FullflashImage& flash = session.flash;
        Json info;
        info["platform"] = flash.platform;
        info["model"] = FlashText(flash.mModel);
        info["firmware"] = flash.fw;
        info["language_pack"] = FlashText(flash.lngPack);
        info["manufacturer"] = FlashText(flash.ManufN);
        info["pit_address"] = flash.PITadr;
        info["pictures"] = session.rows.size();
        info["free_search_offset"] = flash.FreeSearchOffset;
        return info;
    }

    std::string Lines(const Session& session) const override {
        std::string text;
        const Json info = AsJson(session);
        for (const auto& [key, value] : info.items())
            text += KeyLine(key, value.is_string() ? value.get<std::string>() : value.dump());
        return text;
    }
};

}  // namespace

std::unique_ptr<Command> MakeInfoCommand() {
    return std::make_unique<InfoCommand>();
}

}  // namespace pictavo::cli
