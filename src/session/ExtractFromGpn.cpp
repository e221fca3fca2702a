#include "session/ExtractFromGpn.h"

#include "codec/GPFcodec.h"
#include "session/Extraction.h"
#include "session/Names.h"
#include "session/Report.h"
#include "tools/GpnReader.h"

namespace pictavo {

namespace {

/// One picture after the other; the last one's file stays open, since what follows may be appended to it.
class GpnExtraction {
  public:
    GpnExtraction(const Session& session, Ports& ports, const ByteSource& container, TargetFolder& folder)
        : session_(session), ports_(ports), container_(container), folder_(folder) {}

    Outcome Run(const std::vector<GpnPicture>& pictures) {
        const bool wasStopped = !TakeAll(pictures);
        Finish();
        if (wasStopped) outcome_.problems.push_back({StoppedError(), std::nullopt});
        return std::move(outcome_);
    }

  private:
    /// False when the user stopped it.
    bool TakeAll(const std::vector<GpnPicture>& pictures) {
        for (const GpnPicture& picture : pictures) {
            if (const Status taken = Take(picture); !taken) Drop(taken.error(), picture.number);
            if (!TellPosition(ports_, picture.place.end, container_)) return false;
        }
        return true;
    }

    Status Take(const GpnPicture& picture) {
        const std::string number = NumberName(session_.settings, picture.number);
        const std::string name = number + GpfExtension(picture.isGPF2);
        const bool isOpenFile = open_ && open_->name == name;
        PICTAVO_TRY(const bool mayWrite, isOpenFile ? MayReplaceOpenFile() : Begin(name));
        number_ = mayWrite ? picture.number : number_;
        const std::uint64_t begin = picture.place.begin + (mayWrite ? 0 : kGpnHead);
        return Append({std::min(begin, picture.place.end), picture.place.end});
    }

    /// The file before is done with when the next one may be written, and only then.
    Result<bool> Begin(const std::string& name) {
        auto begun = ExtractedFile::Begin(session_, ports_, folder_, name, container_.Path());
        if (begun && !*begun) return false;
        Finish();
        if (!begun) return Failure(begun.error());
        open_.emplace(std::move(**begun));
        return true;
    }

    /// Two pictures of one number, the first of which is not under its name yet.
    Result<bool> MayReplaceOpenFile() {
        const std::filesystem::path path = folder_.PathOf(open_->name);
        if (!ports_.prompts.Confirm(OverwriteQuestion(session_.texts, path))) return false;
        PICTAVO_TRY(OutputFile file, OutputFile::Create(path));
        ExtractedFile again{open_->name, std::move(file), open_->mode};
        open_.emplace(std::move(again));
        return true;
    }

    Status Append(const FileRange& range) {
        if (!open_) return {};
        return CopyRange(container_, range.begin, range.Length(), open_->file);
    }

    void Drop(const Error& error, int number) {
        outcome_.problems.push_back({error, number});
        open_.reset();
    }

    void Finish() {
        if (!open_) return;
        const Status committed = open_->file.Commit(open_->mode);
        if (committed) ++outcome_.written;
        if (!committed) outcome_.problems.push_back({committed.error(), number_});
        open_.reset();
    }

    const Session& session_;
    Ports& ports_;
    const ByteSource& container_;
    TargetFolder& folder_;
    std::optional<ExtractedFile> open_;
    int number_ = 0;  // of the picture whose file is open
    Outcome outcome_;
};

Outcome RefuseKind(const Session& session, Ports& ports, const std::filesystem::path& container) {
    ports.prompts.Tell({"", session.texts.str_UNKfile});
    return Outcome::Refused(
        {ErrorKind::UnknownFile, container, std::nullopt, "holds no GPF or GPF2 picture: it is no GPN file"});
}

}  // namespace

Outcome ExtractFromGpn(Session& session, Ports& ports) {
    const auto extract = [&](const auto& container, const auto& folder) {
        return ExtractFromGpnTo(session, ports, container, folder);
    };
    return ChooseAndExtract(session, ports, {{"Graphic Patch N", {"*.gpn"}}}, MissingForm::PathThenText,
                            extract);
}

Outcome ExtractFromGpnTo(Session& session, Ports& ports, const std::filesystem::path& container,
                         const std::filesystem::path& folder) {
    const auto source = FileSource::Open(container);
    if (!source) return Refuse(session, ports, source.error());
    const auto pictures = ReadGpn(**source);
    if (!pictures) return Refuse(session, ports, pictures.error());
    if (pictures->empty()) return RefuseKind(session, ports, container);
    const auto extract = [&](TargetFolder& targets) {
        return GpnExtraction(session, ports, **source, targets).Run(*pictures);
    };
    return ExtractInto(session, ports, folder, extract);
}

}  // namespace pictavo
