#include <QDesktopServices>
#include <QUrl>

#include "core/BasicCalculations_Tarsk.h"
#include "shell/ReadMe.h"

namespace pictavo {

void ShowReadMe(const std::vector<std::filesystem::path>& folders) {
    for (const std::filesystem::path& folder : folders) {
        const std::filesystem::path file = folder / "ReadMe.txt";
        if (FileMissing(file)) continue;
        const std::u8string text = file.u8string();
        QDesktopServices::openUrl(
            QUrl::fromLocalFile(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()))));
        return;
    }
}

}  // namespace pictavo
