#include "cli/Front.h"

#include <ostream>

#include "core/ErrorText.h"
#include "core/PathText.h"
#include "core/PictureTable.h"

namespace pictavo::cli {

void Front::Complain(const std::string& message) {
    err << "pictavo-cli: " << OnOneLine(message) << '\n';
}

void Front::Complain(const Error& error) {
    Complain(ErrorText(error));
}

void Front::Complain(const Problem& problem) {
    if (!problem.number) return Complain(problem.error);
    Complain("picture " + PictureNumberText(*problem.number) + ": " + ErrorText(problem.error));
}

int Front::Report(const Outcome& outcome) {
    for (const Problem& problem : outcome.problems) Complain(problem);
    for (const auto& path : prompts.Kept())
        Complain(PathText(path) + ": exists already and is left alone (--overwrite replaces it)");
    if (!outcome.warning.empty()) Complain(outcome.warning);
    return outcome.IsClean() && prompts.Kept().empty() ? kDone : kFailed;
}

int Front::Fail(const Error& error) {
    Complain(error);
    return kFailed;
}

int Front::WrongUsage(const std::string& message, const std::string& usage) {
    Complain(message);
    err << usage << '\n';
    return kWrongUsage;
}

int Front::Print(const std::string& text) {
    out << text << std::flush;
    if (out) return kDone;
    Complain("standard output: cannot be written");
    return kFailed;
}

}  // namespace pictavo::cli
