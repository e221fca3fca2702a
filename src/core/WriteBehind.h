#pragma once

/// Writes whole files on another thread while the next ones are made. Where a disk is quick a small file
/// takes about as long to make as to write; where it is slow nothing is lost.

#include <future>
#include <vector>

#include "core/OutputFile.h"

namespace pictavo {

/// For one thread, which may go on using everything else meanwhile: what it has added is no longer its.
/// What the other thread throws, for a lack of memory, Add and Finish throw. An object that goes without
/// Finish waits for the files at work and drops those that wait.
class WriteBehind {
  public:
    struct File {
        std::filesystem::path target;
        Bytes bytes;
        CommitMode mode = CommitMode::KeepExisting;
    };

    /// Takes a file over. Now and then it waits until those before are written, so that no more is held than
    /// half a MiB and two files. No two files may have one target.
    void Add(File file);

    /// Writes the rest, and returns how WriteWholeFile ended for each, in the order of Add. To be called
    /// once, at the end.
    std::vector<Status> Finish();

  private:
    using Files = std::vector<File>;
    using Ends = std::vector<Status>;

    static Ends WriteAll(const Files& files);
    void HandOver();
    void Await();
    void Append(const Ends& ends);

    Files waiting_;
    std::size_t waitingBytes_ = 0;
    Ends ends_;
    std::future<Ends> atWork_;
};

}  // namespace pictavo
