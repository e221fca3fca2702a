#pragma once

/// Ports with scripted answers: every question must have been expected, in its order, and none may be left
/// over.

#include <deque>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "session/Ports.h"

namespace pictavo::tests {

class ScriptedPrompts final : public Prompts {
  public:
    ~ScriptedPrompts() override {
        EXPECT_TRUE(answers_.empty()) << answers_.size() << " answers were never asked for";
    }

    /// The next question will be about this, and is answered so.
    void Expect(Asked about, bool answer) { answers_.push_back({about, answer, {}, {}}); }

    /// The next chooser is answered with this path; an empty one is Cancel.
    void Choose(std::filesystem::path answer) {
        answers_.push_back({std::nullopt, false, std::move(answer), {}});
    }

    std::vector<Question> questions;
    std::vector<FileChoice> choices;
    std::vector<std::string> folderTitles;
    std::vector<Notice> notices;

    std::vector<std::string> NoticeTexts() const {
        std::vector<std::string> texts;
        for (const Notice& notice : notices) texts.push_back(notice.text);
        return texts;
    }

    bool Confirm(const Question& question) override {
        questions.push_back(question);
        const Answer answer = Next(question.text);
        EXPECT_EQ(answer.about, question.about) << question.text;
        return answer.ok;
    }

    std::function<void()> whenTold = [] {};

    void Tell(const Notice& notice) override {
        notices.push_back(notice);
        whenTold();
    }

    std::filesystem::path ChooseOpen(const FileChoice& choice) override { return ChosenFor(choice); }
    std::filesystem::path ChooseSave(const FileChoice& choice) override { return ChosenFor(choice); }
    std::filesystem::path BrowseForFolder(const std::string& title) override {
        folderTitles.push_back(title);
        return Next(title).path;
    }

    /// The popup menu is answered with this; nothing closes it.
    void Pick(std::optional<SaveCommand> command) { answers_.push_back({std::nullopt, false, {}, command}); }

    std::optional<SaveCommand> ChooseSaveCommand() override {
        ++popups;
        return Next("the popup menu").command;
    }

    int popups = 0;

  private:
    struct Answer {
        std::optional<Asked> about;
        bool ok = false;
        std::filesystem::path path;
        std::optional<SaveCommand> command;
    };

    Answer Next(const std::string& asked) {
        if (answers_.empty()) {
            ADD_FAILURE() << "nobody expected to be asked: " << asked;
            return {};
        }
        Answer answer = answers_.front();
        answers_.pop_front();
        return answer;
    }

    std::filesystem::path ChosenFor(const FileChoice& choice) {
        choices.push_back(choice);
        const Answer answer = Next(choice.title);
        EXPECT_FALSE(answer.about) << choice.title;
        return answer.path;
    }

    std::deque<Answer> answers_;
};

/// Notes each percentage, and asks to stop after `stopAfter` of them.
class RecordedProgress final : public Progress {
  public:
    std::vector<double> percents;
    std::size_t stopAfter = std::numeric_limits<std::size_t>::max();

    bool At(double percent) override {
        percents.push_back(percent);
        return percents.size() < stopAfter;
    }
};

/// Notes each command line, and does what a test says in place of a program.
class FakeProcesses final : public ProcessRunner {
  public:
    struct Call {
        std::filesystem::path program;
        std::vector<std::string> arguments;
    };

    std::vector<Call> calls;
    std::function<void(const Call&)> effect = [](const Call&) {};
    std::string trouble;

    std::string RunAndWait(const std::filesystem::path& program,
                           const std::vector<std::string>& arguments) override {
        calls.push_back({program, arguments});
        effect(calls.back());
        return trouble;
    }
};

/// Gives what a test put in.
class FakePictureLoader final : public PictureLoader {
  public:
    ImportedPixels pixels;
    std::optional<Error> error;

    Result<ImportedPixels> Load(const std::filesystem::path& path) override {
        if (error) return Failure(WithPath(*error, path));
        return pixels;
    }
};

struct ScriptedPorts {
    ScriptedPrompts prompts;
    RecordedProgress progress;
    FakeProcesses processes;
    FakePictureLoader pictures;
    Ports ports{prompts, progress, processes, pictures};
};

}  // namespace pictavo::tests
