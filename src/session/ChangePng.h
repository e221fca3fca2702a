#pragma once

/// Replaces a PNG file that lies in the flash outside the picture table.

#include "session/Outcome.h"
#include "session/Ports.h"
#include "session/Session.h"

namespace pictavo {

struct ChangedPng {
    Outcome outcome;
    std::string name;          ///< of the patch's section
    std::uint64_t length = 0;  ///< bytes of the new file
};

/// "Change PNG": asks for the new file, then ChangePngFrom.
Outcome ChangePng(Session& session, Ports& ports);

/// Puts the new file's section behind those that are pending; the next patch takes them in. The file's name
/// tells the place: its base name, 1 to 8 hexadecimal digits, is the offset at which the old file begins.
/// Refused, with everything as it was: a file that is missing or no whole PNG, another name, a place where no
/// PNG file begins or ends, "Too large size!", and bytes that a replaced picture of this patch writes.
ChangedPng ChangePngFrom(Session& session, Ports& ports, const std::filesystem::path& path);

}  // namespace pictavo
