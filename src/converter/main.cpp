#include <QCoreApplication>
#include <QString>
#include <algorithm>
#include <cstdio>

#include "converter/Conversion.h"
#include "core/Version.h"

namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

constexpr const char* kUsage =
    "Usage: pictavo-convert -out png|bmp -ctype rgba -o OUT IN\n"
    "       pictavo-convert -out png|bmp -ctype rgb -truecolors -o OUT IN\n"
    "       pictavo-convert --help | --version\n"
    "Converts a PNG file or a bitmap of at most 240 x 320 pixels to a PNG file or a bitmap: with rgba the\n"
    "alpha channel is kept, with rgb transparent parts are laid over white.\n";

/// Without the program's name. Taken from the system where it gives bytes, since a QString would not keep
/// those of a file's name that are no UTF-8.
std::vector<std::string> GivenArguments([[maybe_unused]] int count, [[maybe_unused]] char** arguments) {
#ifdef _WIN32
    std::vector<std::string> given;
    for (const QString& argument : QCoreApplication::arguments().mid(1))
        given.push_back(argument.toStdString());
    return given;
#else
    return {arguments + std::min(count, 1), arguments + count};
#endif
}

int Fail(const std::string& message) {
    std::fprintf(stderr, "pictavo-convert: %s\n", message.c_str());
    return kFailed;
}

int Print(const std::string& text) {
    const bool isWritten = std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0;
    return isWritten ? kDone : Fail("standard output: can not be written");
}

int Convert(const pictavo::Conversion& conversion) {
    const pictavo::Status converted = pictavo::RunConversion(conversion);
    if (converted) return kDone;
    const std::u8string path = converted.error().path.u8string();
    return Fail(std::string(path.begin(), path.end()) + ": " + converted.error().detail);
}

/// The one error line says it all; what Qt and its readers would add to standard error is dropped.
void DropMessage(QtMsgType, const QMessageLogContext&, const QString&) {}

}  // namespace

int main(int count, char** arguments) {
    qInstallMessageHandler(DropMessage);
    const QCoreApplication application(count, arguments);  // the picture readers look their plugins up by it
    const std::vector<std::string> given = GivenArguments(count, arguments);
    if (given == std::vector<std::string>{"--help"}) return Print(kUsage);
    if (given == std::vector<std::string>{"--version"})
        return Print(std::string("pictavo-convert ") + pictavo::kVersion + "\n");
    const auto conversion = pictavo::ParseConversion(given);
    if (conversion) return Convert(*conversion);
    std::fputs(kUsage, stderr);
    return kWrongUsage;
}
