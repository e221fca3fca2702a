#pragma once

/// Picture files to put in the place of a sample's pictures.

#include <string>
#include <vector>

#include "samples/Bytes.h"
#include "samples/Sample.h"

namespace pictavo::samples {

struct ReplacementFile {
    std::string name;  ///< the picture's number in four digits and the extension
    Bytes bytes;
};

/// A file each for up to eight of the sample's first pictures: bitmaps of 8, 24 and 32 bits, PNG files and a
/// GIF, of the pictures' own sizes; but picture 0 grows to 64 x 64 pixels, which is more than its place
/// holds.
std::vector<ReplacementFile> MakeReplacements(const Sample& sample);

}  // namespace pictavo::samples
