#pragma once

/// Brings what a command met before the user.

#include "session/Messages.h"
#include "session/Outcome.h"
#include "session/Ports.h"
#include "session/Session.h"

namespace pictavo {

/// Shows the error's box or boxes.
void Tell(const Session& session, Ports& ports, const Error& error);

/// Shows the error's box and ends the command with it.
Outcome Refuse(const Session& session, Ports& ports, const Error& error);

/// The same for a file that cannot be opened, in the command's own form.
Outcome RefuseMissing(const Session& session, Ports& ports, const std::filesystem::path& path,
                      MissingForm form);

/// One box that names each problem, by number, file and reason.
void TellProblems(Ports& ports, const Outcome& outcome);

/// The error of a batch that the user stopped.
Error StoppedError();

/// Tells that `done` of a batch's `count` parts are done, and yields. False when the user stops the batch
/// there, which the outcome then notes as its last problem. `count` is at least 1.
bool GoOn(Ports& ports, std::size_t done, std::size_t count, Outcome& outcome);

/// True when the user stopped the batch: it ends with that problem.
bool WasStopped(const Outcome& outcome);

/// Ends a batch: a box that names what was passed over, if anything was, then the completion message, unless
/// the user stopped it.
void TellBatchEnd(const Session& session, Ports& ports, const Outcome& outcome);

/// The same with a completion message of the command's own.
void TellBatchEnd(Ports& ports, const Outcome& outcome, const Notice& completion);

}  // namespace pictavo
