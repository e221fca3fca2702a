#include "cli/FlashReport.h"

namespace pictavo::cli {

namespace {

/// Appends the texts of a line's columns, parted by TABs; `text` gives each.
template <typename Text>
void AppendLine(Text text, std::string& lines) {
    for (const Column column : kColumns) {
        lines += text(column);
        lines += column == kColumns.back() ? '\n' : '\t';
    }
}

class ListCommand final : public FlashReport {
  public:
    ListCommand() : FlashReport("list", "List the pictures of a fullflash", "array") {}

  private:
    std::string Lines(const Session& session) const override {
        std::string lines;
        AppendLine(ColumnName, lines);
        for (const PictureRecord& row : session.rows)
            AppendLine([&](Column column) { return ColumnText(row, column); }, lines);
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
