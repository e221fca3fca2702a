#pragma once

/// Errors are values: what went wrong, in which file, where, and why. They are passed up unchanged until a
/// front (a box of the window, the error line of the command line) turns them into text.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <tl/expected.hpp>
#include <utility>

namespace pictavo {

enum class ErrorKind {
    FileMissing,       ///< the file cannot be opened for reading, or is no regular file
    ReadFailed,        ///< the system failed a read, or the file became shorter while it was read
    WriteFailed,       ///< a file or folder cannot be created, written or renamed
    FileExists,        ///< an output of that name is there already and was to be kept
    OutputIsInput,     ///< an output path names the very file that is read
    UnknownFile,       ///< the file is not of the kind that was asked for
    NoGpf,             ///< the file is no GPF or GPF2 file
    Truncated,         ///< the file ends before what its header promises
    Malformed,         ///< a field of the file, or a text, does not hold what it must
    NotSupported,      ///< the format cannot hold this picture
    OneBitCompressed,  ///< compressed 1-bit pictures are not written
    TooLarge,          ///< the picture does not fit into the Raster, or its file into memory
    PngTooLarge,       ///< a new PNG file does not fit into the place of the old one
    BadBitDepth,       ///< the type code names no bit depth
    ConverterMissing,  ///< the converter that the settings name does not exist
    ConverterFailed,   ///< the converter ended without writing its output
    NoFreeMemory,      ///< the flash holds no free place of the length needed
    Conflict,          ///< two sections of one patch would write the same bytes
    BlockTooLarge,     ///< a rebuilt picture block passes the start of the old last picture
    EmptyBlock,        ///< the table or picture block would hold nothing
    SourceMissing,     ///< no source file exists for a picture
    NoSuchPicture,     ///< the flash has no picture of that number, or no picture is shown
    Overflow,          ///< a number, a line or a count is beyond its limit
    Stopped,           ///< the user stopped the work
};

struct Error {
    ErrorKind kind = ErrorKind::ReadFailed;
    std::filesystem::path path;           ///< the file concerned; empty when there is none
    std::optional<std::uint64_t> offset;  ///< place in that file, in bytes
    std::string detail;                   ///< the reason, as the rest of a sentence, in English

    bool operator==(const Error&) const = default;
};

using Failure = tl::unexpected<Error>;

/// A value of type T, or the Error that prevented it. The compiler refuses to drop one.
template <typename T>
class [[nodiscard]] Result : public tl::expected<T, Error> {
  public:
    using tl::expected<T, Error>::expected;
};

/// A Result without a value.
using Status = Result<void>;

inline Failure Fail(ErrorKind kind, std::string detail) {
    return Failure(Error{kind, {}, std::nullopt, std::move(detail)});
}

inline Failure Fail(ErrorKind kind, std::filesystem::path path, std::string detail) {
    return Failure(Error{kind, std::move(path), std::nullopt, std::move(detail)});
}

inline Failure Fail(ErrorKind kind, std::filesystem::path path, std::uint64_t offset, std::string detail) {
    return Failure(Error{kind, std::move(path), offset, std::move(detail)});
}

/// `error` with its path filled in, for a caller that knows the file where the callee did not.
inline Error WithPath(Error error, const std::filesystem::path& path) {
    if (error.path.empty()) error.path = path;
    return error;
}

}  // namespace pictavo

// NOLINTBEGIN(bugprone-macro-parentheses): a declaration cannot stand in parentheses.
#define PICTAVO_CONCAT_(a, b) a##b
#define PICTAVO_CONCAT(a, b) PICTAVO_CONCAT_(a, b)

/// PICTAVO_TRY(Call());               returns the call's error from the function around it, else goes on.
/// PICTAVO_TRY(auto value, Call());   the same, and declares `value` with the call's value.
#define PICTAVO_TRY(...) \
    PICTAVO_TRY_SELECT_(__VA_ARGS__, PICTAVO_TRY_VALUE_, PICTAVO_TRY_STATUS_)(__VA_ARGS__)
#define PICTAVO_TRY_SELECT_(first, second, chosen, ...) chosen
#define PICTAVO_TRY_STATUS_(call)                                                         \
    do {                                                                                  \
        if (auto tried = (call); !tried) return tl::unexpected(std::move(tried).error()); \
    } while (false)
#define PICTAVO_TRY_VALUE_(declaration, call) \
    PICTAVO_TRY_NAMED_(declaration, call, PICTAVO_CONCAT(tried, __LINE__))
#define PICTAVO_TRY_NAMED_(declaration, call, name)              \
    auto name = (call);                                          \
    if (!(name)) return tl::unexpected(std::move(name).error()); \
    declaration = std::move(name).value()
// NOLINTEND(bugprone-macro-parentheses)
