#pragma once

/// The finder of embedded files as it is described: block after block, with positions that count from 1. What
/// it and the product's find must be the same.

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "core/Bytes.h"
#include "core/FileRange.h"
#include "tools/EmbeddedFiles.h"

namespace pictavo::tests {

class PlainCarver {
  public:
    PlainCarver(ByteView source, const EmbeddedKind& kind)
        : source_(AsText(source)), size_(static_cast<std::int64_t>(source.size())), kind_(kind) {}

    std::vector<FileRange> Run() {
        ReadBlock(1);
        while (!stopped_) Pass();
        return found_;
    }

  private:
    void Pass() {
        const std::int64_t start = IndexOf(kind_.start);
        std::int64_t end = IndexOf(kind_.end);
        if (end > 0 && start > end) {
            inside_ = true;
        } else {
            if (start > 0) {
                start_ = last_ + start - 255;
                inside_ = true;
                ReadBlock(start_);
            }
            end = IndexOf(kind_.end);
        }
        if (end == 0 || !inside_) return StepOn();
        EndFile(end);
    }

    void StepOn() {
        if (reachedEnd_)
            stopped_ = true;
        else
            ReadBlock(last_ - Length(kind_.start));
    }

    void EndFile(std::int64_t end) {
        const std::int64_t endPosition = last_ + end - 255 + Length(kind_.end) + kind_.endAdjustment;
        Write(endPosition);
        inside_ = false;
        const std::int64_t next = endPosition - kind_.endAdjustment;
        if (next > size_)
            stopped_ = true;
        else
            ReadBlock(next);
    }

    void Write(std::int64_t endPosition) {
        if (start_ == lastWritten_) return;
        lastWritten_ = start_;
        found_.push_back({static_cast<std::uint64_t>(start_ - 1),
                          static_cast<std::uint64_t>(std::min(endPosition - 1, size_))});
    }

    void ReadBlock(std::int64_t position) {
        block_ = position > size_ ? "" : source_.substr(static_cast<std::size_t>(position - 1), 255);
        last_ = position + 254;
        reachedEnd_ = last_ >= size_;
    }

    std::int64_t IndexOf(const Signature& signature) const {
        const auto at = block_.find(signature.bytes);
        return at == std::string::npos ? 0 : static_cast<std::int64_t>(at) + 1;
    }

    static std::int64_t Length(const Signature& signature) {
        return static_cast<std::int64_t>(signature.bytes.size());
    }

    std::string source_;
    std::int64_t size_;
    EmbeddedKind kind_;
    std::string block_;
    std::int64_t last_ = 0;
    std::int64_t start_ = 0;
    std::int64_t lastWritten_ = 0;
    bool inside_ = false;
    bool reachedEnd_ = false;
    bool stopped_ = false;
    std::vector<FileRange> found_;
};

}  // namespace pictavo::tests
