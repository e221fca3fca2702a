#include "core/GapSource.h"

#include <algorithm>

namespace pictavo {

namespace {

constexpr std::size_t kPiece = std::size_t{4} * 1024;

constexpr auto kErased = [] {
    std::array<std::uint8_t, kPiece> bytes{};
    bytes.fill(0xFF);
    return bytes;
}();

}  // namespace

Result<ByteView> GapSource::ViewAt(std::uint64_t offset) const {
    const auto view = source_.ViewAt(offset);
    return view ? *view : Gap(offset, view.error());
}

ByteView GapSource::Gap(std::uint64_t offset, const Error& error) const {
    const std::uint64_t piece = offset / kPiece;
    const bool isNew = unreadable_.insert(piece).second;
    if (isNew && !unreadable_.contains(piece - 1)) note_(error);
    const std::uint64_t length = std::min(kPiece - offset % kPiece, Size() - offset);
    return ByteView(kErased).first(static_cast<std::size_t>(length));
}

}  // namespace pictavo
