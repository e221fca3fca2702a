#include "core/Cursor.h"

#include <algorithm>

namespace pictavo {

const std::uint8_t* Cursor::TakeAcross(std::size_t length) {
    const std::uint64_t position = Position();
    std::fill_n(gathered_.begin(), length, std::uint8_t{0});
    if (health_) {
        const auto count = source_.ReadAt(position, MutableByteView(gathered_).first(length));
        if (!count) health_ = Failure(count.error());
    }
    viewStart_ = position + length;
    next_ = 0;
    const auto view = health_ ? source_.ViewAt(viewStart_) : Result<ByteView>(ByteView());
    view_ = view.value_or(ByteView());
    if (!view) health_ = Failure(view.error());
    return gathered_.data();
}

void Cursor::Skip(std::uint64_t length) {
    viewStart_ = Position() + length;
    view_ = {};
    next_ = 0;
}

}  // namespace pictavo
