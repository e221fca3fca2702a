#include "patch/PitRecord.h"

#include <algorithm>

#include "core/PictureTable.h"

namespace pictavo {

namespace {

constexpr int kLargestShortSize = 255;

}  // namespace

StoredAddress StoredAddressOf(std::uint64_t fileOffset) {
    StoredAddress address{};
    PutLittleEndian32(address, kFlashBase + static_cast<std::uint32_t>(fileOffset));
    return address;
}

Status CheckFitsRecord(const FullflashImage& flash, const GpfHeader& header) {
    if (!flash.HasLongRecords() && std::max(header.width, header.height) > kLargestShortSize)
        return Fail(ErrorKind::NotSupported, "a picture of " + std::to_string(header.width) + " x " +
                                                 std::to_string(header.height) +
                                                 " does not fit this phone's table (at most 255 x 255)");
    if (header.type > 0xFF) return Fail(ErrorKind::NotSupported, "a type code of more than one byte");
    return {};
}

Bytes ComposePitRecord(const FullflashImage& flash, const GpfHeader& header, const StoredAddress& address) {
    Bytes record(RecordSize(flash));
    const MutableByteView view(record);
    if (flash.HasLongRecords()) {
        PutLittleEndian16(view, header.width);
        PutLittleEndian16(view.subspan(2), header.height);
        record[4] = static_cast<std::uint8_t>(header.type);
    } else {
        record[0] = static_cast<std::uint8_t>(header.width);
        record[1] = static_cast<std::uint8_t>(header.height);
        record[2] = static_cast<std::uint8_t>(header.type);
    }
    std::copy(address.begin(), address.end(), record.end() - static_cast<std::ptrdiff_t>(address.size()));
    return record;
}

}  // namespace pictavo
