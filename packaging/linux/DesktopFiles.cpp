/// Writes those of the installed files that the program's own code knows, so that they are told once: the
/// icons of the program and of its file type in each size, and the MIME package. Argument: the folder, made
/// anew.

#include <QGuiApplication>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "shell/MimePackage.h"
#include "ui/AppIcon.h"

namespace {

namespace fs = std::filesystem;
using namespace pictavo;

bool Write(const fs::path& path, ByteView bytes) {
    fs::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file << AsText(bytes) << std::flush;
    if (!file) std::fprintf(stderr, "%s: cannot be written\n", path.c_str());
    return file.good();
}

bool WriteIcons(const fs::path& theme) {
    bool isWritten = true;
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const std::string side = std::to_string(size);
        const fs::path folder = theme / (side + "x" + side);
        const Bytes icon = AppIconPng(size);
        isWritten &= Write(folder / "apps" / "pictavo.png", icon);
        isWritten &= Write(folder / "mimetypes" / (std::string(kPictureMimeIcon) + ".png"), icon);
    }
    return isWritten;
}

}  // namespace

int main(int count, char** arguments) {
    const QGuiApplication application(count, arguments);
    if (count != 2) return 2;
    const fs::path folder = arguments[1];
    fs::remove_all(folder);
    const std::string package = MimePackageText({".gpf", ".gpf2"}, kPictureTypeDescription);
    const bool isPackaged = Write(folder / "mime" / "packages" / "pictavo.xml", AsBytes(package));
    return WriteIcons(folder / "icons" / "hicolor") && isPackaged ? 0 : 1;
}
