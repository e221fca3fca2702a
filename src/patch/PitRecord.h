#pragma once

/// A record of the picture table as bytes. Layout: docs/formats/picture-table.md.

#include <array>

#include "codec/GPFcodec.h"
#include "core/FullflashImage.h"

namespace pictavo {

/// A phone address as stored, low byte first.
using StoredAddress = std::array<std::uint8_t, 4>;

/// The stored phone address of a file offset.
StoredAddress StoredAddressOf(std::uint64_t fileOffset);

/// Whether this flash's records can say the size and type of a picture. Fails with NotSupported: short
/// records hold one byte of width and of height, and every record one byte of type.
Status CheckFitsRecord(const FullflashImage& flash, const GpfHeader& header);

/// The record, in the flash's form: 8 bytes, or 12 in the long one. Size and type
/// must fit their fields.
Bytes ComposePitRecord(const FullflashImage& flash, const GpfHeader& header, const StoredAddress& address);

}  // namespace pictavo
