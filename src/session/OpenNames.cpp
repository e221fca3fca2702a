#include "session/OpenNames.h"

#include "core/PathText.h"
#include "session/Compression.h"
#include "session/Messages.h"
#include "session/Names.h"
#include "session/OpenFiles.h"
#include "session/Report.h"
#include "session/SavePicture.h"
#include "session/UnattendedPrompts.h"

namespace pictavo {

namespace {

constexpr char kBlank = ' ';
constexpr char kQuote = '"';
constexpr std::size_t kExtensionLetters = 3;
constexpr std::size_t kGpf2Letters = 4;

void DropFirst(std::string& name, char c) {
    if (name.starts_with(c)) name.erase(0, 1);
}

void DropLast(std::string& name, char c) {
    if (name.ends_with(c)) name.pop_back();
}

std::string Unquoted(std::string name) {
    DropFirst(name, kBlank);
    DropLast(name, kBlank);
    DropFirst(name, kQuote);
    DropLast(name, kQuote);
    return name;
}

/// Kept: the dot stays, and the letters of another extension are put behind it.
std::filesystem::path UpToExtension(const std::filesystem::path& path) {
    std::filesystem::path::string_type name = path.native();
    name.resize(name.size() - (NamesGpf2(path) ? kGpf2Letters : kExtensionLetters));
    return name;
}

Outcome SaveBy(SaveCommand command, Session& session, Ports& ports) {
    if (const auto type = TypeOf(command)) return SaveAsGpf(session, ports, *type);
    return command == SaveCommand::Png ? SaveAsPng(session, ports) : SaveAsBmp(session, ports);
}

/// Several names at work.
struct NamesAtWork {
    Session& session;
    Ports& ports;
    UnattendedPrompts unattended{ports.prompts};
    std::optional<SaveCommand> recorded = std::nullopt;  ///< what was picked last
    bool appliesToAll = false;
};

/// Adds what `part` wrote and met.
void Add(Outcome part, Outcome& whole) {
    whole.written += part.written;
    for (Problem& problem : part.problems) whole.problems.push_back(std::move(problem));
}

/// Saves the picture beside its file, by the command recorded.
Outcome Save(NamesAtWork& work) {
    if (!work.recorded) return {};
    Ports ports{work.unattended, work.ports.progress, work.ports.processes, work.ports.pictures};
    Outcome outcome = SaveBy(*work.recorded, work.session, ports);
    for (const Problem& problem : outcome.problems) Tell(work.session, work.ports, problem.error);
    return outcome;
}

Outcome PickAndSave(NamesAtWork& work) {
    const auto picked = work.ports.prompts.ChooseSaveCommand();
    if (!picked) return {};
    work.recorded = picked;
    work.unattended.ForgetAnswers();
    return Save(work);
}

Outcome OfferSaving(NamesAtWork& work, const std::filesystem::path& path) {
    work.unattended.SetBaseName(UpToExtension(path));
    return work.appliesToAll ? Save(work) : PickAndSave(work);
}

/// Kept: it is asked after every file that was tried, be it a flash, one that did not open, or the last.
void AskApplyToAll(NamesAtWork& work) {
    if (!work.appliesToAll) work.appliesToAll = work.ports.prompts.Confirm(ApplyToAllQuestion());
}

FileKind KindOpened(const Outcome& opened, FileKind kind) {
    return opened.end == Outcome::End::Done ? kind : FileKind::Unknown;
}

/// Opens one of several files, and offers to save the picture that was loaded from it.
void OpenInBatch(NamesAtWork& work, const std::filesystem::path& path, const FileShown& shown,
                 Outcome& outcome) {
    const FileKind kind = KindOnCommandLine(path);
    Outcome opened = OpenAs(work.session, work.ports, path, kind);
    const FileKind kindOpened = KindOpened(opened, kind);
    Add(std::move(opened), outcome);
    shown(kindOpened);
    if (kindOpened == FileKind::Gpf || kindOpened == FileKind::Picture) Add(OfferSaving(work, path), outcome);
    if (kind != FileKind::Unknown) AskApplyToAll(work);
}

Outcome OpenSeveral(Session& session, Ports& ports, const std::vector<std::string>& names,
                    const FileShown& shown) {
    ports.prompts.Tell({"", session.texts.str_MultFFound});
    NamesAtWork work{session, ports};
    Outcome outcome;
    for (std::size_t i = 0; i < names.size(); ++i) {
        OpenInBatch(work, PathOf(names[i]), shown, outcome);
        if (!GoOn(ports, i + 1, names.size(), outcome)) break;
    }
    if (outcome.written > 0 && !WasStopped(outcome)) ports.prompts.Tell(Completion(session.texts));
    return outcome;
}

Outcome RefuseTooMany(const Session& session, Ports& ports) {
    return Refuse(session, ports,
                  {ErrorKind::Overflow,
                   {},
                   std::nullopt,
                   "more than " + std::to_string(kMostNames) + " files are named on the command line"});
}

}  // namespace

std::vector<std::string> SplitCommandLine(const std::string& line) {
    std::vector<std::string> names;
    if (line.empty()) return names;
    std::string name;
    bool isQuoted = false;
    for (const char c : line) {
        if (c == kQuote) isQuoted = !isQuoted;
        if (c == kBlank && !isQuoted)
            names.push_back(Unquoted(std::exchange(name, {})));
        else
            name += c;
    }
    names.push_back(Unquoted(name));
    return names;
}

Outcome OpenNames(Session& session, Ports& ports, const std::vector<std::string>& names,
                  const FileShown& shown) {
    if (names.size() > kMostNames) return RefuseTooMany(session, ports);
    if (names.size() > 1) return OpenSeveral(session, ports, names, shown);
    if (names.empty()) return {};
    const std::filesystem::path path = PathOf(names.front());
    const FileKind kind = KindOnCommandLine(path);
    Outcome outcome = OpenAs(session, ports, path, kind);
    shown(KindOpened(outcome, kind));
    return outcome;
}

}  // namespace pictavo
