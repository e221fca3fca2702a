#pragma once

namespace pictavo {

/// From now on a write beyond the limit of a file's size, or into a pipe that nobody reads any more, fails
/// like one to a full disk, and does not end the program, which could not clean up then. Every program begins
/// with it.
void ReportFailedWrites();

}  // namespace pictavo
