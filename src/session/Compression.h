#pragma once

/// The question of compression, which every save in a phone format shares.

#include "codec/PictureType.h"
#include "session/Ports.h"
#include "session/Session.h"

namespace pictavo {

/// The compressed type code as given, or its uncompressed form when the user declines; no question with
/// CompressGPF.
std::uint8_t AskCompression(const Session& session, Ports& ports, std::uint8_t typeCode);

/// The compressed type of the GPF that a save command writes; nothing for one that writes no GPF.
std::optional<std::uint8_t> TypeOf(SaveCommand command);

/// Fails with OneBitCompressed for type 81, which is read but never written.
Status CheckWritable(std::uint8_t typeCode);

}  // namespace pictavo
