#pragma once

/// The lines of a text file, one at a time, whether they end with CR LF or LF.

#include <optional>
#include <string>

#include "core/ByteSource.h"

namespace pictavo {

/// What becomes of a line of more than 1 MiB.
enum class LongLines {
    Refuse,  ///< Next fails, and again when it is called again
    Cut,     ///< its first MiB counts, the rest is passed over
};

class LineReader {
  public:
    /// `source` must outlive the reader, and nothing else may read it meanwhile.
    explicit LineReader(const ByteSource& source, LongLines longLines = LongLines::Refuse)
        : source_(source), longLines_(longLines) {}

    /// The next line without its end; nothing behind the last one. Fails with ReadFailed, and where long
    /// lines are refused with Malformed, naming the line.
    Result<std::optional<std::string>> Next();

    /// Number of the line that Next gave last, counted from 1.
    std::size_t Number() const { return number_; }

    /// Offset of the first byte not read yet.
    std::uint64_t Position() const { return position_; }

  private:
    const ByteSource& source_;
    LongLines longLines_;
    std::uint64_t position_ = 0;
    std::size_t number_ = 0;
};

}  // namespace pictavo
