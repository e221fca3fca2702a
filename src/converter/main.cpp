#include <QCoreApplication>
#include <QString>
#include <cstdio>

#include "converter/Conversion.h"
#include "core/Version.h"

namespace {

constexpr const char* kUsage =
    "Usage: pictavo-convert -out png|bmp -ctype rgba -o OUT IN\n"
    "       pictavo-convert -out png|bmp -ctype rgb -truecolors -o OUT IN\n"
    "Converts a picture of at most 240 x 320 pixels to a PNG file or a bitmap: with rgba the alpha channel "
    "is kept, with\n"
    "rgb transparent parts are laid over white.\n";

std::vector<std::string> ArgumentsOf(const QCoreApplication& application) {
    std::vector<std::string> arguments;
    for (const QString& argument : application.arguments().mid(1))
        arguments.push_back(argument.toStdString());
    return arguments;
}

int Convert(const pictavo::Conversion& conversion) {
    const pictavo::Status converted = pictavo::RunConversion(conversion);
    if (converted) return 0;
    const pictavo::Error& error = converted.error();
    std::fprintf(stderr, "pictavo-convert: %s: %s\n", error.path.string().c_str(), error.detail.c_str());
    return 1;
}

}  // namespace

int main(int count, char** arguments) {
    const QCoreApplication application(count, arguments);  // the picture readers are plugins that it finds
    const std::vector<std::string> given = ArgumentsOf(application);
    if (given == std::vector<std::string>{"--help"}) return std::fputs(kUsage, stdout) < 0 ? 1 : 0;
    if (given == std::vector<std::string>{"--version"})
        return std::printf("pictavo-convert %s\n", pictavo::kVersion) < 0;
    const auto conversion = pictavo::ParseConversion(given);
    if (conversion) return Convert(*conversion);
    std::fputs(kUsage, stderr);
    return 2;
}
