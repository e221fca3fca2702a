#pragma once

#include <QIODevice>

#include "core/ByteSource.h"

namespace pictavo {

/// A ByteSource as Qt's readers want it. Files are given to Qt this way and not by name, because a name on
/// Linux may hold bytes that a QString cannot.
class SourceDevice final : public QIODevice {
  public:
    /// Open for reading from the start. `source` must outlive the device.
    explicit SourceDevice(const ByteSource& source);

    bool isSequential() const override { return false; }
    qint64 size() const override { return static_cast<qint64>(source_.Size()); }
    bool seek(qint64 position) override;

  protected:
    qint64 readData(char* into, qint64 most) override;
    qint64 writeData(const char*, qint64) override { return -1; }

  private:
    const ByteSource& source_;
    std::uint64_t position_ = 0;
};

}  // namespace pictavo
