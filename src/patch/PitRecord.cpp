#include "patch/PitRecord.h"

#include <algorithm>
#include <cassert>

#include "core/BasicCalculations_Tarsk.h"
#include "core/PitRecordLayout.h"

namespace pictavo {

namespace {

[[maybe_unused]] bool FitsFields(const PitRecordLayout& layout, const GpfHeader& header) {
    const int mostSize = layout.sizeBytes == 1 ? 0xFF : 0xFFFF;
    return std::max(header.width, header.height) <= mostSize && header.type <= 0xFF;
}

/// A width or height, low byte first.
void PutSize(MutableByteView into, const PitRecordLayout& layout, std::uint16_t size) {
    if (layout.sizeBytes == 1)
        into[0] = static_cast<std::uint8_t>(size);
    else
        PutLittleEndian16(into, size);
}

}  // namespace

StoredAddress StoredAddressOf(std::uint64_t fileOffset) {
    assert(fileOffset < kAddressableBytes);
    StoredAddress address{};
    PutLittleEndian32(address, kFlashBase + static_cast<std::uint32_t>(fileOffset));
    return address;
}

Status CheckFitsRecord(const FullflashImage& flash, const GpfHeader& header) {
    const PitRecordLayout& layout = RecordLayoutOf(flash);
    if (FitsLimits(layout, header.width, header.height, header.type)) return {};
    if (header.type > kLastTypeCode)
        return Fail(ErrorKind::NotSupported, "type code " + UpperHex(header.type) +
                                                 " does not fit this phone's table (at most " +
                                                 UpperHex(kLastTypeCode) + ")");
    return Fail(ErrorKind::NotSupported, "a picture of " + SizeText(header.width, header.height) +
                                             " does not fit this phone's table (at most " +
                                             SizeText(layout.mostWidth, layout.mostHeight) + ")");
}

Bytes ComposePitRecord(const FullflashImage& flash, const GpfHeader& header, const StoredAddress& address) {
    const PitRecordLayout& layout = RecordLayoutOf(flash);
    assert(FitsFields(layout, header));
    Bytes record(layout.Bytes());
    const MutableByteView view(record);
    PutSize(view, layout, header.width);
    PutSize(view.subspan(layout.HeightAt()), layout, header.height);
    record[layout.TypeAt()] = static_cast<std::uint8_t>(header.type);
    std::copy(address.begin(), address.end(), view.subspan(layout.AddressAt()).begin());
    return record;
}

}  // namespace pictavo
