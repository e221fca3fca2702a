#include "cli/Command.h"
#include "cli/CommandSession.h"
#include "cli/PathOption.h"

namespace pictavo::cli {

namespace {

/// The texts of a line's columns, parted by TABs; `text` gives each.
template <typename Text>
std::string Line(Text text) {
    std::string line;
    for (const Column column : kColumns) {
        if (!line.empty()) line += '\t';
        line += text(column);
    }
    return line + '\n';
}

std::string AsLines(const std::vector<PictureRecord>& rows) {
    std::string lines = Line([](Column column) { return ColumnName(column); });
    for (const PictureRecord& row : rows)
        lines += Line([&](Column column) { return ColumnText(row, column); });
    return lines;
}

std::string AsJson(const std::vector<PictureRecord>& rows) {
    Json list = Json::array();
    for (const PictureRecord& row : rows) {
        Json object;
        for (const Column column : kColumns)
            object[std::string(ColumnName(column))] = ColumnText(row, column);
        list.push_back(std::move(object));
    }
    return list.dump(2) + "\n";
}

class ListCommand final : public Command {
  public:
    ListCommand() : Command("list", "List the pictures of a fullflash") {}

    void Declare(CLI::App& app) override {
        AddPath(app, "FLASH", flash_, "The fullflash file")->required();
        app.add_flag("--json", json_, "Print a JSON array");
    }

    int Run(Front& front) override {
        CommandSession run(front, {});
        if (const Status opened = run.Open(flash_); !opened) return front.Fail(opened.error());
        const int printed = front.Print(json_ ? AsJson(run.session.rows) : AsLines(run.session.rows));
        const Status isFullflash = run.CheckIsFullflash();
        return isFullflash ? printed : front.Fail(isFullflash.error());
    }

  private:
    std::filesystem::path flash_;
    bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeListCommand() {
    return std::make_unique<ListCommand>();
}

}  // namespace pictavo::cli
