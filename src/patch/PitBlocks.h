#pragma once

/// The picture table and the block of picture data as two files: backed up from the flash, or rebuilt densely
/// from GPF files. Layout: docs/formats/pit-blocks.md.

#include <functional>
#include <vector>

#include "codec/GPFcodec.h"
#include "core/FileRange.h"
#include "core/OutputFile.h"
#include "core/PictureTable.h"

namespace pictavo {

/// "0x", seven hex digits, ".bin".
std::string BlockFileName(std::uint64_t offset);

/// Where the table lies in the flash: `picnum` + 1 records. Kept: a table that filled up without an end
/// marker leaves `picnum` at its earlier value, and that many records are meant. Fails with EmptyBlock.
Result<FileRange> PitRange(const FullflashImage& flash);

/// Where the picture data lie: from the first row's data to the end of the last row's, whose length is
/// measured by decoding it from the flash. Fails with EmptyBlock when there are no rows or the block would
/// end before it begins, and as DecodePicture does.
Result<FileRange> PictureBlockRange(const FullflashImage& flash, const std::vector<PictureRecord>& rows,
                                    int depthOfUnknown = 0);

/// Bytes of the row's stored picture, measured by decoding it from the flash, without touching the Raster in
/// use; a type that names no depth has `depthOfUnknown`. Fails as DecodePicture does.
Result<std::uint64_t> StoredLength(const FullflashImage& flash, const PictureRecord& row,
                                   int depthOfUnknown = 0);

/// One picture of a rebuild.
struct RebuildSource {
    PictureRecord record;
    std::filesystem::path gpf;
    GpfHeader header;
};

/// Reads the head of a source file. Fails as ReadGpfHeader does; with NotSupported when this flash's records
/// cannot hold the picture; with Truncated when the file's data do not fill it (a picture that cannot be
/// decoded at all, of an unknown depth or beyond the Raster, is taken as it stands); and with Malformed when
/// the file is longer than 16 MiB.
Result<RebuildSource> ReadRebuildSource(const FullflashImage& flash, const PictureRecord& record,
                                        const std::filesystem::path& gpf);

/// The two files of a rebuild; null for one that is not to be written.
struct RebuildOutputs {
    OutputFile* table = nullptr;
    OutputFile* block = nullptr;
};

/// Writes the new table and block, picture after picture, each on a sixteen-byte step from the block's start.
/// There is at least one source. `step` is told of each row that is done (counted from 1) and may stop the
/// work (Stopped). Kept: after each picture, the last one included, the block must not pass the place where
/// the old last picture began (reaching it is fine): else BlockTooLarge, and both files stand as far as they
/// were written.
Status RebuildBlocks(const FullflashImage& flash, const std::vector<RebuildSource>& sources,
                     const RebuildOutputs& outputs, const std::function<bool(std::size_t row)>& step);

}  // namespace pictavo
