#include "core/WriteBehind.h"

#include <utility>

namespace pictavo {

namespace {

/// Enough that the threads seldom meet, and little enough for the memory to stay in the processor's cache.
constexpr std::size_t kHandedOver = std::size_t{256} * 1024;

}  // namespace

void WriteBehind::Add(File file) {
    waitingBytes_ += file.bytes.size();
    waiting_.push_back(std::move(file));
    if (waitingBytes_ >= kHandedOver) HandOver();
}

std::vector<Status> WriteBehind::Finish() {
    Await();
    Append(WriteAll(waiting_));
    return std::move(ends_);
}

WriteBehind::Ends WriteBehind::WriteAll(const Files& files) {
    Ends ends;
    ends.reserve(files.size());
    for (const File& file : files) ends.push_back(WriteWholeFile(file.target, file.bytes, file.mode));
    return ends;
}

/// Where the system has no thread left, the files are written when they are waited for.
void WriteBehind::HandOver() {
    Await();
    atWork_ = std::async(std::launch::async | std::launch::deferred, WriteAll, std::move(waiting_));
    waiting_.clear();
    waitingBytes_ = 0;
}

void WriteBehind::Await() {
    if (atWork_.valid()) Append(atWork_.get());
}

void WriteBehind::Append(const Ends& ends) {
    ends_.insert(ends_.end(), ends.begin(), ends.end());
}

}  // namespace pictavo
