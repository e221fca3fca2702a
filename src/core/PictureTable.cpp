#include "core/PictureTable.h"

#include "core/BasicCalculations_Tarsk.h"
#include "core/Cursor.h"
#include "core/NoOtherValue.h"
#include "core/PitRecordLayout.h"

namespace pictavo {

namespace {

/// Kept: four hex digits are read as a signed number, so a two-byte size of 0x8000 and more is negative and
/// passes the limits.
int ReadSize(Cursor& cursor, std::size_t bytes) {
    return HexToNumber(BytesToHex({cursor.Take(bytes), bytes}, true)).value_or(0);
}

/// Reads a record's size and type; false when they are not those of a valid record.
bool ReadDescription(Cursor& cursor, const PitRecordLayout& layout, PictureRecord& record) {
    record.pitOffset = static_cast<std::uint32_t>(cursor.Position());
    record.width = ReadSize(cursor, layout.sizeBytes);
    record.height = ReadSize(cursor, layout.sizeBytes);
    record.typeCode = cursor.Byte();
    const std::uint8_t secondTypeByte = cursor.Byte();
    return secondTypeByte == 0 && FitsLimits(layout, record.width, record.height, record.typeCode);
}

void ReadLocation(Cursor& cursor, const PitRecordLayout& layout, PictureRecord& record) {
    cursor.Take(layout.unusedBytes);
    constexpr std::size_t length = PitRecordLayout::kAddressBytes;
    record.picOffset = BytesToOffset({cursor.Take(length), length}).value_or(0);
}

std::string TypeText(std::uint8_t typeCode) {
    return BytesToHex(std::array{typeCode, std::uint8_t{0}}, false);
}

}  // namespace

std::string PictureNumberText(int number) {
    return PadZeros(std::to_string(number), 4, true);
}

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
    NoOtherValue();
}

std::string ColumnText(const PictureRecord& record, Column column) {
    switch (column) {
        case Column::Number:
            return PictureNumberText(record.number);
        case Column::Hex:
            return HexText(static_cast<std::uint64_t>(record.number), 3);
        case Column::Width:
            return std::to_string(record.width);
        case Column::Height:
            return std::to_string(record.height);
        case Column::Type:
            return TypeText(record.typeCode);
        case Column::PITOffset:
            return UpperHex(record.pitOffset);
        case Column::PICOffset:
            return HexText(record.picOffset, 7);
    }
    NoOtherValue();
}

std::size_t RecordSize(const FullflashImage& flash) {
    return RecordLayoutOf(flash).Bytes();
}

Result<PictureTable> ReadPictureTable(const FullflashImage& flash, const TableProgress& progress) {
    PictureTable table;
    table.endMet = true;
    if (!flash.pitOffset) return table;
    const PitRecordLayout& layout = RecordLayoutOf(flash);
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
