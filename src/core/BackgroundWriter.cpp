#include "core/BackgroundWriter.h"

#include <utility>

namespace pictavo {

namespace {

/// Little enough for the memory to be used again and again while it is in the processor's cache.
constexpr std::size_t kMostWaitingBytes = std::size_t{1} << 20;

}  // namespace

BackgroundWriter::BackgroundWriter() : thread_([this] { Run(); }) {}

BackgroundWriter::~BackgroundWriter() {
    if (thread_.joinable()) Finish();
}

void BackgroundWriter::Write(Job job) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return waitingBytes_ < kMostWaitingBytes; });
    waitingBytes_ += job.bytes.size();
    waiting_.push_back(std::move(job));
    changed_.notify_all();
}

std::vector<BackgroundWriter::Result> BackgroundWriter::Finish() {
    {
        const std::lock_guard lock(mutex_);
        isLast_ = true;
    }
    changed_.notify_all();
    thread_.join();
    return std::move(results_);
}

void BackgroundWriter::Run() {
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return isLast_ || !waiting_.empty(); });
        if (waiting_.empty()) return;
        Job job = std::move(waiting_.front());
        waiting_.pop_front();
        Write(lock, std::move(job));
    }
}

void BackgroundWriter::Write(std::unique_lock<std::mutex>& lock, Job job) {
    lock.unlock();
    const Status status = WriteWholeFile(job.target, job.bytes, job.mode);
    lock.lock();
    waitingBytes_ -= job.bytes.size();
    results_.push_back({job.tag, status});
    changed_.notify_all();
}

}  // namespace pictavo
