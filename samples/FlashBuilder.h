#pragma once

/// Builds a fullflash dump, whole or for a test as small and as broken as wanted:
///
///     FlashBuilder flash(FlashKind::NewSGold);
///     flash.Model("T75").AddDrawing(DrawIcon(16, 16, 1), 0x85).AddRecord({8, 8, 5, 0, 0, 0, 0, 0xA0});
///     flash.WriteTo(path);
///
/// What a flash consists of, the later over the earlier: erased bytes (0xFF), code-like bytes, pictures, the
/// information block with the descriptor, the picture table, and at last Erase and Put in the order of their
/// calls. What reaches past the size is cut off, as in a dump that ends early.
///
/// Offsets count from the flash's first byte; the phone sees that byte at the address 0xA0000000.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "samples/Bytes.h"
#include "samples/Drawing.h"
#include "samples/Outcome.h"

namespace pictavo::samples {

enum class FlashKind {
    SGold,        ///< the table lies inside the descriptor; records of 8 bytes
    NewSGold,     ///< records of 8 bytes
    NewSGoldE71,  ///< records of 12 bytes
    NewSGoldEL71  ///< records of 12 bytes
};

inline constexpr std::uint64_t kFirmwareOffset = 0x8FC50;
inline constexpr std::uint64_t kLanguagePackOffset = 0x8FC60;
inline constexpr std::uint64_t kModelOffset = 0x8FC70;
inline constexpr std::uint64_t kManufacturerOffset = 0x8FC80;
inline constexpr std::uint64_t kDescriptorPointerOffset = 0x8FD08;
inline constexpr std::uint32_t kFlashAddress = 0xA0000000;

constexpr bool HasLongRecords(FlashKind kind) {
    return kind == FlashKind::NewSGoldE71 || kind == FlashKind::NewSGoldEL71;
}

class FlashBuilder {
  public:
    /// 1 MiB, firmware 2E, language pack lg1, manufacturer SIEMENS, the model T55, T75, E71 or EL71, pictures
    /// from 0xC0000 on in steps of 16 bytes, an end behind the table.
    explicit FlashBuilder(FlashKind kind);

    FlashBuilder& Size(std::uint64_t bytes);
    FlashBuilder& Firmware(std::uint8_t number);

    /// Stored as given, filled up with 0x00; at most 3, 4 and 16 characters. The model has no influence on
    /// the length of the records, which the kind decides.
    FlashBuilder& LanguagePack(std::string_view text);
    FlashBuilder& Model(std::string_view text);
    FlashBuilder& Manufacturer(std::string_view text);

    /// Where the platform descriptor lies: 0x90100 when not said.
    FlashBuilder& DescriptorAt(std::uint64_t offset);

    /// Where the table lies: 0xA0000 when not said. Without effect on SGold, whose table begins 28 bytes into
    /// the descriptor.
    FlashBuilder& PitAt(std::uint64_t offset);

    /// New-SGold: the byte that places the pointer to the table, which then lies at descriptor - 44 + place.
    /// 104 when not said; 72..75 and 89..92 would lay the pointer over the platform marker or over this byte.
    FlashBuilder& PointerPlace(std::uint8_t place);

    /// The top four bits of all stored addresses: 0xA0000000 when not said.
    FlashBuilder& AddressBase(std::uint32_t base);

    /// Where the next picture goes, and the step to which the place behind each picture is rounded up (1 or
    /// more).
    FlashBuilder& PicturesAt(std::uint64_t offset);
    FlashBuilder& Align(std::uint64_t step);

    /// A record and, at the next place, the picture's bytes. Records of 8 bytes hold the low bytes of width
    /// and height.
    FlashBuilder& AddPicture(int width, int height, std::uint8_t typeCode, Bytes bytes);

    /// The same at a place of its own; the next place stays as it is.
    FlashBuilder& AddPictureAt(std::uint64_t offset, int width, int height, std::uint8_t typeCode,
                               Bytes bytes);

