#pragma once

namespace pictavo {

enum class Durability {
    Relaxed,  ///< the system writes to the disk when it likes: for the many files of a batch
    Synced,   ///< the file stands on the disk before it takes its name
};

}  // namespace pictavo
