#pragma once

/// Putting numbers and text behind one another, for everything that the sample maker writes.

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace pictavo::samples {

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;

/// The low eight bits of `value`.
constexpr std::uint8_t LowByte(std::uint32_t value) {
    return static_cast<std::uint8_t>(value & 0xFF);
}

void AppendBytes(Bytes& bytes, ByteView more);
void AppendText(Bytes& bytes, std::string_view text);

void AppendLittle16(Bytes& bytes, std::uint32_t value);
void AppendLittle32(Bytes& bytes, std::uint32_t value);
void AppendBig32(Bytes& bytes, std::uint32_t value);

}  // namespace pictavo::samples
