#include "session/StatusText.h"

#include "codec/GPFcodec.h"
#include "config/LanguageFile.h"
#include "core/ErrorText.h"
#include "core/PathText.h"
#include "core/PictureTable.h"
#include "session/Messages.h"
#include "session/Names.h"
#include "session/OpenFullflash.h"
#include "session/Session.h"
#include "session/ShowPicture.h"

namespace pictavo {

namespace {

std::string Counted(std::size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

void Append(std::string& text, const std::string& separator, const std::string& part) {
    if (!text.empty() && !part.empty()) text += separator;
    text += part;
}

/// What a language file ends with a full stop goes on behind a colon here.
void GoOnWith(std::string& text, const std::string& part) {
    if (text.ends_with('.')) text.pop_back();
    Append(text, ": ", part);
}

/// "Not found" is all there is to say of a missing file.
bool SaysTheReason(const std::string& text, const Error& error) {
    return error.kind == ErrorKind::FileMissing || text.find(OnOneLine(error.detail)) != std::string::npos;
}

}  // namespace

std::string OpenedText(const Session& session) {
    if (const Status holds = CheckHoldsTable(session.flash); !holds)
        return OnOneLine(ErrorText(holds.error()));
    const std::string pictures = Counted(session.rows.size(), "picture");
    if (session.rows.empty()) return pictures;
    return pictures + "; a right click or the context-menu key on a row loads and saves";
}

std::string LoadedText(const AppSettings& settings, std::size_t loaded, std::size_t count) {
    const std::string text = std::to_string(loaded) + " of " + Counted(count, "picture") + " loaded";
    if (loaded > 0) return text;
    const std::string name = NumberName(settings, 0);
    return text + "; files are sought by the pictures' numbers, such as " + name + ".bmp or " + name + ".gpf";
}

std::string PatchSavedText(const std::filesystem::path& path, std::size_t pictures) {
    return OnOneLine(PathText(path)) + ": " + Counted(pictures, "picture");
}

std::string PngTakenText(const std::filesystem::path& path) {
    return OnOneLine(PathText(path.filename())) + " goes into the next patch";
}

std::string FilesWrittenText(std::size_t count) {
    return Counted(count, "file") + " written";
}

std::size_t WaitingPictures(const Session& session) {
    std::size_t count = 0;
    for (std::size_t index = 0; index < session.replaced.size(); ++index)
        if (session.replaced[index] && HasReplacement(session, index)) ++count;
    return count;
}

std::string WaitingText(const Session& session) {
    const std::size_t count = WaitingPictures(session);
    return count == 0 ? "" : Counted(count, "replaced picture") + " not in a patch yet";
}

std::string WithWaiting(std::string text, const Session& session) {
    Append(text, "; ", WaitingText(session));
    return text;
}

std::string MissingLanguageText(const Session& session) {
    if (HasLanguageFile(session.places.languageFolders, session.settings.Language)) return "";
    return OnOneLine(session.settings.Language) + ".lng was not found";
}

std::string CutHeightsText(std::size_t count) {
    if (count == 0) return {};
    const std::string most = std::to_string(kGpfLargestSize);
    return Counted(count, "GPF file") + " of pictures higher than " + most + " rows: a GPF says " + most +
           ", only a GPF2 can say more";
}

std::string ProblemText(const LanguageTable& texts, const Problem& problem) {
    std::string text;
    for (const Notice& notice : NoticesOf(texts, problem.error)) GoOnWith(text, OnOneLine(notice.text));
    if (!SaysTheReason(text, problem.error)) GoOnWith(text, OnOneLine(ErrorText(problem.error)));
    std::string line = problem.number ? PictureNumberText(*problem.number) : "";
    Append(line, ": ", text);
    return line;
}

std::string OutcomeText(const LanguageTable& texts, const Outcome& outcome) {
    std::string text = outcome.problems.empty() ? "" : ProblemText(texts, outcome.problems.back());
    Append(text, "; ", outcome.note);
    Append(text, "; ", outcome.warning);
    return text.empty() && outcome.written > 0 ? texts.str_Succes : text;
}

}  // namespace pictavo
