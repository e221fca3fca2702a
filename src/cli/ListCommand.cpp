#include "cli/FlashReport.h"

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

class ListCommand final : public FlashReport {
  public:
    ListCommand() : FlashReport("list", "List the pictures of a fullflash", "array") {}

  private:
    std::string Lines(const Session& session) const override {
        std::string lines = Line([](Column column) { return ColumnName(column); });
        for (const PictureRecord& row : session.rows)
            lines += Line([&](Column column) { return ColumnText(row, column); });
        return lines;
    }

    Json AsJson(const Session& session) const override {
        Json list = Json::array();
        for (const PictureRecord& row : session.rows) {
            Json object;
            for (const Column column : kColumns)
                object[std::string(ColumnName(column))] = ColumnText(row, column);
            list.push_back(std::move(object));
        }
        return list;
    }
};

}  // namespace

std::unique_ptr<Command> MakeListCommand() {
    return std::make_unique<ListCommand>();
}

}  // namespace pictavo::cli
