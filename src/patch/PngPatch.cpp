#include "patch/PngPatch.h"

#include <algorithm>
#include <cassert>

#include "codec/PngFormat.h"
#include "core/SignatureSearch.h"
#include "patch/PatchLine.h"
#include "patch/SectionTitle.h"

namespace pictavo {

namespace {

constexpr Signature kPngEnd{kPngEndType, 0};
constexpr std::uint64_t kAllowance = 2;

Status CheckPngBegins(const ByteSource& flash, std::uint64_t start) {
    Bytes found(kPngSignature.size());
    PICTAVO_TRY([[maybe_unused]] const std::size_t count, flash.ReadAt(start, found));
    if (AsText(found) == kPngSignature) return {};
    return Fail(ErrorKind::Malformed, flash.Path(), start, "no PNG file begins there");
}

bool Fits(const FileRange& place, std::uint64_t length) {
    return length <= place.Length() + kAllowance;
}

/// The new file, and FF over what is left of the old one.
Bytes NewBytes(const FileRange& place, ByteView newPng) {
    Bytes bytes(newPng.begin(), newPng.end());
    bytes.resize(static_cast<std::size_t>(PngSectionRange(place, newPng.size()).Length()), 0xFF);
    return bytes;
}

}  // namespace

Result<FileRange> FindPngInFlash(const ByteSource& flash, std::uint64_t start) {
    PICTAVO_TRY(CheckPngBegins(flash, start));
    PICTAVO_TRY(const auto end,
                FindSignature(flash, kPngEnd, start, flash.Size(), [](std::uint64_t) { return true; }));
    if (!end) return Fail(ErrorKind::Malformed, flash.Path(), start, "the PNG file there has no end (IEND)");
    const FileRange place{start, *end + kPngEnd.bytes.size() + kPngChecksumBytes};
    if (place.end <= flash.Size()) return place;
    return Fail(ErrorKind::Truncated, flash.Path(), start, "the flash ends inside the PNG file there");
}

Status CheckPngFits(const ByteSource& flash, const FileRange& place, std::uint64_t length) {
    if (Fits(place, length)) return {};
    return Fail(ErrorKind::PngTooLarge, flash.Path(), place.begin, "Too large size!");
}

FileRange PngSectionRange(const FileRange& place, std::uint64_t length) {
    return {place.begin, std::max(place.end, place.begin + length)};
}

Result<std::string> PngSection(const ByteSource& flash, const FileRange& place, const std::string& name,
                               ByteView newPng) {
    assert(Fits(place, newPng.size()));
    const Bytes newBytes = NewBytes(place, newPng);
    PICTAVO_TRY(const Bytes oldBytes, flash.ReadExactly(place.begin, newBytes.size()));
    // The new file has lines of its own, and the FF behind it too.
    const auto own = [&](const Bytes& bytes) { return ByteView(bytes).first(newPng.size()); };
    const auto rest = [&](const Bytes& bytes) { return ByteView(bytes).subspan(newPng.size()); };
    return kPatchLineEnd + SectionTitle(SectionKind::Png, name) + kPatchLineEnd +
           PatchLines(place.begin, own(oldBytes), own(newBytes)) +
           PatchLines(place.begin + newPng.size(), rest(oldBytes), rest(newBytes));
}

}  // namespace pictavo
