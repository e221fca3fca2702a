#include "session/OpenFullflash.h"

#include <utility>

#include "core/FlashText.h"

namespace pictavo {

namespace {

std::string Labelled(const std::string& label, const std::string& value) {
    return label + ": " + value;
}

void DropPendingPngPatch(Session& session) {
    if (!std::exchange(session.pngPatchPending, false)) return;
    RemoveWorkFile(session.workFiles.PngPatch());
}

}  // namespace

Status OpenFullflash(Session& session, const std::filesystem::path& path, Progress& progress) {
    PICTAVO_TRY(FullflashImage flash, OpenFullflashImage(path));
    const auto tellProgress = [&](int number, int most) { progress.At(100.0 * number / most); };
    PICTAVO_TRY(PictureTable table, ReadPictureTable(flash, tellProgress));
    progress.At(100);
    // Kept: a table that fills up without an end marker leaves picnum at what the last flash had.
    flash.picnum = table.endMet ? static_cast<int>(table.rows.size()) - 1 : session.flash.picnum;
    session.flash = std::move(flash);
    session.rows = std::move(table.rows);
    session.replaced.assign(session.rows.size(), false);
    session.savePatchEnabled = false;
    session.shown = {};
    DropPendingPngPatch(session);
    return {};
}

Status CheckHoldsTable(const FullflashImage& flash) {
    if (flash.pitOffset && *flash.pitOffset < flash.source->Size()) return {};
    return Fail(ErrorKind::UnknownFile, flash.source->Path(),
                "is no fullflash, or one cut short: it holds no picture table");
}

void CloseFullflash(Session& session) {
    const int picnum = session.flash.picnum;
    session.flash = {};
    session.flash.picnum = picnum;  // kept: see PictureTable::endMet
    session.rows.clear();
    session.replaced.clear();
    session.savePatchEnabled = false;
    session.shown = {};
    DropPendingPngPatch(session);
}

std::string IdentificationText(const LanguageTable& texts, const FullflashImage& flash) {
    return Labelled(texts.str_mModel, FlashText(flash.mModel)) + "\r" + Labelled(texts.str_firmW, flash.fw) +
           "\r" + Labelled(texts.str_lngPa, FlashText(flash.lngPack)) + "\r\r" +
           Labelled(texts.str_platf, flash.platform) + "\r" +
           Labelled(texts.str_manuf, FlashText(flash.ManufN));
}

}  // namespace pictavo
