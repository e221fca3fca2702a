#pragma once

/// A record of the picture table as bytes. Layout: docs/formats/picture-table.md.

#include <array>

#include "codec/GPFcodec.h"
#include "core/FullflashImage.h"

namespace pictavo {

/// A phone address as stored, low byte first.
using StoredAddress = std::array<std::uint8_t, 4>;

/// The stored phone address of a file offset below kAddressableBytes.
StoredAddress StoredAddressOf(std::uint64_t fileOffset);

/// Whether a record of this flash's table can say the size and type of a picture. Fails with NotSupported
/// beyond the limits of PitRecordLayout.h, where the record would end the table.
Status CheckFitsRecord(const FullflashImage& flash, const GpfHeader& header);

/// The record, in the flash's form: 8 bytes, or 12 in the long one. Size and type
/// must fit their fields.
Bytes ComposePitRecord(const FullflashImage& flash, const GpfHeader& header, const StoredAddress& address);

}  // namespace pictavo
