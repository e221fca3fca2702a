/// pictavo-icon FILE.ico: writes the program's icon in the sizes that Windows shows, each as a PNG file,
/// which it takes in icons since Vista.

#include <QFile>
#include <QGuiApplication>
#include <array>
#include <vector>

#include "ui/AppIcon.h"

namespace {

constexpr std::array kSizes{16, 20, 24, 32, 40, 48, 64, 256};
constexpr std::size_t kHeaderSize = 3 * 2;
constexpr std::size_t kEntrySize = 4 * 1 + 2 * 2 + 2 * 4;
constexpr std::size_t kIcon = 1;
constexpr std::size_t kPlanes = 1;
constexpr std::size_t kBitsPerPixel = 32;

/// Numbers of an icon file are little-endian.
void Append(QByteArray& file, std::size_t number, int size) {
    for (int i = 0; i < size; ++i) file.append(static_cast<char>(number >> (8 * i) & 0xFF));
}

void AppendEntry(QByteArray& file, int pixels, std::size_t size, std::size_t offset) {
    Append(file, static_cast<std::size_t>(pixels), 1);  // 256 is stored as 0
    Append(file, static_cast<std::size_t>(pixels), 1);
    Append(file, 0, 2);
    Append(file, kPlanes, 2);
    Append(file, kBitsPerPixel, 2);
    Append(file, size, 4);
    Append(file, offset, 4);
}

QByteArray IconFile() {
    std::vector<pictavo::Bytes> pictures;
    for (const int pixels : kSizes) pictures.push_back(pictavo::AppIconPng(pixels));
    QByteArray file;
    Append(file, 0, 2);
    Append(file, kIcon, 2);
    Append(file, kSizes.size(), 2);
    std::size_t offset = kHeaderSize + kSizes.size() * kEntrySize;
    for (std::size_t i = 0; i < kSizes.size(); ++i) {
        AppendEntry(file, kSizes.at(i), pictures[i].size(), offset);
        offset += pictures[i].size();
    }
    for (const pictavo::Bytes& picture : pictures)
        file.append(reinterpret_cast<const char*>(picture.data()), static_cast<qsizetype>(picture.size()));
    return file;
}

}  // namespace

int main(int count, char** arguments) {
    const QGuiApplication application(count, arguments);
    const QByteArray icon = IconFile();
    QFile file(QGuiApplication::arguments().value(1));
    return file.open(QIODevice::WriteOnly) && file.write(icon) == icon.size() ? 0 : 1;
}
