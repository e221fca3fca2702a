/// Identifying a flash and reading its picture table. The rows must be those of the plain reader, and so must
/// be the end: the first invalid record, or the last one that there can be.

#include "Holds.h"
#include "Input.h"
#include "PlainTable.h"

namespace pictavo::fuzz {
namespace {

constexpr std::uint64_t kInformationBlock = 0x8FC50;
constexpr std::uint64_t kDescriptorPointer = 0x8FD08;
constexpr std::uint64_t kShortestFlash = 0x8FD00;

/// The input's next bytes; or, so that a short input can fill a table, a few of them over and over.
Bytes Piece(Input& input, bool isRepeated) {
    const std::size_t length = input.Number16();
    if (!isRepeated) return input.Take(length);
    const Bytes pattern = input.Take(1 + input.Byte() % 24U);
    Bytes piece;
    while (!pattern.empty() && piece.size() < length)
        piece.insert(piece.end(), pattern.begin(), pattern.end());
    return piece;
}

/// Size, information block, and pieces at offsets of the input's choice; an offset is within 64 KiB of the
/// descriptor when its kind says so.
std::shared_ptr<const SparseFlash> MakeFlash(Input& input) {
    auto flash = std::make_shared<SparseFlash>(kShortestFlash + input.Number32() % 0x2000000);
    const std::uint32_t descriptor = input.Number32();
    Bytes pointer(4);
    PutLittleEndian32(pointer, descriptor);
    flash->Put(kInformationBlock, input.Take(0x40));
    flash->Put(kDescriptorPointer, pointer);
    while (!input.IsUsedUp()) {
        const std::uint8_t kind = input.Byte();
        const bool isNear = kind % 2 != 0;
        const std::uint64_t offset =
            isNear ? (descriptor & 0x0FFFFFFF) + std::uint64_t{input.Number16()} - 0x40 : input.Number32();
        flash->Put(offset & 0x0FFFFFFF, Piece(input, (kind & 2) != 0));
    }
    return flash;
}

void CheckPhone(const FullflashImage& flash, const plain::Phone& expected) {
    Holds(flash.NewSGold == expected.isNew, "the platform is that of the plain reader");
    Holds(flash.HasLongRecords() == expected.hasLongRecords, "the records' form is that of the plain reader");
    Holds(flash.pitOffset.has_value() == expected.table.has_value() &&
              (!expected.table || *flash.pitOffset == *expected.table),
          "the table begins where the plain reader finds it");
}

/// Of the first rows, and of some of the many that may follow: texts take time.
void CheckColumns(const std::vector<PictureRecord>& rows) {
    for (std::size_t i = 0; i < rows.size(); i += i < 8 ? 1 : 97) {
        std::string columns;
        for (const Column column : kColumns) columns += ColumnText(rows[i], column) + " ";
        Holds(columns == plain::ColumnsOf(rows[i]), "the columns say what the row holds");
    }
}

void CheckTable(const PictureTable& table, const PictureTable& expected) {
    Holds(table.rows == expected.rows, "the rows are those of the plain reader");
    Holds(table.endMet == expected.endMet, "the table ends as the plain reader says");
    CheckColumns(table.rows);
}

void Run(Input input) {
    const auto stored = MakeFlash(input);
    const auto flash = IdentifyFullflash(stored);
    Holds(flash.has_value(), "what is in memory can be identified");
    const plain::Phone phone = plain::PhoneOf(*stored);
    CheckPhone(*flash, phone);
    const auto table = ReadPictureTable(*flash);
    Holds(table.has_value(), "the table of what is in memory can be read");
    CheckTable(*table, plain::TableOf(*stored, phone));
}

}  // namespace
}  // namespace pictavo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    pictavo::fuzz::Run({data, size});
    return 0;
}
