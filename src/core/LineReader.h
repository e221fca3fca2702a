#pragma once

/// The lines of a text file, one at a time, whether they end with CR LF or LF.

#include <optional>
#include <string>

#include "core/ByteSource.h"

namespace pictavo {

class LineReader {
  public:
    /// `source` must outlive the reader, and nothing else may read it meanwhile.
    explicit LineReader(const ByteSource& source) : source_(source) {}

    /// The next line without its end; nothing behind the last one. Fails with ReadFailed, and with Malformed,
    /// naming the line, when more than 1 MiB stands before its LF.
    Result<std::optional<std::string>> Next();

    /// Number of the line that Next gave last, counted from 1.
    std::size_t Number() const { return number_; }

    /// Offset of the first byte not read yet.
    std::uint64_t Position() const { return position_; }

  private:
    const ByteSource& source_;
    std::uint64_t position_ = 0;
    std::size_t number_ = 0;
};

}  // namespace pictavo
