#pragma once

/// GPF and GPF2, the program's own single-picture files: a 32-byte header, the picture's bytes as the phone
/// stores them, zero padding to a multiple of sixteen. Layout: docs/formats/gpf.md.

#include <array>
#include <string>
#include <string_view>

#include "codec/PictureDecoder.h"
#include "core/ByteSource.h"

namespace pictavo {

inline constexpr std::string_view kGpfMagic = "GraphicPatchFile";
inline constexpr std::string_view kGpf2Magic = "GraphPatchFile_2";
inline constexpr std::size_t kGpfHeaderSize = 32;
inline constexpr std::size_t kGpfPadding = 16;  ///< a file's length is a multiple of this
inline constexpr int kGpfLargestSize = 255;     ///< of a GPF's width and height

/// The extension of a variant's files, with its dot.
constexpr const char* GpfExtension(bool isGPF2) {
    return isGPF2 ? ".gpf2" : ".gpf";
}

/// Those of both variants, by which the system can open such files.
inline constexpr std::array kGpfExtensions = {GpfExtension(false), GpfExtension(true)};

struct GpfHeader {
    std::uint16_t width = 0;   ///< pixels
    std::uint16_t height = 0;  ///< pixels
    std::uint16_t type = 0;    ///< the phone's type code
    std::uint16_t number = 0;  ///< the picture number when written
    bool isGPF2 = false;       ///< two-byte width and height
};

/// The header of a file that the picture goes into, under this type code and picture number. A negative size,
/// which only a long record of the table gives, comes out as that has it.
GpfHeader HeaderFor(const Picture& picture, std::uint16_t type, int number, bool isGPF2);

/// Reads the header at the start of `source`. Fails with NoGpf when the magic is neither of the two, with
/// Truncated when the file ends inside the header, and with ReadFailed.
Result<GpfHeader> ReadGpfHeader(const ByteSource& source);

/// The header as stored. Kept: in a GPF, width and height are each clamped to 255.
std::array<std::uint8_t, kGpfHeaderSize> GpfHeaderBytes(const GpfHeader& header);

/// A whole file: header, `stored` picture bytes, padding.
Bytes ComposeGpf(const GpfHeader& header, ByteView stored);

/// Bytes of 0x00 that follow a file of `length` bytes: 0 to 15.
std::size_t GpfPaddingAfter(std::uint64_t length);

/// Size, bit depth and compression as the header's type says. Kept: the type is judged as hexadecimal text,
/// the first digit for the compression and the last one for the depth, so 0x188 is uncompressed and 0x8888
/// compressed. A last digit that names no depth gives 0.
PictureFormat GpfPictureFormat(const GpfHeader& header);

struct LoadedGpf {
    GpfHeader header;
    DecodedPicture decoded;
};

/// Reads the header and decodes the picture into `picture`. Fails as ReadGpfHeader and DecodePicture do.
Result<LoadedGpf> LoadGpf(const ByteSource& source, Picture& picture);

/// One line about a picture: "12 :: 132 x 176 :: 16bit :: compressed :: 20311 bytes". `number` stands as
/// given.
std::string InformationLine(const std::string& number, const PictureFormat& format, std::uint64_t consumed);

}  // namespace pictavo
