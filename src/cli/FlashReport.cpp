#include "cli/FlashReport.h"

#include "cli/CommandSession.h"
#include "cli/PathOption.h"
#include "cli/Text.h"

namespace pictavo::cli {

FlashReport::FlashReport(std::string name, std::string description, std::string jsonKind)
    : Command(std::move(name), std::move(description)), jsonKind_(std::move(jsonKind)) {}

void FlashReport::Declare(CLI::App& app) {
    AddPath(app, "FLASH", flash_, "The fullflash file")->required();
    app.add_flag("--json", json_, "Print a JSON " + jsonKind_);
}

int FlashReport::Run(Front& front) {
    CommandSession run(front, {});
    if (const Status opened = run.Open(flash_); !opened) return front.Fail(opened.error());
    const int printed = front.Print(json_ ? JsonText(AsJson(run.session).dump(2)) : Lines(run.session));
    const Status isFullflash = run.CheckIsFullflash();
    return isFullflash ? printed : front.Fail(isFullflash.error());
}

}  // namespace pictavo::cli
