#include <QCoreApplication>
#include <cstdio>

#include "converter/Conversion.h"
#include "core/ConsoleText.h"
#include "core/ErrorText.h"
#include "core/FailedWrites.h"
#include "core/ProgramArguments.h"
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

int Fail(const std::string& message) {
    std::fprintf(stderr, "pictavo-convert: %s\n", pictavo::OnOneLine(message).c_str());
    return kFailed;
}

int Print(const std::string& text) {
    const bool isWritten = std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0;
    return isWritten ? kDone : Fail("standard output: cannot be written");
}

int Convert(const pictavo::Conversion& conversion) {
    const pictavo::Status converted = pictavo::RunConversion(conversion);
    return converted ? kDone : Fail(pictavo::ErrorText(converted.error()));
}

/// The one error line says it all; what Qt and its readers would add to standard error is dropped.
void DropMessage(QtMsgType, const QMessageLogContext&, const QString&) {}

}  // namespace

int main(int count, char** arguments) {
    qInstallMessageHandler(DropMessage);
    pictavo::ReportFailedWrites();
    const pictavo::ConsoleText console;
    const QCoreApplication application(count, arguments);  // the picture readers look their plugins up by it
    const std::vector<std::string> given = pictavo::ProgramArguments(count, arguments);
    if (given == std::vector<std::string>{"--help"}) return Print(kUsage);
    if (given == std::vector<std::string>{"--version"})
        return Print(std::string("pictavo-convert ") + pictavo::kVersion + "\n");
    const auto conversion = pictavo::ParseConversion(given);
    if (conversion) return Convert(*conversion);
    std::fputs(kUsage, stderr);
    return kWrongUsage;
}
