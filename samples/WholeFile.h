#pragma once

#include <filesystem>
#include <fstream>
#include <system_error>

#include "samples/Bytes.h"
#include "samples/Outcome.h"

namespace pictavo::samples {

/// A file that appears under its name when it is complete: until then it stands beside its place under a
/// hidden name, and goes away when it is not finished.
class WholeFile {
  public:
    explicit WholeFile(std::filesystem::path path);
    WholeFile(const WholeFile&) = delete;
    WholeFile& operator=(const WholeFile&) = delete;
    ~WholeFile();

    /// A failed write is told by Finish.
    void Write(ByteView bytes);

    /// Fails when the file could not be made, written or named; an older file of that name is then as it was.
    Outcome Finish();

  private:
    void NoteFailure();

    std::filesystem::path path_;
    std::filesystem::path temporary_;
    std::ofstream stream_;
    std::error_code failure_;
};

Outcome WriteWholeFile(const std::filesystem::path& path, ByteView bytes);

}  // namespace pictavo::samples
