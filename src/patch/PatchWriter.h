#pragma once

/// Writes a ViKlay patch: text lines that each give a file offset, the old bytes and the new bytes.
/// Layout: docs/formats/patch.md.

#include "core/OutputFile.h"
#include "patch/PatchPlan.h"

namespace pictavo {

/// The eight lines at the head of a patch for this phone, with their ends. Control characters of the phone's
/// texts become blanks, so that none can break a line.
std::string PatchBanner(const FullflashImage& flash);

/// Writes one section: an empty line, the section line, and of a placed picture the line of its table record,
/// an empty line and its data lines. Fails with ReadFailed, Truncated and WriteFailed.
Status WritePatchSection(const FullflashImage& flash, const PatchSection& section, OutputFile& patch);

}  // namespace pictavo
