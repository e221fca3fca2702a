#include "cli/OptionPrompts.h"

#include "core/NoOtherValue.h"

namespace pictavo::cli {

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
    NoOtherValue();
}

}  // namespace pictavo::cli
