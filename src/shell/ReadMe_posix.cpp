#include <QDesktopServices>
#include <QUrl>

#include "core/BasicCalculations_Tarsk.h"
#include "shell/QtPath.h"
#include "shell/ReadMe.h"

namespace pictavo {

void ShowReadMe(const std::filesystem::path& readMe) {
    if (!FileMissing(readMe)) QDesktopServices::openUrl(QUrl::fromLocalFile(QtPath(readMe)));
}

}  // namespace pictavo
