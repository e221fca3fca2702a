#pragma once

/// Saves the pictures of the list into a folder, under names made from their numbers.

#include <set>

#include "session/Outcome.h"
#include "session/Ports.h"
#include "session/Session.h"

namespace pictavo {

enum class BatchFormat { Bmp, Gpf, Gpf2, Png };

struct SaveRequest {
    std::filesystem::path folder;
    BatchFormat format = BatchFormat::Bmp;
    std::optional<std::set<int>> numbers;  ///< only these pictures; all when nothing
};

/// "Save as BMPs" and "Save as GPFs": ask for the folder (and the variant), then SavePictures.
Outcome SaveAsBmps(Session& session, Ports& ports);
Outcome SaveAsGpfs(Session& session, Ports& ports);

/// Shows each picture in list order and writes it. A GPF takes the row's type and the stored bytes as they
/// stand (of a replaced row those of its work file); a BMP and a PNG carry alpha when the picture has it. A
/// picture that cannot be decoded gives no file; one that the flash ends inside is written with what there
/// is; both, and outputs that fail, are problems of the outcome, and the others go on. A declined overwrite
/// skips that one file. Kept: a GPF of a picture of more than 255 rows is written all the same, and its
/// header says 255; the outcome warns of it.
Outcome SavePictures(Session& session, Ports& ports, const SaveRequest& request);

}  // namespace pictavo
