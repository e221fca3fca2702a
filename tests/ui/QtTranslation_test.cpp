#include "ui/QtTranslation.h"

#include <gtest/gtest.h>

#include "support/TempFolder.h"
#include "support/WidgetApplication.h"

namespace pictavo::tests {
namespace {

/// A file of translations as short as it is taken: its signature, the end of a message, and one hash of it.
Bytes TranslationFile() {
    return {0x3C, 0xB8, 0x64, 0x18, 0xCA, 0xEF, 0x9C, 0x95, 0xCD, 0x21, 0x1C, 0xBF, 0x60,
            0xA1, 0xBD, 0xDD,                                                            // the signature
            0x69, 0x00, 0x00, 0x00, 0x01, 0x01,                                          // messages
            0x42, 0x00, 0x00, 0x00, 0x08, 1,    2,    3,    4,    0,    0,    0,    0};  // hashes
}

TEST(QtTranslation, IsTakenFromTheFileOfTheLanguage) {
    TempFolder temp;
    WriteFile(temp / "qtbase_de.qm", TranslationFile());
    const QString folder = QString::fromStdString(temp.Path().string());
    QTranslator german;
    EXPECT_TRUE(InstallQtTranslation(german, QLocale("de_AT"), folder));
    EXPECT_TRUE(german.filePath().endsWith("qtbase_de.qm"));
    QTranslator polish;
    EXPECT_FALSE(InstallQtTranslation(polish, QLocale("pl_PL"), folder));
}

}  // namespace
}  // namespace pictavo::tests
