#pragma once

/// What a PNG file begins and ends with.

#include <cstddef>
#include <string_view>

namespace pictavo {

inline constexpr std::string_view kPngSignature = "\x89PNG\r\n\x1A\n";
inline constexpr std::string_view kPngEndType = "IEND";  ///< the type of the last chunk, which holds no data
inline constexpr std::size_t kPngChecksumBytes = 4;      ///< behind the data of every chunk

}  // namespace pictavo
