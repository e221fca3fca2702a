/// What the window does to its settings file, as a program: SettingsWriter whole|recent FILE.

#include <iostream>
#include <string_view>

#include "config/AppSettings.h"

int main(int, char** arguments) {
    using namespace pictavo;
    AppSettings settings;
    settings.Language = "German";
    NoteRecentFile(settings, "/home/someone/phone.bin");
    const std::filesystem::path file(arguments[2]);
    const bool isWhole = std::string_view(arguments[1]) == "whole";
    const Status written = isWhole ? SaveAppSettings(file, settings) : AppendRecentFiles(file, settings);
    if (written) return 0;
    std::cerr << written.error().path.string() << ": " << written.error().detail << '\n';
    return 1;
}
