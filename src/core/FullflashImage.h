#pragma once

/// A fullflash: a byte-for-byte dump of a phone's flash memory, and what its information block says of the
/// phone. Nothing in it is validated: a file that is no fullflash identifies as an SGold phone without a
/// picture table. Layout: docs/formats/fullflash.md.

#include <memory>
#include <optional>
#include <string>

#include "core/ByteSource.h"

namespace pictavo {

inline constexpr std::uint32_t kFreeSearchStartSGold = 0x40000;
inline constexpr std::uint32_t kFreeSearchStartNewSGold = 0x1000000;

/// The flash is mapped at this phone address: file offset + kFlashBase is the phone address.
inline constexpr std::uint32_t kFlashBase = 0xA0000000;

/// A phone address names only this many bytes of the flash; what a longer file holds behind them has none.
inline constexpr std::uint64_t kAddressableBytes = 0x10000000;

struct FullflashImage {
    std::shared_ptr<const ByteSource> source;  ///< null when no flash is open; opened read-only
    bool NewSGold = false;
    std::string mModel;    ///< three or four characters as stored
    std::string fw;        ///< firmware number, two hex digits
    std::string lngPack;   ///< three characters as stored
    std::string ManufN;    ///< up to sixteen characters, without the zero bytes that fill the field
    std::string platform;  ///< "SGold" or "New-SGold"
    std::string PITadr;    ///< position of the picture table as shown: hex, seven digits only on New-SGold
    int picnum = 0;        ///< number of the last picture; set with the rows, see PictureTable::endMet

    /// File offset of the picture table; nothing when the file ends before the pointer that leads to it. Kept
    /// beside PITadr because HexToNumber would read a short PITadr as a signed 16-bit number.
    std::optional<std::uint32_t> pitOffset;

    /// File offset at which the search for free flash starts. Moved when a patch that uses a place is
    /// written.
    std::uint64_t FreeSearchOffset = kFreeSearchStartSGold;

    bool IsOpen() const { return source != nullptr; }

    /// True for the models that store twelve bytes a picture record: New-SGold phones whose model begins with
    /// "EL71" or "E71".
    bool HasLongRecords() const;

    bool operator==(const FullflashImage&) const = default;
};

/// Opens the file read-only and identifies the phone. `picnum` is left to the reading of the table. Fails
/// with FileMissing when the file cannot be opened and with ReadFailed when the system fails a read.
Result<FullflashImage> OpenFullflashImage(const std::filesystem::path& path);

/// Identifies the phone of a flash that is open already.
Result<FullflashImage> IdentifyFullflash(std::shared_ptr<const ByteSource> source);

}  // namespace pictavo
