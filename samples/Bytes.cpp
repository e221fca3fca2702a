#include "samples/Bytes.h"

namespace pictavo::samples {

void AppendBytes(Bytes& bytes, ByteView more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

void AppendText(Bytes& bytes, std::string_view text) {
    for (const char letter : text) bytes.push_back(static_cast<std::uint8_t>(letter));
}

void AppendLittle16(Bytes& bytes, std::uint32_t value) {
    bytes.push_back(LowByte(value));
    bytes.push_back(LowByte(value >> 8));
}

void AppendLittle32(Bytes& bytes, std::uint32_t value) {
    AppendLittle16(bytes, value);
    AppendLittle16(bytes, value >> 16);
}

void AppendBig32(Bytes& bytes, std::uint32_t value) {
    for (const int shift : {24, 16, 8, 0}) bytes.push_back(LowByte(value >> shift));
}

}  // namespace pictavo::samples
