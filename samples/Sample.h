#pragma once

/// Whole, credible fullflash dumps, and what is in them.
///
/// The parts of a sample lie, in sixteenths of its size: code, information block and table in the first MiB;
/// pictures up to 8/16, what they leave over being erased; embedded GIF, PNG and XML files up to 12/16; an
/// erased area up to 14/16; code with smaller erased places to the end. Everything between is filled with
/// code-like bytes. From 32 MiB on there is erased flash beyond 0x1000000, in all sizes beyond 0x40000.

#include <cstdint>
#include <string>
#include <vector>

#include "samples/Drawing.h"
#include "samples/FlashBuilder.h"

namespace pictavo::samples {

struct SampleSpec {
    FlashKind kind = FlashKind::NewSGold;
    int sizeMiB = 32;        ///< 16, 32, 64 or 128
    int pictureCount = 300;  ///< 0 .. LargestPictureCount(kind)
    int gifCount = 12;       ///< these three 0 .. kLargestFileCount
    int pngCount = 40;
    int xmlCount = 8;
    std::uint32_t seed = 1;

    /// False: no byte is left erased, so that a search for free flash finds nothing.
    bool erasedAreas = true;
};

inline constexpr int kLargestFileCount = 1000;

/// 2001 for records of 8 bytes, 2501 for those of 12.
int LargestPictureCount(FlashKind kind);

/// What is wrong with `spec`, or nothing.
std::string FaultOf(const SampleSpec& spec);

struct SamplePicture {
    int number = 0;
    int width = 0;
    int height = 0;
    std::uint8_t typeCode = 0;
    std::uint64_t offset = 0;
    std::uint64_t length = 0;  ///< of the stored bytes, which a reader consumes exactly
    DrawingRecipe recipe;      ///< Draw(recipe) is what was encoded
};

enum class FileKind { Gif, Png, Xml };

/// A file inside the flash. An XML document's bytes are followed by a blank and a 0x00, which are not
/// counted.
struct EmbeddedFile {
    FileKind kind = FileKind::Gif;
    std::uint64_t offset = 0;
    std::uint64_t length = 0;
};

struct ErasedArea {
    std::uint64_t offset = 0;
    std::uint64_t length = 0;
};

struct Sample {
    FlashBuilder flash;
    std::vector<SamplePicture> pictures;
    std::vector<EmbeddedFile> files;  ///< in the order of their offsets
    std::vector<ErasedArea> erased;   ///< in the order of their offsets
};

/// Makes a sample; FaultOf(spec) says nothing. Pictures go through all type codes, drawings and sizes from 8
/// x 8 to the whole screen (132 x 176; 240 x 320 of E71 and EL71); where many share little room, big ones are
/// halved until they fit.
Sample MakeSample(const SampleSpec& spec);

}  // namespace pictavo::samples
