#pragma once

#include "session/Ports.h"
#include "session/Session.h"

namespace pictavo {

/// Reads a bitmap, GIF, JPEG or PNG file into the Raster, told apart by its first bytes; with flags only into
/// the flagged channels. PNG goes through the converter, bitmaps of 32 bits are read directly with their
/// alpha, everything else through the system's readers.
///
/// Fails with TooLarge above 240 x 320, ConverterMissing, ConverterFailed, FileMissing, UnknownFile,
/// Truncated, Malformed, Overflow, ReadFailed, WriteFailed; then the Raster and what is shown are as they
/// were.
Status PicturesLoader(Session& session, Ports& ports, const std::filesystem::path& path,
                      const ChannelFlags& flags = {});

}  // namespace pictavo
