#pragma once

#include <filesystem>

#include "core/Result.h"

namespace pictavo::cli {

/// A folder of temporary files of this run's own, removed with all in it at the run's end.
class RunFolder {
  public:
    static Result<RunFolder> Create();
    RunFolder(RunFolder&& other) noexcept : path_(std::move(other.path_)) { other.path_.clear(); }
    RunFolder& operator=(RunFolder&&) = delete;
    ~RunFolder();

    const std::filesystem::path& Path() const { return path_; }

  private:
    explicit RunFolder(std::filesystem::path path) : path_(std::move(path)) {}
    std::filesystem::path path_;
};

}  // namespace pictavo::cli
