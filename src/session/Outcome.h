#pragma once

/// How a command ended, for fronts that answer by rule: boxes have been shown already when an Outcome comes
/// back.

#include <optional>
#include <string>
#include <vector>

#include "core/Result.h"

namespace pictavo {

/// Something that did not go as asked, and the picture concerned when there is one.
struct Problem {
    Error error;
    std::optional<int> number;  ///< of the picture
};

struct Outcome {
    enum class End {
        Done,       ///< ran to its end; `problems` tells what was passed over
        Cancelled,  ///< a chooser or question was answered with Cancel
        Refused,    ///< ended early because of the last problem
    };

    End end = End::Done;
    std::vector<Problem> problems;
    std::size_t written = 0;   ///< files
    std::string note = {};     ///< what was done, in English and on one line, for a status line; may be empty
    std::string warning = {};  ///< what a user may not expect of it, though it is no failure; likewise

    bool IsClean() const { return end == End::Done && problems.empty(); }

    static Outcome Wrote(std::size_t files) { return {End::Done, {}, files}; }
    static Outcome Cancelled() { return {End::Cancelled, {}, 0}; }
    static Outcome Refused(Error error, std::optional<int> number = std::nullopt) {
        return {End::Refused, {{std::move(error), number}}, 0};
    }
};

}  // namespace pictavo
