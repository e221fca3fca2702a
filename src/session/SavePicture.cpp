#include "session/SavePicture.h"

#include "codec/Bitmap.h"
#include "codec/GPFcodec.h"
#include "codec/PictureEncoder.h"
#include "session/Compression.h"
#include "session/Messages.h"
#include "session/Names.h"
#include "session/PngConverter.h"
#include "session/Report.h"
#include "session/Targets.h"

namespace pictavo {

namespace {

/// Without a box: the frame's line says why there is no picture.
Outcome NothingToSave() {
    return Outcome::Refused(
        {ErrorKind::NoSuchPicture, {}, std::nullopt, "no picture is shown that could be saved"});
}

std::string NameOfShown(const Session& session, const std::string& extension) {
    return NumberName(session.settings, session.pictureNumber) + extension;
}

FileChoice BmpChoice(const LanguageTable& texts, const std::string& suggestedName) {
    return {SaveTitle(texts, texts.cap_mnFileR), {{"Bitmap File", {"*.bmp"}}}, suggestedName, "bmp"};
}

FileChoice PngChoice(const Session& session) {
    return {SaveTitle(session.texts, session.texts.cap_mnFileR),
            {{"Portable Network Graphic files", {"*.png"}}},
            NameOfShown(session, ".png"),
            "png"};
}

FileChoice GpfChoice(const Session& session, bool isGPF2) {
    const std::string extension = GpfExtension(isGPF2);
    return {SaveTitle(session.texts, session.texts.cap_mnFileR),
            {{"Graphic Patch Files", {"*.gpf", "*.gpf2"}}},
            NameOfShown(session, extension),
            extension.substr(1)};
}

Outcome Finish(const Session& session, Ports& ports, const Status& status) {
    if (!status) return Refuse(session, ports, status.error());
    ports.prompts.Tell(Completion(session.texts));
    return Outcome::Wrote(1);
}

/// Asks for the target and writes it; `write` is given how.
template <typename Write>
Outcome WriteTarget(const Session& session, Ports& ports, const std::filesystem::path& path,
                    const std::filesystem::path& input, Write write) {
    const auto mode = AskTarget(session, ports, path, Inputs{input});
    if (!mode) return Refuse(session, ports, mode.error());
    if (!*mode) return Outcome::Cancelled();
    return Finish(session, ports, write(**mode));
}

/// A GPF cannot hold the height of a tall picture; widths never exceed it.
Status CheckGpfHeight(const Session& session, const std::filesystem::path& path, bool isGPF2) {
    if (isGPF2 || session.picture.height <= kGpfLargestSize) return {};
    return Fail(ErrorKind::NotSupported, path,
                "a GPF file cannot hold a picture of more than 255 rows; a GPF2 file (.gpf2) can");
}

Bytes ComposeShownGpf(const Session& session, bool isGPF2, std::uint8_t typeCode) {
    const GpfHeader header = HeaderFor(session.picture, typeCode, session.pictureNumber, isGPF2);
    return ComposeGpf(header, EncodePicture(session.picture, typeCode));
}

Status WriteGpf(const Session& session, const std::filesystem::path& path, bool isGPF2, std::uint8_t typeCode,
                CommitMode mode) {
    PICTAVO_TRY(CheckWritable(typeCode));
    return WriteWholeFile(path, ComposeShownGpf(session, isGPF2, typeCode), mode);
}

Status ConvertAndCopy(const Session& session, ProcessRunner& processes, const std::filesystem::path& path,
                      bool withAlpha, CommitMode mode) {
    PICTAVO_TRY(const std::filesystem::path png, ConvertPictureToPng(session, processes, withAlpha));
    PICTAVO_TRY(const auto source, FileSource::Open(png));
    PICTAVO_TRY(OutputFile file, OutputFile::Create(path));
    PICTAVO_TRY(CopyRange(*source, 0, source->Size(), file));
    return file.Commit(mode);
}

/// The temporary files go whether it succeeds or not.
Status WritePng(const Session& session, ProcessRunner& processes, const std::filesystem::path& path,
                bool withAlpha, CommitMode mode) {
    const Status written = ConvertAndCopy(session, processes, path, withAlpha, mode);
    RemovePngTemporaries(session);
    return written ? written : Failure(WithPath(written.error(), path));
}

bool AskAlpha(const Session& session, Ports& ports) {
    return session.picture.RasterHasAlpha && ports.prompts.Confirm(AlphaQuestion(session.texts));
}

Outcome AskNameOfBmp(Session& session, Ports& ports, const std::string& suggestedName, bool withAlpha,
                     const ChannelFlags& flags) {
    const std::filesystem::path answer = ports.prompts.ChooseSave(BmpChoice(session.texts, suggestedName));
    if (answer.empty()) return Outcome::Cancelled();
    return SaveBmpTo(session, ports, WithExtensionOfAnyCase(answer, ".bmp"), withAlpha, {}, flags);
}

}  // namespace

bool AskGpf2(const Session& session, Ports& ports) {
    return session.settings.DefaultGPF2 || ports.prompts.Confirm(Gpf2Question(session.texts));
}

Outcome SaveAsGpf(Session& session, Ports& ports, std::uint8_t typeCode) {
    if (!session.shown.isShown) return NothingToSave();
    const bool wantsGpf2 = AskGpf2(session, ports);
    const std::filesystem::path answer = ports.prompts.ChooseSave(GpfChoice(session, wantsGpf2));
    if (answer.empty()) return Outcome::Cancelled();
    const std::filesystem::path path = GpfName(WithoutTail(answer), wantsGpf2);
    const bool isGPF2 = NamesGpf2(path);
    if (const Status fits = CheckGpfHeight(session, path, isGPF2); !fits)
        return Refuse(session, ports, fits.error());
    return WriteTarget(session, ports, path, {}, [&](CommitMode mode) {
        return WriteGpf(session, path, isGPF2, AskCompression(session, ports, typeCode), mode);
    });
}

Outcome SaveGpfTo(Session& session, Ports& ports, const std::filesystem::path& path, bool isGPF2,
                  std::uint8_t typeCode, const std::filesystem::path& input) {
    if (const Status fits = CheckGpfHeight(session, path, isGPF2); !fits)
        return Refuse(session, ports, fits.error());
    return WriteTarget(session, ports, path, input,
                       [&](CommitMode mode) { return WriteGpf(session, path, isGPF2, typeCode, mode); });
}

Outcome SaveAsBmp(Session& session, Ports& ports) {
    if (!session.shown.isShown) return NothingToSave();
    return AskNameOfBmp(session, ports, NameOfShown(session, ".bmp"), AskAlpha(session, ports), {});
}

Outcome SaveChannelsAsBmp(Session& session, Ports& ports, const std::string& suggestedName,
                          const ChannelFlags& flags) {
    if (!session.shown.isShown) return NothingToSave();
    return AskNameOfBmp(session, ports, suggestedName, true, flags);
}

Outcome SaveBmpTo(Session& session, Ports& ports, const std::filesystem::path& path, bool withAlpha,
                  const std::filesystem::path& input, const ChannelFlags& flags) {
    return WriteTarget(session, ports, path, input, [&](CommitMode mode) {
        return WriteWholeFile(path, ComposeBitmap(session.picture, withAlpha, flags), mode);
    });
}

Outcome SaveAsPng(Session& session, Ports& ports) {
    if (const Status converter = CheckConverter(session); !converter)
        return Refuse(session, ports, converter.error());
    if (!session.shown.isShown) return NothingToSave();
    const bool withAlpha = AskAlpha(session, ports);
    const std::filesystem::path answer = ports.prompts.ChooseSave(PngChoice(session));
    if (answer.empty()) return Outcome::Cancelled();
    return SavePngTo(session, ports, WithExtensionOfAnyCase(answer, ".png"), withAlpha);
}

Outcome SavePngTo(Session& session, Ports& ports, const std::filesystem::path& path, bool withAlpha,
                  const std::filesystem::path& input) {
    return WriteTarget(session, ports, path, input, [&](CommitMode mode) {
        return WritePng(session, ports.processes, path, withAlpha, mode);
    });
}

Status SaveAsBMP(const Session& session, const std::filesystem::path& path, bool withAlpha,
                 const ChannelFlags& flags) {
    return WriteWholeFile(path, ComposeBitmap(session.picture, withAlpha, flags), CommitMode::Replace);
}

}  // namespace pictavo