    /// AddPicture of EncodeForPhone(drawing, typeCode).
    FlashBuilder& AddDrawing(const Drawing& drawing, std::uint8_t typeCode);

    /// A record as given, of any length; it counts as a picture at offset 0 without bytes. On SGold the
    /// second type byte (offset 3) of the first record is the platform marker too: there another value than 0
    /// makes the flash a New-SGold one.
    FlashBuilder& AddRecord(Bytes record);

    /// Whether a record of 0xFF bytes stands behind the last one (true when not said). Without it, what
    /// stands there stays there: 0xFF bytes too, unless something else was put in their place. The end of an
    /// SGold table without records has the second type byte 0x00, so that the flash stays an SGold one.
    FlashBuilder& EndTable(bool wanted);

    /// Code-like bytes under everything else.
    FlashBuilder& FillWithCode(std::uint64_t offset, std::uint64_t length, std::uint64_t seed);

    FlashBuilder& Erase(std::uint64_t offset, std::uint64_t length);
    FlashBuilder& Put(std::uint64_t offset, Bytes bytes);

    FlashKind Kind() const { return kind_; }
    std::uint64_t Size() const { return size_; }
    std::uint64_t DescriptorOffset() const { return descriptor_; }
    std::uint64_t PitOffset() const;
    std::uint64_t RecordLength() const { return HasLongRecords(kind_) ? 12 : 8; }

    std::size_t PictureCount() const { return records_.size(); }

    /// Of picture `number`, which is below PictureCount(). The length is that of the stored bytes.
    std::uint64_t RecordOffset(std::size_t number) const;
    std::uint64_t PictureOffset(std::size_t number) const { return pictures_[number].offset; }
    std::uint64_t PictureLength(std::size_t number) const { return pictures_[number].length; }

    /// The place that the next AddPicture takes.
    std::uint64_t NextPictureOffset() const { return next_; }

    /// The whole flash in memory.
    Bytes Build() const;

    /// Writes the flash in pieces, so that it never stands in memory as a whole. Whole or not at all: a
    /// failure leaves an existing file of that name as it was.
    Outcome WriteTo(const std::filesystem::path& path) const;

  private:
    struct Piece {
        enum class Kind { Stored, Erased, Code };
        Kind kind = Kind::Stored;
        std::uint64_t offset = 0;
        std::uint64_t length = 0;
        Bytes bytes;
        std::uint64_t seed = 0;
    };

    static Piece BytesPiece(std::uint64_t offset, Bytes bytes);
    static void Render(const Piece& piece, std::uint64_t start, std::span<std::uint8_t> window);
    void RenderWindow(const std::vector<Piece>& house, std::uint64_t start,
                      std::span<std::uint8_t> window) const;

    /// The information block, the descriptor and the table.
    std::vector<Piece> HousePieces() const;
    void AppendDescriptor(std::vector<Piece>& pieces) const;
    Bytes Table() const;
    Bytes EndRecord() const;
    Bytes Record(std::uint64_t offset, int width, int height, std::uint8_t typeCode) const;
    Bytes AddressBytes(std::uint64_t offset) const;

    FlashKind kind_;
    std::uint64_t size_ = 1U << 20;
    std::uint8_t firmware_ = 0x2E;
    std::string languagePack_ = "lg1";
    std::string model_;
    std::string manufacturer_ = "SIEMENS";
    std::uint64_t descriptor_ = 0x90100;
    std::uint64_t pit_ = 0xA0000;
    std::uint8_t pointerPlace_ = 104;
    std::uint32_t addressBase_ = kFlashAddress;
    std::uint64_t next_ = 0xC0000;
    std::uint64_t step_ = 16;
    bool endTable_ = true;
    std::vector<Bytes> records_;
    std::vector<Piece> pictures_;
    std::vector<Piece> ground_;
    std::vector<Piece> overlay_;
};

}  // namespace pictavo::samples
