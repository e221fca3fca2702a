#include "core/PictureTable.h"

#include "core/BasicCalculations_Tarsk.h"
#include "core/Cursor.h"

namespace pictavo {

namespace {

/// One of the two record forms, and the limits that a valid record of it keeps.
struct RecordLayout {
    std::size_t sizeFieldBytes;  // width and height, each
    std::size_t unusedBytes;     // between type and address
    int lastNumber;
    int widthLimit;
    int heightLimit;
};

constexpr RecordLayout kShortLayout{1, 0, 2000, 255, 255};
constexpr RecordLayout kLongLayout{2, 2, 2500, 240, 320};
constexpr std::size_t kTypeBytes = 2;
constexpr std::size_t kAddressBytes = 4;
constexpr std::uint8_t kLastTypeCode = 0x8F;

constexpr std::size_t SizeOf(const RecordLayout& layout) {
    return 2 * layout.sizeFieldBytes + kTypeBytes + layout.unusedBytes + kAddressBytes;
}
static_assert(SizeOf(kShortLayout) == 8 && SizeOf(kLongLayout) == 12);

const RecordLayout& LayoutOf(const FullflashImage& flash) {
    return flash.HasLongRecords() ? kLongLayout : kShortLayout;
}

/// Kept: four hex digits are read as a signed number, so a two-byte size of 0x8000 and more is negative and
/// passes the limits.
int ReadSize(Cursor& cursor, std::size_t bytes) {
    return HexToNumber(BytesToHex({cursor.Take(bytes), bytes}, true)).value_or(0);
}

/// Reads a record's size and type; false when they are not those of a valid record.
bool ReadDescription(Cursor& cursor, const RecordLayout& layout, PictureRecord& record) {
    record.pitOffset = static_cast<std::uint32_t>(cursor.Position());
    record.width = ReadSize(cursor, layout.sizeFieldBytes);
    record.height = ReadSize(cursor, layout.sizeFieldBytes);
    record.typeCode = cursor.Byte();
    const std::uint8_t secondTypeByte = cursor.Byte();
    return secondTypeByte == 0 && record.width <= layout.widthLimit && record.height <= layout.heightLimit &&
           record.typeCode <= kLastTypeCode;
}

void ReadLocation(Cursor& cursor, const RecordLayout& layout, PictureRecord& record) {
    cursor.Take(layout.unusedBytes);
    record.picOffset = BytesToOffset({cursor.Take(kAddressBytes), kAddressBytes}).value_or(0);
}

std::string TypeText(std::uint8_t typeCode) {
    return BytesToHex(std::array{typeCode, std::uint8_t{0}}, false);
}

}  // namespace

std::string_view ColumnName(Column column) {
    switch (column) {
        case Column::Number:
            return "#";
        case Column::Hex:
            return "hex";
        case Column::Width:
            return "width";
        case Column::Height:
            return "height";
        case Column::Type:
            return "Type";
        case Column::PITOffset:
            return "PIToffset";
        case Column::PICOffset:
            return "PICoffset";
    }
    return {};
}

std::string ColumnText(const PictureRecord& record, Column column) {
    switch (column) {
        case Column::Number:
            return PadZeros(std::to_string(record.number), 4, true);
        case Column::Hex:
            return PadZeros(UpperHex(static_cast<std::uint64_t>(record.number)), 3, true);
        case Column::Width:
            return std::to_string(record.width);
        case Column::Height:
            return std::to_string(record.height);
        case Column::Type:
            return TypeText(record.typeCode);
        case Column::PITOffset:
            return UpperHex(record.pitOffset);
        case Column::PICOffset:
            return PadZeros(UpperHex(record.picOffset), 7, true);
    }
    return {};
}

std::size_t RecordSize(const FullflashImage& flash) {
    return SizeOf(LayoutOf(flash));
}

Result<PictureTable> ReadPictureTable(const FullflashImage& flash, const TableProgress& progress) {
    PictureTable table;
    table.endMet = true;
    if (!flash.pitOffset) return table;
    const RecordLayout& layout = LayoutOf(flash);
    Cursor cursor(*flash.source, *flash.pitOffset);
    for (int number = 0; number <= layout.lastNumber; ++number) {
        PictureRecord record{.number = number};
        if (cursor.AtEnd() || !ReadDescription(cursor, layout, record)) break;
        ReadLocation(cursor, layout, record);
        table.rows.push_back(record);
        if (progress) progress(number, layout.lastNumber);
    }
    table.endMet = table.rows.size() <= static_cast<std::size_t>(layout.lastNumber);
    if (!cursor.Health()) return Failure(WithPath(cursor.Health().error(), flash.source->Path()));
    return table;
}

}  // namespace pictavo
