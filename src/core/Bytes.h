#pragma once

/// The one byte type of the program, and numbers read from and written to bytes by shifts.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace pictavo {

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;
using MutableByteView = std::span<std::uint8_t>;

/// The first two, or four, bytes of `bytes` as a number. `bytes` must hold that many.
constexpr std::uint16_t LittleEndian16(ByteView bytes) {
    return static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
}

constexpr std::uint32_t LittleEndian32(ByteView bytes) {
    return LittleEndian16(bytes) | static_cast<std::uint32_t>(LittleEndian16(bytes.subspan(2))) << 16;
}

constexpr std::uint16_t BigEndian16(ByteView bytes) {
    return static_cast<std::uint16_t>(bytes[0] << 8 | bytes[1]);
}

constexpr std::uint32_t BigEndian32(ByteView bytes) {
    return static_cast<std::uint32_t>(BigEndian16(bytes)) << 16 | BigEndian16(bytes.subspan(2));
}

/// Writes `value` at the start of `into`, low byte first. `into` must have room for it.
constexpr void PutLittleEndian16(MutableByteView into, std::uint16_t value) {
    into[0] = static_cast<std::uint8_t>(value & 0xFF);
    into[1] = static_cast<std::uint8_t>(value >> 8);
}

constexpr void PutLittleEndian32(MutableByteView into, std::uint32_t value) {
    PutLittleEndian16(into, static_cast<std::uint16_t>(value & 0xFFFF));
    PutLittleEndian16(into.subspan(2), static_cast<std::uint16_t>(value >> 16));
}

/// The characters of a text as bytes, without a terminating zero; valid as long as the text is.
inline ByteView AsBytes(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

/// Bytes as a text of one character per byte; valid as long as the bytes are.
inline std::string_view AsText(ByteView bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

}  // namespace pictavo
