#pragma once

/// The picture index table (PIT) of a fullflash: one record a picture, giving its size, its type and where
/// its data lie. Layout: docs/formats/picture-table.md.

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/FullflashImage.h"

namespace pictavo {

/// One picture of the table; a row of the picture list.
struct PictureRecord {
    int number = 0;               ///< counted from 0 in table order
    int width = 0;                ///< pixels; negative in a long record of 0x8000 and more, which is kept
    int height = 0;               ///< pixels
    std::uint8_t typeCode = 0;    ///< see PictureType
    std::uint32_t pitOffset = 0;  ///< file offset of the record
    std::uint32_t picOffset = 0;  ///< file offset of the picture data

    bool operator==(const PictureRecord&) const = default;
};

/// A picture's number as lists and messages show it: four decimal digits at least.
std::string PictureNumberText(int number);

/// The columns of the picture list, in their order.
enum class Column { Number, Hex, Width, Height, Type, PITOffset, PICOffset };

inline constexpr std::array kColumns = {Column::Number, Column::Hex,       Column::Width,    Column::Height,
                                        Column::Type,   Column::PITOffset, Column::PICOffset};

/// The column's heading: "#", "hex", "width", "height", "Type", "PIToffset", "PICoffset".
std::string_view ColumnName(Column column);

/// What the column shows of a record.
std::string ColumnText(const PictureRecord& record, Column column);

struct PictureTable {
    std::vector<PictureRecord> rows;

    /// False when the reading came to the most records there can be without meeting an invalid one. Kept: who
    /// opens the flash then leaves `picnum` as it was.
    bool endMet = false;
};

/// Told after each record: its number and the most there can be.
using TableProgress = std::function<void(int number, int most)>;

/// Reads the table up to the first invalid record. A flash without a table gives no rows. Fails with
/// ReadFailed only.
Result<PictureTable> ReadPictureTable(const FullflashImage& flash, const TableProgress& progress = {});

/// Bytes a record of this flash takes: 8, or 12 in the long form.
std::size_t RecordSize(const FullflashImage& flash);

}  // namespace pictavo
