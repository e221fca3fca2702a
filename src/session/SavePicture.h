#pragma once

/// Saves the picture that is shown as one file. The functions with a chooser, which proposes the picture's
/// number for a name, are the menu commands; those with a path are what they end in, and what the command
/// line calls.

#include "session/Outcome.h"
#include "session/Ports.h"
#include "session/Session.h"

namespace pictavo {

/// "Save as GPF" in the depth that a compressed type code names (81, 85, 88, 8A): asks for the variant, the
/// name, an overwrite and the compression. Kept: with CompressGPF on, 1 bit stays compressed and so is always
/// refused.
Outcome SaveAsGpf(Session& session, Ports& ports, std::uint8_t typeCode);

/// "Save as BMP", with alpha when the picture has one and the user wants it.
Outcome SaveAsBmp(Session& session, Ports& ports);

/// The flagged channels as a bitmap of 32 bits, under a name that the chooser proposes.
Outcome SaveChannelsAsBmp(Session& session, Ports& ports, const std::string& suggestedName,
                          const ChannelFlags& flags);

/// "Save as PNG", the same, through the converter.
Outcome SaveAsPng(Session& session, Ports& ports);

/// Write the picture, with no question but the overwrite. `input` is a file that must not be written. The
/// number in the header is the session's picture number. A bitmap has whole pixels, or the flagged channels.
Outcome SaveGpfTo(Session& session, Ports& ports, const std::filesystem::path& path, bool isGPF2,
                  std::uint8_t typeCode, const std::filesystem::path& input = {});
Outcome SaveBmpTo(Session& session, Ports& ports, const std::filesystem::path& path, bool withAlpha,
                  const std::filesystem::path& input = {}, const ChannelFlags& flags = {});
Outcome SavePngTo(Session& session, Ports& ports, const std::filesystem::path& path, bool withAlpha,
                  const std::filesystem::path& input = {});

/// Writes the Raster as a bitmap, whole pixels or the flagged channels; a file of that name is replaced
/// without a question. No command uses it: SaveBmpTo asks first.
Status SaveAsBMP(const Session& session, const std::filesystem::path& path, bool withAlpha,
                 const ChannelFlags& flags = {});

/// The variant for a save: GPF2 without a question when it is the default.
bool AskGpf2(const Session& session, Ports& ports);

}  // namespace pictavo
