#include "patch/PitBlocks.h"

#include <cassert>

#include "core/BasicCalculations_Tarsk.h"
#include "patch/PitRecord.h"

namespace pictavo {

namespace {

constexpr std::size_t kOffsetDigits = 7;
constexpr std::uint64_t kLongestSource = std::uint64_t{16} << 20;

Failure EmptyBlock(const FullflashImage& flash, const char* what) {
    return Fail(ErrorKind::EmptyBlock, flash.source->Path(), std::string("the ") + what + " would be empty");
}

Status WriteBytes(OutputFile* file, ByteView bytes) {
    if (file == nullptr) return {};
    return file->Write(bytes);
}

Status CheckLength(const ByteSource& gpf) {
    if (gpf.Size() <= kLongestSource) return {};
    return Fail(ErrorKind::Malformed, gpf.Path(), "is longer than 16 MiB, which no picture is");
}

/// Such a picture is taken as it stands.
bool CanNotBeDecoded(const Error& error) {
    return error.kind == ErrorKind::BadBitDepth || error.kind == ErrorKind::TooLarge;
}

/// The data must fill the picture.
Status CheckFilled(const ByteSource& gpf) {
    Picture scratch;
    const auto loaded = LoadGpf(gpf, scratch);
    if (loaded ? loaded->decoded.complete : CanNotBeDecoded(loaded.error())) return {};
    if (!loaded) return Failure(loaded.error());
    return Fail(ErrorKind::Truncated, gpf.Path(), "the file ends inside the picture's data");
}

/// The source file's bytes behind its head, filled up to whole steps of sixteen bytes.
Result<Bytes> BlockData(const RebuildSource& source) {
    PICTAVO_TRY(const auto file, FileSource::Open(source.gpf));
    PICTAVO_TRY(Bytes data, file->ReadExactly(kGpfHeaderSize, file->Size() - kGpfHeaderSize));
    data.resize(data.size() + GpfPaddingAfter(data.size()));
    return data;
}

Failure BlockTooLarge(const FullflashImage& flash, std::uint64_t offset) {
    return Fail(ErrorKind::BlockTooLarge, flash.source->Path(), offset,
                "the rebuilt pictures pass the start of the last old one");
}

}  // namespace

std::string BlockFileName(std::uint64_t offset) {
    return "0x" + HexText(offset, kOffsetDigits) + ".bin";
}

Result<FileRange> PitRange(const FullflashImage& flash) {
    if (!flash.pitOffset || flash.picnum < 0) return EmptyBlock(flash, "picture table");
    const std::uint64_t begin = *flash.pitOffset;
    return FileRange{begin, begin + (static_cast<std::uint64_t>(flash.picnum) + 1) * RecordSize(flash)};
}

Result<std::uint64_t> StoredLength(const FullflashImage& flash, const PictureRecord& row,
                                   int depthOfUnknown) {
    Picture scratch;
    PICTAVO_TRY(const DecodedPicture decoded,
                DecodePicture(*flash.source, row.picOffset, FormatOf(row, depthOfUnknown), scratch));
    return decoded.consumed;
}

Result<FileRange> PictureBlockRange(const FullflashImage& flash, const std::vector<PictureRecord>& rows,
                                    int depthOfUnknown) {
    if (rows.empty()) return EmptyBlock(flash, "block of pictures");
    PICTAVO_TRY(const std::uint64_t lastLength, StoredLength(flash, rows.back(), depthOfUnknown));
    const FileRange range{rows.front().picOffset, rows.back().picOffset + lastLength};
    if (range.end <= range.begin) return EmptyBlock(flash, "block of pictures");
    return range;
}

Result<RebuildSource> ReadRebuildSource(const FullflashImage& flash, const PictureRecord& record,
                                        const std::filesystem::path& gpf) {
    PICTAVO_TRY(const auto file, FileSource::Open(gpf));
    PICTAVO_TRY(CheckLength(*file));
    PICTAVO_TRY(const GpfHeader header, ReadGpfHeader(*file));
    if (const Status fits = CheckFitsRecord(flash, header); !fits)
        return Failure(WithPath(fits.error(), gpf));
    PICTAVO_TRY(CheckFilled(*file));
    return RebuildSource{record, gpf, header};
}

Status RebuildBlocks(const FullflashImage& flash, const std::vector<RebuildSource>& sources,
                     const RebuildOutputs& outputs, const std::function<bool(std::size_t row)>& step) {
    assert(!sources.empty());
    const std::uint64_t bound = sources.back().record.picOffset;
    std::uint64_t offset = sources.front().record.picOffset;
    std::size_t row = 0;
    for (const RebuildSource& source : sources) {
        PICTAVO_TRY(const Bytes data, BlockData(source));
        PICTAVO_TRY(
            WriteBytes(outputs.table, ComposePitRecord(flash, source.header, StoredAddressOf(offset))));
        PICTAVO_TRY(WriteBytes(outputs.block, data));
        offset += data.size();
        const bool goOn = step(++row);
        if (offset > bound) return BlockTooLarge(flash, offset);
        if (!goOn) return Fail(ErrorKind::Stopped, "the rebuild was stopped");
    }
    return {};
}

}  // namespace pictavo
