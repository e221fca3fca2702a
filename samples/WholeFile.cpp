#include "samples/WholeFile.h"

#include <cerrno>
#include <random>
#include <string>
#include <system_error>
#include <utility>

namespace pictavo::samples {

namespace {

std::filesystem::path HiddenNeighbour(const std::filesystem::path& path) {
    std::random_device random;
    std::filesystem::path name = ".";
    name += path.filename();
    name += "." + std::to_string(random()) + ".part";
    return path.parent_path() / name;
}

Outcome CanNotWrite(const std::filesystem::path& path, const std::error_code& why) {
    return Outcome::Failed(path.string() + ": cannot be written: " + why.message());
}

}  // namespace

WholeFile::WholeFile(std::filesystem::path path)
    : path_(std::move(path)), temporary_(HiddenNeighbour(path_)), stream_(temporary_, std::ios::binary) {
    NoteFailure();
}

WholeFile::~WholeFile() {
    if (temporary_.empty()) return;
    stream_.close();
    std::error_code ignored;
    std::filesystem::remove(temporary_, ignored);
}

void WholeFile::Write(ByteView bytes) {
    // The stream knows characters only.
    stream_.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    NoteFailure();
}

/// The stream does not keep the reason of a failure, but the calls under it leave it behind.
void WholeFile::NoteFailure() {
    if (!stream_ && !failure_) failure_ = {errno == 0 ? EIO : errno, std::generic_category()};
}

Outcome WholeFile::Finish() {
    stream_.close();
    NoteFailure();
    if (failure_) return CanNotWrite(path_, failure_);
    std::error_code error;
    std::filesystem::rename(temporary_, path_, error);
    if (error) return CanNotWrite(path_, error);
    temporary_.clear();
    return Outcome::Done();
}

Outcome WriteWholeFile(const std::filesystem::path& path, ByteView bytes) {
    WholeFile file(path);
    file.Write(bytes);
    return file.Finish();
}

}  // namespace pictavo::samples
