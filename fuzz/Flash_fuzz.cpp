/// Identifying a flash and reading its picture table. The table's records must be those that stand in the
/// flash, each behind the other, up to the first invalid one.

#include "Holds.h"
#include "Input.h"
#include "SparseFlash.h"
#include "core/PictureTable.h"
#include "patch/PitRecord.h"

namespace pictavo::fuzz {
namespace {

constexpr std::uint64_t kInformationBlock = 0x8FC50;
constexpr std::uint64_t kDescriptorPointer = 0x8FD08;
constexpr std::uint64_t kShortestFlash = 0x8FD00;

/// Size, information block, and pieces at offsets of the input's choice; an offset is within 64 KiB of the
/// descriptor when its flag says so.
std::shared_ptr<const SparseFlash> MakeFlash(Input& input) {
    auto flash = std::make_shared<SparseFlash>(kShortestFlash + input.Number32() % 0x2000000);
    const std::uint32_t descriptor = input.Number32();
    Bytes pointer(4);
    PutLittleEndian32(pointer, descriptor);
    flash->Put(kInformationBlock, input.Take(0x40));
    flash->Put(kDescriptorPointer, pointer);
    while (!input.IsUsedUp()) {
        const bool isNear = input.Flag();
        const std::uint64_t offset =
            isNear ? (descriptor & 0x0FFFFFFF) + std::uint64_t{input.Number16()} - 0x40 : input.Number32();
        const std::size_t length = input.Number16();
        flash->Put(offset & 0x0FFFFFFF, input.Take(length));
    }
    return flash;
}

/// The record's size, type and address as they stand in the flash.
void CheckRow(const FullflashImage& flash, const SparseFlash& stored, const PictureRecord& row) {
    const GpfHeader header{static_cast<std::uint16_t>(row.width), static_cast<std::uint16_t>(row.height),
                           row.typeCode, 0, true};
    const Bytes record = ComposePitRecord(flash, header, StoredAddressOf(row.picOffset));
    const std::size_t addressAt = record.size() - 4;
    for (std::size_t i = 0; i < addressAt; ++i) {
        const bool isUnused = flash.HasLongRecords() && (i == 6 || i == 7);
        Holds(isUnused || record[i] == stored.At(row.pitOffset + i), "a row says what its record says");
    }
    std::uint32_t address = 0;
    for (std::size_t i = 0; i < 4; ++i)
        address |= std::uint32_t{stored.At(row.pitOffset + addressAt + i)} << (8 * i);
    Holds(row.picOffset == (address & 0x0FFFFFFF), "a row's data lie where its record says");
}

void CheckTable(const FullflashImage& flash, const SparseFlash& stored, const PictureTable& table) {
    const std::size_t most = flash.HasLongRecords() ? 2501 : 2001;
    Holds(table.rows.size() <= most, "a table holds no more rows than there can be");
    Holds(table.endMet == (table.rows.size() < most), "a table that is not full ends");
    Holds(flash.pitOffset.has_value() || table.rows.empty(), "no table, no rows");
    for (std::size_t i = 0; i < table.rows.size(); ++i) {
        const PictureRecord& row = table.rows[i];
        Holds(row.number == static_cast<int>(i), "rows are counted from 0");
        Holds(row.pitOffset == *flash.pitOffset + i * RecordSize(flash), "records lie one behind the other");
        CheckRow(flash, stored, row);
        for (const Column column : kColumns)
            Holds(!ColumnText(row, column).empty(), "each column has a text");
    }
}

void Run(Input input) {
    const auto stored = MakeFlash(input);
    const auto flash = IdentifyFullflash(stored);
    Holds(flash.has_value(), "what is in memory can be identified");
    const auto table = ReadPictureTable(*flash);
    Holds(table.has_value(), "the table of what is in memory can be read");
    CheckTable(*flash, *stored, *table);
}

}  // namespace
}  // namespace pictavo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    pictavo::fuzz::Run({data, size});
    return 0;
}
