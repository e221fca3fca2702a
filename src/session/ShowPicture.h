#pragma once

/// Brings a phone picture into the Raster: one of the flash's, or a GPF file's.

#include "codec/GPFcodec.h"
#include "session/Session.h"

namespace pictavo {

/// Shows row `index` of the list: its replacement when it is bold and the work file is there, else the
/// flash's picture. Kept: a type code that names no bit depth is decoded in that of the picture shown before.
/// Fails as DecodePicture and LoadGpf do; then nothing counts as shown, and the caption says why.
Status ShowRow(Session& session, std::size_t index);

/// Shows the picture of a GPF or GPF2 file. Fails as LoadGpf does.
Result<LoadedGpf> LoadGPFfile(Session& session, const std::filesystem::path& path);

/// The same for a picture that is taken into another file: a GPF that ends inside the picture's data fails
/// with Truncated, since what it does not hold would be taken as black. The picture is shown all the same.
Status LoadGpfWhole(Session& session, const std::filesystem::path& path);

/// True when row `index` is bold and its work file is there, be it that it cannot be read: then showing or
/// saving the row fails, and the flash's picture never takes the place of the replacement.
bool HasReplacement(const Session& session, std::size_t index);

/// Notes that a load failed: the view then shows no picture but the reason.
void NothingShown(ShownPicture& shown, const std::string& subject, const std::string& reason);

/// The error of a picture whose file ended inside its data; nothing when it is whole.
std::optional<Error> IncompleteError(const ShownPicture& shown, const std::filesystem::path& path);

}  // namespace pictavo
