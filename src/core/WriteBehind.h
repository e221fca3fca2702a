#pragma once

/// Writes whole files on another thread while the next ones are made. Where a disk is quick a small file
/// takes about as long to make as to write; where it is slow nothing is lost.

#include <future>
#include <vector>

#include "core/OutputFile.h"

namespace pictavo {

class WriteBehind {
  public:
    struct File {
        std::filesystem::path target;
        Bytes bytes;
        CommitMode mode = CommitMode::KeepExisting;
    };

    /// Takes a file over. Now and then it waits until those before are written, so that no more than about
    /// half a MiB is held. No two files may have one target.
    void Add(File file);

    /// Waits until all are written; how WriteWholeFile ended for each, in the order of Add. To be called
    /// once, at the end: without it the last files are not written.
    std::vector<Status> Finish();

  private:
    using Files = std::vector<File>;
    using Ends = std::vector<Status>;

    static Ends WriteAll(const Files& files);
    void HandOver();
    void Await();

    Files waiting_;
    std::size_t waitingBytes_ = 0;
    Ends ends_;
    std::future<Ends> atWork_;
};

}  // namespace pictavo
