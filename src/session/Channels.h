#pragma once

/// Single colour channels of the picture that is shown. No flag at all means whole pixels.

#include "session/Outcome.h"
#include "session/Ports.h"
#include "session/Session.h"

namespace pictavo {

/// Saves the flagged channels as a bitmap of 32 bits: asks for the name ("channels" is proposed) and the
/// overwrite. Without a picture it refuses, without a box.
Outcome SaveChannels(Session& session, Ports& ports, const ChannelFlags& flags);

/// Loads the flagged channels from a picture file: asks for it. A file that is not named .bmp, .gif, .jpg or
/// .png, in whatever case, is refused without a box. After a refusal the picture is as it was.
Outcome LoadChannels(Session& session, Ports& ports, const ChannelFlags& flags);

/// Keeps the choice of channels in the settings and their file; nothing else of them changes. Fails as
/// ChangeSettings does.
Status RememberChannels(Session& session, const ChannelFlags& flags);

}  // namespace pictavo
