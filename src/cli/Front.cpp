#include "cli/Front.h"

#include <ostream>

#include "cli/Terminal.h"
#include "core/ErrorText.h"
#include "core/PictureTable.h"
#include "core/SystemFile.h"
#include "session/Messages.h"
#include "shell/TemporaryFolder.h"

namespace pictavo::cli {

namespace {

constexpr int kBarWidth = 40;
constexpr std::chrono::milliseconds kPatience{500};

}  // namespace

bool OptionPrompts::Confirm(const Question& question) {
    switch (question.about) {
        case Asked::Overwrite:
            if (!overwrite) kept_.push_back(question.path);
            return overwrite;
        case Asked::Compress:
            return compress;
        case Asked::WriteGpf2:
            return false;
        case Asked::SaveWithAlpha:
            return true;
        case Asked::ApplyToAll:
        case Asked::RegisterTypes:
            return false;
    }
    return false;
}

TerminalProgress::TerminalProgress(std::ostream& err) : err_(err), isTerminal_(IsErrorTerminal()) {}

TerminalProgress::~TerminalProgress() {
    if (isDrawn_) err_ << '\r' << std::string(kBarWidth + 8, ' ') << '\r' << std::flush;
}

bool TerminalProgress::At(double percent) {
    const int whole = static_cast<int>(percent);
    const bool isLong = std::chrono::steady_clock::now() - start_ > kPatience;
    if (isTerminal_ && isLong && whole != drawnPercent_) {
        const auto filled = static_cast<std::size_t>(whole * kBarWidth / 100);
        err_ << "\r[" << std::string(filled, '#') << std::string(kBarWidth - filled, ' ') << "] " << whole
             << '%' << std::flush;
        drawnPercent_ = whole;
        isDrawn_ = true;
    }
    return !WasInterrupted();
}

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
    return outcome.IsClean() && prompts.Kept().empty() ? kDone : kFailed;
}

int Front::Fail(const Error& error) {
    Complain(error);
    return kFailed;
}

int Front::Print(const std::string& text) {
    out << text << std::flush;
    if (out) return kDone;
    Complain("standard output: can not be written");
    return kFailed;
}

Result<RunFolder> RunFolder::Create() {
    PICTAVO_TRY(std::filesystem::path path, system_file::CreatePrivateFolder(TemporaryFolder(), "pictavo-"));
    return RunFolder(std::move(path));
}

RunFolder::~RunFolder() {
    std::error_code ignored;
    if (!path_.empty()) std::filesystem::remove_all(path_, ignored);
}

}  // namespace pictavo::cli
