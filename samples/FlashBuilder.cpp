#include "samples/FlashBuilder.h"

#include <algorithm>
#include <utility>

#include "samples/CodeLikeBytes.h"
#include "samples/PictureEncoders.h"
#include "samples/WholeFile.h"

namespace pictavo::samples {

namespace {

constexpr std::uint64_t kMarkerPlace = 31;
constexpr std::uint64_t kPointerPlacePlace = 48;
constexpr std::uint64_t kPointerBack = 44;
constexpr std::uint64_t kSGoldPitPlace = 28;
constexpr std::uint64_t kWritePiece = 1U << 20;

std::string DefaultModel(FlashKind kind) {
    switch (kind) {
        case FlashKind::SGold:
            return "T55";
        case FlashKind::NewSGold:
            return "T75";
        case FlashKind::NewSGoldE71:
            return "E71";
        case FlashKind::NewSGoldEL71:
            return "EL71";
    }
    return {};
}

Bytes PaddedText(std::string_view text, std::size_t length) {
    Bytes bytes;
    AppendText(bytes, text.substr(0, length));
    bytes.resize(length, 0);
    return bytes;
}

std::uint64_t RoundedUp(std::uint64_t offset, std::uint64_t step) {
    return (offset + step - 1) / step * step;
}

void CopyCode(std::uint64_t seed, std::uint64_t start, std::span<std::uint8_t> target) {
    while (!target.empty()) {
        const auto block = CodeLikeBlock(seed, start / kCodeBlockLength);
        const auto part = std::span(block).subspan(start % kCodeBlockLength);
        const std::size_t length = std::min(part.size(), target.size());
        std::copy_n(part.begin(), length, target.begin());
        target = target.subspan(length);
        start += length;
    }
}

}  // namespace

FlashBuilder::FlashBuilder(FlashKind kind) : kind_(kind), model_(DefaultModel(kind)) {}

FlashBuilder& FlashBuilder::Size(std::uint64_t bytes) {
    size_ = bytes;
    return *this;
}

FlashBuilder& FlashBuilder::Firmware(std::uint8_t number) {
    firmware_ = number;
    return *this;
}

FlashBuilder& FlashBuilder::LanguagePack(std::string_view text) {
    languagePack_ = text;
    return *this;
}

FlashBuilder& FlashBuilder::Model(std::string_view text) {
    model_ = text;
    return *this;
}

FlashBuilder& FlashBuilder::Manufacturer(std::string_view text) {
    manufacturer_ = text;
    return *this;
}

FlashBuilder& FlashBuilder::DescriptorAt(std::uint64_t offset) {
    descriptor_ = offset;
    return *this;
}

FlashBuilder& FlashBuilder::PitAt(std::uint64_t offset) {
    pit_ = offset;
    return *this;
}

FlashBuilder& FlashBuilder::PointerPlace(std::uint8_t place) {
    pointerPlace_ = place;
    return *this;
}

FlashBuilder& FlashBuilder::AddressBase(std::uint32_t base) {
    addressBase_ = base;
    return *this;
}

FlashBuilder& FlashBuilder::PicturesAt(std::uint64_t offset) {
    next_ = offset;
    return *this;
}

FlashBuilder& FlashBuilder::Align(std::uint64_t step) {
    step_ = step;
    return *this;
}

FlashBuilder& FlashBuilder::AddPicture(int width, int height, std::uint8_t typeCode, Bytes bytes) {
    const std::uint64_t offset = next_;
    next_ = RoundedUp(offset + bytes.size(), step_);
    return AddPictureAt(offset, width, height, typeCode, std::move(bytes));
}

FlashBuilder& FlashBuilder::AddPictureAt(std::uint64_t offset, int width, int height, std::uint8_t typeCode,
                                         Bytes bytes) {
    records_.push_back(Record(offset, width, height, typeCode));
    pictures_.push_back(BytesPiece(offset, std::move(bytes)));
    return *this;
}

FlashBuilder& FlashBuilder::AddDrawing(const Drawing& drawing, std::uint8_t typeCode) {
    return AddPicture(drawing.width, drawing.height, typeCode, EncodeForPhone(drawing, typeCode));
}

FlashBuilder& FlashBuilder::AddRecord(Bytes record) {
    records_.push_back(std::move(record));
    pictures_.push_back(BytesPiece(0, {}));
    return *this;
}

FlashBuilder& FlashBuilder::EndTable(bool wanted) {
    endTable_ = wanted;
    return *this;
}

FlashBuilder& FlashBuilder::FillWithCode(std::uint64_t offset, std::uint64_t length, std::uint64_t seed) {
    ground_.push_back({Piece::Kind::Code, offset, length, {}, seed});
    return *this;
}

FlashBuilder& FlashBuilder::Erase(std::uint64_t offset, std::uint64_t length) {
    overlay_.push_back({Piece::Kind::Erased, offset, length, {}, 0});
    return *this;
}

FlashBuilder& FlashBuilder::Put(std::uint64_t offset, Bytes bytes) {
    overlay_.push_back(BytesPiece(offset, std::move(bytes)));
    return *this;
}

std::uint64_t FlashBuilder::PitOffset() const {
    return kind_ == FlashKind::SGold ? descriptor_ + kSGoldPitPlace : pit_;
}

std::uint64_t FlashBuilder::RecordOffset(std::size_t number) const {
    std::uint64_t offset = PitOffset();
    for (std::size_t i = 0; i < number; ++i) offset += records_[i].size();
    return offset;
}

FlashBuilder::Piece FlashBuilder::BytesPiece(std::uint64_t offset, Bytes bytes) {
    const std::uint64_t length = bytes.size();
    return {Piece::Kind::Stored, offset, length, std::move(bytes), 0};
}

Bytes FlashBuilder::AddressBytes(std::uint64_t offset) const {
    Bytes bytes;
    AppendLittle32(bytes, addressBase_ + static_cast<std::uint32_t>(offset));
    return bytes;
}

Bytes FlashBuilder::Record(std::uint64_t offset, int width, int height, std::uint8_t typeCode) const {
    const auto across = static_cast<std::uint32_t>(width), down = static_cast<std::uint32_t>(height);
    Bytes record{LowByte(across), LowByte(down), typeCode, 0};
    if (HasLongRecords(kind_)) {
        record = {
            LowByte(across), LowByte(across >> 8), LowByte(down), LowByte(down >> 8), typeCode, 0, 0, 0};
    }
    AppendBytes(record, AddressBytes(offset));
    return record;
}

Bytes FlashBuilder::EndRecord() const {
    Bytes record(RecordLength(), 0xFF);
    if (kind_ == FlashKind::SGold && records_.empty()) record[kMarkerPlace - kSGoldPitPlace] = 0;
    return record;
}

Bytes FlashBuilder::Table() const {
    Bytes table;
    for (const Bytes& record : records_) AppendBytes(table, record);
    if (endTable_) AppendBytes(table, EndRecord());
    return table;
}

void FlashBuilder::AppendDescriptor(std::vector<Piece>& pieces) const {
    const bool isNew = kind_ != FlashKind::SGold;
    pieces.push_back(BytesPiece(kDescriptorPointerOffset, AddressBytes(descriptor_)));
    pieces.push_back(BytesPiece(descriptor_ + kMarkerPlace, {static_cast<std::uint8_t>(isNew ? 1 : 0)}));
    if (!isNew) return;
    pieces.push_back(BytesPiece(descriptor_ + kPointerPlacePlace, {pointerPlace_}));
    pieces.push_back(BytesPiece(descriptor_ + pointerPlace_ - kPointerBack, AddressBytes(pit_)));
}

std::vector<FlashBuilder::Piece> FlashBuilder::HousePieces() const {
    std::vector<Piece> pieces;
    pieces.push_back(BytesPiece(kFirmwareOffset, {firmware_}));
    pieces.push_back(BytesPiece(kLanguagePackOffset, PaddedText(languagePack_, 3)));
    pieces.push_back(BytesPiece(kModelOffset, PaddedText(model_, 4)));
    pieces.push_back(BytesPiece(kManufacturerOffset, PaddedText(manufacturer_, 16)));
    AppendDescriptor(pieces);
    pieces.push_back(BytesPiece(PitOffset(), Table()));
    return pieces;
}

/// Lays the part of `piece` that falls into the window over it; `start` is the window's offset in the flash.
void FlashBuilder::Render(const Piece& piece, std::uint64_t start, std::span<std::uint8_t> window) {
    const std::uint64_t from = std::max(start, piece.offset);
    const std::uint64_t to = std::min(start + window.size(), piece.offset + piece.length);
    if (from >= to) return;
    const auto target = window.subspan(from - start, to - from);
    switch (piece.kind) {
        case Piece::Kind::Stored:
            std::ranges::copy(ByteView(piece.bytes).subspan(from - piece.offset, to - from), target.begin());
            break;
        case Piece::Kind::Erased:
            std::ranges::fill(target, std::uint8_t{0xFF});
            break;
        case Piece::Kind::Code:
            CopyCode(piece.seed, from, target);
            break;
    }
}

void FlashBuilder::RenderWindow(const std::vector<Piece>& house, std::uint64_t start,
                                std::span<std::uint8_t> window) const {
    std::ranges::fill(window, std::uint8_t{0xFF});
    for (const auto* pieces : {&ground_, &pictures_, &house, &overlay_}) {
        for (const Piece& piece : *pieces) Render(piece, start, window);
    }
}

Bytes FlashBuilder::Build() const {
    Bytes flash(size_);
    RenderWindow(HousePieces(), 0, flash);
    return flash;
}

Outcome FlashBuilder::WriteTo(const std::filesystem::path& path) const {
    WholeFile file(path);
    const std::vector<Piece> house = HousePieces();
    Bytes window;
    for (std::uint64_t start = 0; start < size_; start += kWritePiece) {
        window.resize(std::min(kWritePiece, size_ - start));
        RenderWindow(house, start, window);
        file.Write(window);
    }
    return file.Finish();
}

}  // namespace pictavo::samples
