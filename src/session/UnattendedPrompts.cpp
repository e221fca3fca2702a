#include "session/UnattendedPrompts.h"

namespace pictavo {

bool UnattendedPrompts::Confirm(const Question& question) {
    if (question.about == Asked::Overwrite) return user_.Confirm(question);
    const auto answered = answers_.find(question.about);
    if (answered != answers_.end()) return answered->second;
    return answers_[question.about] = user_.Confirm(question);
}

std::filesystem::path UnattendedPrompts::ChooseSave(const FileChoice& choice) {
    std::filesystem::path name = baseName_;
    name += choice.defaultExtension;
    return name;
}

}  // namespace pictavo
