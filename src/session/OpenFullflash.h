#pragma once

#include "session/Outcome.h"
#include "session/Ports.h"
#include "session/Session.h"

namespace pictavo {

/// Opens a fullflash in place of the one that is open, and reads its picture table. A pending patch of PNG
/// files is dropped; work files stay; nothing is shown any more. It is never stopped half way: what
/// `progress` answers is passed over. When the file cannot be opened or read, all is as it was.
Status OpenFullflash(Session& session, const std::filesystem::path& path, Progress& progress);

/// Fails with UnknownFile, naming the file, when the open flash holds no picture table: then it is no
/// fullflash, or one cut short.
Status CheckHoldsTable(const FullflashImage& flash);

/// Lets the flash go, with all that was known of it and what is shown. Kept: `picnum` stays; so do the work
/// files.
void CloseFullflash(Session& session);

/// Six lines about the phone, parted by carriage returns.
std::string IdentificationText(const LanguageTable& texts, const FullflashImage& flash);

}  // namespace pictavo
