#include "core/FullflashImage.h"

#include <array>

#include "core/BasicCalculations_Tarsk.h"

namespace pictavo {

namespace {

constexpr std::int64_t kFirmwareAt = 0x8FC50;
constexpr std::int64_t kLanguagePackAt = 0x8FC60;
constexpr std::int64_t kModelAt = 0x8FC70;
constexpr std::int64_t kManufacturerAt = 0x8FC80;
constexpr std::int64_t kDescriptorPointerAt = 0x8FD08;

// Positions relative to the platform descriptor.
constexpr std::int64_t kSGoldTable = 28;
constexpr std::int64_t kPlatformMarker = 31;
constexpr std::int64_t kTablePointerIndex = 48;
constexpr std::int64_t kTablePointerBase = -44;

constexpr std::size_t kOffsetDigits = 7;

/// Bytes at a position, 0x00 wherever the file has none (positions below zero included).
template <std::size_t Length>
Result<std::array<std::uint8_t, Length>> Read(const ByteSource& source, std::int64_t position) {
    std::array<std::uint8_t, Length> bytes{};
    if (position < 0) return bytes;
    PICTAVO_TRY([[maybe_unused]] const auto count,
                source.ReadAt(static_cast<std::uint64_t>(position), bytes));
    return bytes;
}

std::string WithoutTrailingNuls(std::string text) {
    while (!text.empty() && text.back() == '\0') text.pop_back();
    return text;
}

Status ReadLabels(FullflashImage& flash) {
    const ByteSource& source = *flash.source;
    PICTAVO_TRY(const auto firmware, Read<1>(source, kFirmwareAt));
    PICTAVO_TRY(const auto model, Read<4>(source, kModelAt));
    PICTAVO_TRY(const auto language, Read<3>(source, kLanguagePackAt));
    PICTAVO_TRY(const auto manufacturer, Read<16>(source, kManufacturerAt));
    flash.fw = BytesToHex(firmware, false);
    flash.mModel = AsText(model).substr(0, model.back() == 0 ? 3 : 4);
    flash.lngPack = AsText(language);
    flash.ManufN = WithoutTrailingNuls(std::string(AsText(manufacturer)));
    return {};
}

Status LocateNewSGoldTable(FullflashImage& flash, std::int64_t descriptor) {
    PICTAVO_TRY(const auto index, Read<1>(*flash.source, descriptor + kTablePointerIndex));
    PICTAVO_TRY(const auto pointer, Read<4>(*flash.source, descriptor + kTablePointerBase + index[0]));
    PICTAVO_TRY(flash.pitOffset, BytesToOffset(pointer));
    flash.PITadr = BytesToHex(pointer, true).substr(1, kOffsetDigits);
    return {};
}

void LocateSGoldTable(FullflashImage& flash, std::uint32_t descriptor) {
    flash.pitOffset = descriptor + static_cast<std::uint32_t>(kSGoldTable);
    flash.PITadr = UpperHex(*flash.pitOffset);
}

Status LocateTable(FullflashImage& flash) {
    PICTAVO_TRY(const auto pointer, Read<4>(*flash.source, kDescriptorPointerAt));
    PICTAVO_TRY(const std::uint32_t descriptor, BytesToOffset(pointer));
    PICTAVO_TRY(const auto marker, Read<1>(*flash.source, descriptor + kPlatformMarker));
    flash.NewSGold = marker[0] != 0;
    flash.platform = flash.NewSGold ? "New-SGold" : "SGold";
    flash.FreeSearchOffset = flash.NewSGold ? kFreeSearchStartNewSGold : kFreeSearchStartSGold;
    if (flash.NewSGold)
        PICTAVO_TRY(LocateNewSGoldTable(flash, descriptor));
    else
        LocateSGoldTable(flash, descriptor);
    // Without the whole pointer there is no table: what was read above are the zeros of a short file.
    if (flash.source->Size() < kDescriptorPointerAt + pointer.size()) flash.pitOffset.reset();
    return {};
}

}  // namespace

bool FullflashImage::HasLongRecords() const {
    return NewSGold && (mModel.starts_with("EL71") || mModel.starts_with("E71"));
}

Result<FullflashImage> OpenFullflashImage(const std::filesystem::path& path) {
    PICTAVO_TRY(std::unique_ptr<FileSource> source, FileSource::Open(path));
    return IdentifyFullflash(std::move(source));
}

Result<FullflashImage> IdentifyFullflash(std::shared_ptr<const ByteSource> source) {
    FullflashImage flash;
    flash.source = std::move(source);
    PICTAVO_TRY(ReadLabels(flash));
    PICTAVO_TRY(LocateTable(flash));
    return flash;
}

}  // namespace pictavo
