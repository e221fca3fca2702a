#include "session/Report.h"

#include <algorithm>
#include <cassert>

#include "core/ErrorText.h"
#include "core/PictureTable.h"

namespace pictavo {

namespace {

constexpr std::size_t kMostLines = 12;

std::string ProblemLine(const Problem& problem) {
    const std::string number = problem.number ? PictureNumberText(*problem.number) + ": " : "";
    return number + ErrorText(problem.error);
}

std::string ProblemLines(const std::vector<Problem>& problems) {
    assert(!problems.empty());
    std::string text;
    for (std::size_t i = 0; i < std::min(problems.size(), kMostLines); ++i)
        text += ProblemLine(problems[i]) + "\r";
    if (problems.size() > kMostLines) text += "... (" + std::to_string(problems.size()) + ")\r";
    text.pop_back();
    return text;
}

}  // namespace

void Tell(const Session& session, Ports& ports, const Error& error) {
    for (const Notice& notice : NoticesOf(session.texts, error)) ports.prompts.Tell(notice);
}

Outcome Refuse(const Session& session, Ports& ports, const Error& error) {
    Tell(session, ports, error);
    return Outcome::Refused(error);
}

Outcome RefuseMissing(const Session& session, Ports& ports, const std::filesystem::path& path,
                      MissingForm form) {
    ports.prompts.Tell(MissingFile(session.texts, path, form));
    return Outcome::Refused({ErrorKind::FileMissing, path, std::nullopt, "cannot be opened"});
}

void TellProblems(Ports& ports, const Outcome& outcome) {
    if (!outcome.problems.empty()) ports.prompts.Tell({"", ProblemLines(outcome.problems)});
}

Error StoppedError() {
    return {ErrorKind::Stopped, {}, std::nullopt, "stopped before the end"};
}

bool GoOn(Ports& ports, std::size_t done, std::size_t count, Outcome& outcome) {
    if (ports.progress.At(100.0 * static_cast<double>(done) / static_cast<double>(count))) return true;
    outcome.problems.push_back({StoppedError(), std::nullopt});
    return false;
}

bool WasStopped(const Outcome& outcome) {
    return !outcome.problems.empty() && outcome.problems.back().error.kind == ErrorKind::Stopped;
}

void TellBatchEnd(const Session& session, Ports& ports, const Outcome& outcome) {
    TellBatchEnd(ports, outcome, Completion(session.texts));
}

void TellBatchEnd(Ports& ports, const Outcome& outcome, const Notice& completion) {
    TellProblems(ports, outcome);
    if (!WasStopped(outcome)) ports.prompts.Tell(completion);
}

}  // namespace pictavo
