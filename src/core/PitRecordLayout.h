#pragma once

/// The two forms of a picture table's record, and the limits by which the table's reader knows a record from
/// what follows the table. The limits are the table's own: those of the Raster, which are those of the
/// screens, are another matter. Layout: docs/formats/picture-table.md.

#include <cstddef>

#include "core/FullflashImage.h"

namespace pictavo {

/// Positions and lengths are bytes, counted from the record's start.
struct PitRecordLayout {
    std::size_t sizeBytes;    ///< of the width, and of the height behind it
    std::size_t unusedBytes;  ///< between the type and the address
    int lastNumber;           ///< of a table's last record at most
    int mostWidth;            ///< pixels
    int mostHeight;           ///< pixels

    constexpr std::size_t HeightAt() const { return sizeBytes; }
    constexpr std::size_t TypeAt() const { return 2 * sizeBytes; }
    constexpr std::size_t AddressAt() const { return TypeAt() + kTypeBytes + unusedBytes; }
    constexpr std::size_t Bytes() const { return AddressAt() + kAddressBytes; }

    static constexpr std::size_t kTypeBytes = 2;
    static constexpr std::size_t kAddressBytes = 4;
};

inline constexpr PitRecordLayout kShortRecord{1, 0, 2000, 255, 255};
inline constexpr PitRecordLayout kLongRecord{2, 2, 2500, 240, 320};
static_assert(kShortRecord.Bytes() == 8 && kLongRecord.Bytes() == 12);

/// Of a picture in a table.
inline constexpr int kLastTypeCode = 0x8F;

/// The form of this flash's records.
const PitRecordLayout& RecordLayoutOf(const FullflashImage& flash);

/// Whether a record of this size and type is part of a table. A record that is not ends it: a picture beyond
/// these limits would take the pictures behind it out of the list.
bool FitsLimits(const PitRecordLayout& layout, int width, int height, int typeCode);

}  // namespace pictavo
