#include "session/ExtractFromPatch.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "core/ErrorText.h"
#include "patch/PatchSections.h"
#include "session/Extraction.h"
#include "session/Names.h"
#include "session/Report.h"
#include "session/StatusText.h"

namespace pictavo {

namespace {

/// The whole name as a number of a picture.
std::optional<std::uint16_t> NumberNamed(const std::string& name, bool isHex) {
    std::uint16_t number = 0;
    const char* end = name.data() + name.size();
    const auto [stop, error] = std::from_chars(name.data(), end, number, isHex ? 16 : 10);
    if (error != std::errc() || stop != end) return std::nullopt;
    return number;
}

/// No name may lead out of the folder, on any system.
bool IsPlainName(const std::string& name) {
    return !name.empty() && name.find_first_of("/\\:") == std::string::npos && name != "." && name != ".." &&
           name == OnOneLine(name);
}

/// A file that a section becomes.
struct Target {
    std::string name;
    std::optional<GpfHeader> header;  ///< of a picture
};

class PatchExtraction {
  public:
    PatchExtraction(const Session& session, Ports& ports, const ByteSource& patch, TargetFolder& folder)
        : session_(session), ports_(ports), patch_(patch), folder_(folder), sections_(patch) {}

    Outcome Run() {
        if (const Status read = TakeAll(); !read) outcome_.problems.push_back({read.error(), std::nullopt});
        outcome_.warning = CutHeightsText(cutHeights_);
        return std::move(outcome_);
    }

  private:
    /// Fails only where the patch cannot be read on.
    Status TakeAll() {
        for (;;) {
            PICTAVO_TRY(const auto part, sections_.NextSection());
            if (!part) return {};
            const auto target = std::visit([this](const auto& of) { return TargetFor(of); }, *part);
            if (!target) {
                outcome_.problems.push_back({target.error(), std::nullopt});
                continue;
            }
            const Status taken = Take(*target);
            if (IsOfReading(taken)) return taken;
            if (!taken) outcome_.problems.push_back({taken.error(), std::nullopt});
            if (!TellPosition(ports_, sections_.Position(), patch_)) return Failure(StoppedError());
        }
    }

    /// Such an error comes again with the next line.
    static bool IsOfReading(const Status& status) {
        return !status && status.error().kind == ErrorKind::ReadFailed;
    }

    Result<Target> TargetFor(const PicturePart& picture) const {
        const auto number = NumberNamed(picture.name, session_.settings.HEXFilename);
        if (!number) return Refuse("\"" + picture.name + "\" is no number of a picture");
        Target target{NumberName(session_.settings, *number), picture.header};
        target.name += GpfExtension(picture.header.isGPF2);
        target.header->number = *number;
        return target;
    }

    Result<Target> TargetFor(const PngPart& png) const {
        if (!IsPlainName(png.name)) return Refuse("\"" + png.name + "\" is no plain name of a PNG file");
        return Target{png.name + ".png", std::nullopt};
    }

    Failure Refuse(const std::string& reason) const {
        return Fail(ErrorKind::Malformed, patch_.Path(), "section passed over: " + reason);
    }

    Status Take(const Target& target) {
        PICTAVO_TRY(auto output, ExtractedFile::Begin(session_, ports_, folder_, target.name, patch_.Path()));
        if (!output) return {};
        PICTAVO_TRY(WriteSection(target, output->file));
        PICTAVO_TRY(output->file.Commit(output->mode));
        ++outcome_.written;
        if (target.header && !target.header->isGPF2 && target.header->height > kGpfLargestSize) ++cutHeights_;
        return {};
    }

    Status WriteSection(const Target& target, OutputFile& file) {
        if (target.header) PICTAVO_TRY(file.Write(GpfHeaderBytes(*target.header)));
        PICTAVO_TRY(const std::uint64_t length, CopyData(file));
        if (!target.header) return {};
        return file.Write(Bytes(GpfPaddingAfter(kGpfHeaderSize + length)));
    }

    /// The bytes of data that were written.
    Result<std::uint64_t> CopyData(OutputFile& file) {
        std::uint64_t length = 0;
        for (;;) {
            PICTAVO_TRY(const auto data, sections_.NextData());
            if (!data) return length;
            PICTAVO_TRY(file.Write(*data));
            length += data->size();
        }
    }

    const Session& session_;
    Ports& ports_;
    const ByteSource& patch_;
    TargetFolder& folder_;
    PatchSectionReader sections_;
    std::size_t cutHeights_ = 0;
    Outcome outcome_;
};

}  // namespace

Outcome ExtractFromPatch(Session& session, Ports& ports) {
    const auto extract = [&](const auto& patch, const auto& folder) {
        return ExtractFromPatchTo(session, ports, patch, folder);
    };
    return ChooseAndExtract(session, ports, {{"ViKlay Patch File", {"*.vkp"}}}, MissingForm::TextAlone,
                            extract);
}

Outcome ExtractFromPatchTo(Session& session, Ports& ports, const std::filesystem::path& patch,
                           const std::filesystem::path& folder) {
    const auto source = FileSource::Open(patch);
    if (!source) return Refuse(session, ports, source.error());
    const auto extract = [&](TargetFolder& targets) {
        return PatchExtraction(session, ports, **source, targets).Run();
    };
    return ExtractInto(session, ports, folder, extract);
}

}  // namespace pictavo
