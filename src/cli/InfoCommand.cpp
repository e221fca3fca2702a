#include "cli/Command.h"
#include "cli/CommandSession.h"
#include "cli/PathOption.h"
#include "cli/Text.h"
#include "core/FlashText.h"

namespace pictavo::cli {

namespace {

Json InfoOf(const Session& session) {
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

std::string AsLines(const Json& info) {
    std::string text;
    for (const auto& [key, value] : info.items())
        text += KeyLine(key, value.is_string() ? value.get<std::string>() : value.dump());
    return text;
}

class InfoCommand final : public Command {
  public:
    InfoCommand() : Command("info", "Identify the phone that a fullflash comes from") {}

    void Declare(CLI::App& app) override {
        AddPath(app, "FLASH", flash_, "The fullflash file")->required();
        app.add_flag("--json", json_, "Print a JSON object");
    }

    int Run(Front& front) override {
        CommandSession run(front, {});
        if (const Status opened = run.Open(flash_); !opened) return front.Fail(opened.error());
        const Json info = InfoOf(run.session);
        const int printed = front.Print(json_ ? info.dump(2) + "\n" : AsLines(info));
        const Status isFullflash = run.CheckIsFullflash();
        return isFullflash ? printed : front.Fail(isFullflash.error());
    }

  private:
    std::filesystem::path flash_;
    bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeInfoCommand() {
    return std::make_unique<InfoCommand>();
}

}  // namespace pictavo::cli
