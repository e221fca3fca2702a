#pragma once

/// A flash's phone and picture table read byte after byte, as their pages describe them:
/// docs/formats/fullflash.md and docs/formats/picture-table.md. What the product reads must be the same.

#include <array>
#include <cstdio>
#include <optional>
#include <vector>

#include "SparseFlash.h"
#include "core/PictureTable.h"

namespace pictavo::fuzz::plain {

/// As many bytes from `at` on, low byte first; those past the end are 00.
inline std::uint32_t NumberAt(const SparseFlash& flash, std::uint64_t at, int bytes) {
    std::uint32_t number = 0;
    for (int i = bytes - 1; i >= 0; --i) number = number << 8 | flash.At(at + static_cast<std::uint64_t>(i));
    return number;
}

/// Where in the file a phone address points to.
inline std::uint32_t PlaceAt(const SparseFlash& flash, std::uint64_t at) {
    return NumberAt(flash, at, 4) & 0x0FFFFFFF;
}

/// What the reading of the table depends on.
struct Phone {
    bool isNew = false;
    bool hasLongRecords = false;
    std::optional<std::uint64_t> table;  // file offset
};

inline bool IsModelOfLongRecords(const SparseFlash& flash) {
    std::string model;
    for (std::uint64_t i = 0; i < 4; ++i) model.push_back(static_cast<char>(flash.At(0x8FC70 + i)));
    return model == "EL71" || model.substr(0, 3) == "E71";
}

inline Phone PhoneOf(const SparseFlash& flash) {
    const std::uint64_t descriptor = PlaceAt(flash, 0x8FD08);
    Phone phone;
    phone.isNew = flash.At(descriptor + 31) != 0;
    phone.hasLongRecords = phone.isNew && IsModelOfLongRecords(flash);
    if (flash.Size() < 0x8FD0C) return phone;
    phone.table = phone.isNew ? PlaceAt(flash, descriptor - 44 + flash.At(descriptor + 48)) : descriptor + 28;
    return phone;
}

/// The record at `at`, whatever its size and type.
inline PictureRecord RecordAt(const SparseFlash& flash, std::uint64_t at, bool isLong) {
    PictureRecord record;
    record.pitOffset = static_cast<std::uint32_t>(at);
    if (isLong) {
        record.width = static_cast<std::int16_t>(NumberAt(flash, at, 2));
        record.height = static_cast<std::int16_t>(NumberAt(flash, at + 2, 2));
        record.typeCode = flash.At(at + 4);
        record.picOffset = PlaceAt(flash, at + 8);
    } else {
        record.width = flash.At(at);
        record.height = flash.At(at + 1);
        record.typeCode = flash.At(at + 2);
        record.picOffset = PlaceAt(flash, at + 4);
    }
    return record;
}

inline bool IsValid(const SparseFlash& flash, const PictureRecord& record, bool isLong) {
    if (record.pitOffset >= flash.Size() || flash.At(record.pitOffset + (isLong ? 5U : 3U)) != 0)
        return false;
    if (isLong && (record.width > 240 || record.height > 320)) return false;
    return record.typeCode <= 0x8F;
}

/// The table's rows, up to the first record that is not valid or the last one that there can be.
inline PictureTable TableOf(const SparseFlash& flash, const Phone& phone) {
    PictureTable table;
    table.endMet = true;
    if (!phone.table) return table;
    const int last = phone.hasLongRecords ? 2500 : 2000;
    std::uint64_t at = *phone.table;
    for (int number = 0; number <= last; ++number) {
        PictureRecord record = RecordAt(flash, at, phone.hasLongRecords);
        if (!IsValid(flash, record, phone.hasLongRecords)) return table;
        record.number = number;
        table.rows.push_back(record);
        at += phone.hasLongRecords ? 12 : 8;
    }
    table.endMet = false;
    return table;
}

/// The columns of the picture list, one behind the other.
inline std::string ColumnsOf(const PictureRecord& record) {
    std::array<char, 100> text{};
    const int length =
        std::snprintf(text.data(), text.size(), "%04d %03X %d %d %02X00 %X %07X ", record.number,
                      static_cast<unsigned>(record.number), record.width, record.height,
                      unsigned{record.typeCode}, record.pitOffset, record.picOffset);
    return std::string(text.data(), static_cast<std::size_t>(length));
}

}  // namespace pictavo::fuzz::plain
