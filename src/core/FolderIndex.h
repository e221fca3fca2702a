#pragma once

/// The files in a folder, read once, so that thousands of look-ups by name cost one reading of the folder.
/// Regular files only, also through links: a folder or pipe hides no file.

#include <filesystem>
#include <map>
#include <optional>
#include <string>

#include "core/Result.h"

namespace pictavo {

class FolderIndex {
  public:
    /// Fails with FileMissing when the folder cannot be read.
    static Result<FolderIndex> Read(const std::filesystem::path& folder);

    /// The file of exactly this name, in UTF-8, else one whose name differs only in the case of A to Z; of
    /// several such the first in the order of their names. Nothing when there is none.
    std::optional<std::filesystem::path> Find(const std::string& name) const;

  private:
    std::filesystem::path folder_;
    std::multimap<std::string, std::filesystem::path> names_;  // by the name's text in lower case
};

}  // namespace pictavo
