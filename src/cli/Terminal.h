#pragma once

/// The terminal that the program runs in, and what it sends while a command runs.

namespace pictavo::cli {

/// Whether standard error is one, and no file or pipe.
bool IsErrorTerminal();

/// From now on an interrupt (Ctrl+C, a polite kill, the terminal's end) lets the command at hand end after
/// the picture it is at; a second one ends the program at once. For commands that heed progress, or that must
/// clean up behind themselves. May be called again.
void CatchInterrupts();

/// Whether one came since.
bool WasInterrupted();

}  // namespace pictavo::cli
