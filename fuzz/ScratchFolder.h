#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace pictavo::fuzz {

/// A folder of this process's own, in memory where the system has such a place, removed at the end.
class ScratchFolder {
  public:
    ScratchFolder() {
        std::error_code error;
        const std::filesystem::path inMemory = "/dev/shm";
        const bool isThere = std::filesystem::is_directory(inMemory, error);
        std::string name =
            ((isThere ? inMemory : std::filesystem::temp_directory_path()) / "pictavo-fuzz-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) std::abort();
        path_ = name;
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

  private:
    std::filesystem::path path_;
};

}  // namespace pictavo::fuzz
