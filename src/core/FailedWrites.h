#pragma once

namespace pictavo {

/// From now on a write beyond the limit of a file's size fails like one to a full disk, and does not end the
/// program. Every program begins with it.
void ReportFullDisks();

}  // namespace pictavo
