#include "shell/SourceDevice.h"

namespace pictavo {

SourceDevice::SourceDevice(const ByteSource& source) : source_(source) {
    QIODevice::open(ReadOnly | Unbuffered);
}

bool SourceDevice::seek(qint64 position) {
    if (position < 0 || position > size() || !QIODevice::seek(position)) return false;
    position_ = static_cast<std::uint64_t>(position);
    return true;
}

qint64 SourceDevice::readData(char* into, qint64 most) {
    const MutableByteView bytes(reinterpret_cast<std::uint8_t*>(into), static_cast<std::size_t>(most));
    const auto count = source_.ReadAt(position_, bytes);
    if (!count) return -1;
    position_ += *count;
    return static_cast<qint64>(*count);
}

}  // namespace pictavo
