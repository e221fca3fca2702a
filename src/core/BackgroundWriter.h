#pragma once

/// Writes whole files on a thread of its own, so that the next file of a batch is made while the last one is
/// written. What is waiting is bounded: a slow disk slows the caller down instead of filling the memory.

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

#include "core/OutputFile.h"

namespace pictavo {

class BackgroundWriter {
  public:
    struct Job {
        std::filesystem::path target;
        Bytes bytes;
        CommitMode mode = CommitMode::KeepExisting;
        int tag = 0;  ///< the caller's, given back with the result
    };

    struct Result {
        int tag = 0;
        Status status;  ///< as WriteWholeFile ended
    };

    BackgroundWriter();
    BackgroundWriter(const BackgroundWriter&) = delete;
    BackgroundWriter& operator=(const BackgroundWriter&) = delete;

    /// Writes all that is waiting; what became of it is lost.
    ~BackgroundWriter();

    /// Takes a file over. Waits while more than 1 MiB is waiting. Not to be called after Finish.
    void Write(Job job);

    /// Waits until all is written; one result for each file, in the order of the calls.
    std::vector<Result> Finish();

  private:
    void Run();
    void Write(std::unique_lock<std::mutex>& lock, Job job);

    std::mutex mutex_;  // guards all below but the thread
    std::condition_variable changed_;
    std::deque<Job> waiting_;
    std::size_t waitingBytes_ = 0;
    bool isLast_ = false;  // no further file will come
    std::vector<Result> results_;
    std::thread thread_;
};

}  // namespace pictavo
