#include <QDesktopServices>
#include <QUrl>

#include "core/BasicCalculations_Tarsk.h"
#include "shell/QtPath.h"
#include "shell/ReadMe.h"

namespace pictavo {

void ShowReadMe(const std::vector<std::filesystem::path>& folders) {
    for (const std::filesystem::path& folder : folders) {
        const std::filesystem::path file = folder / "ReadMe.txt";
        if (FileMissing(file)) continue;
        QDesktopServices::openUrl(QUrl::fromLocalFile(QtPath(file)));
        return;
    }
}

}  // namespace pictavo
