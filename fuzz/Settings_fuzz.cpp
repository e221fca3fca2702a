/// The settings file. What is read and written reads as the same, whatever the lines held.

#include "Holds.h"
#include "Input.h"
#include "PiecewiseSource.h"
#include "config/AppSettings.h"

namespace pictavo::fuzz {
namespace {

bool CanBeTold(const std::string& text) {
    return text.find_first_of("\r\n") == std::string::npos;
}

/// A text with a line end in it has no line, and so reads as what was there before.
AppSettings Tellable(AppSettings settings) {
    if (!CanBeTold(settings.nConvert)) settings.nConvert.clear();
    if (!CanBeTold(settings.Language)) settings.Language.clear();
    for (auto& recent : settings.MRU)
        if (recent && !CanBeTold(*recent)) recent.reset();
    return settings;
}

void CheckWrittenAnew(const AppSettings& settings) {
    const std::string text = SettingsText(settings);
    const auto again = ReadAppSettings(MemorySource(Bytes(text.begin(), text.end())), {});
    Holds(again.has_value(), "written settings can be read");
    Holds(*again == Tellable(settings), "settings written and read are the same");
    Holds(SettingsText(*again) == SettingsText(Tellable(settings)), "the same settings make the same file");
}

AppSettings SettingsFrom(Input& input) {
    AppSettings settings;
    settings.nConvert = input.Text();
    settings.Language = input.Text();
    for (bool AppSettings::*flag :
         {&AppSettings::Transparency, &AppSettings::CompressGPF, &AppSettings::DefaultGPF2,
          &AppSettings::ZeroFilename, &AppSettings::HEXFilename, &AppSettings::ChanR, &AppSettings::ChanG,
          &AppSettings::ChanB, &AppSettings::ChanA})
        settings.*flag = input.Flag();
    const std::size_t files = input.Byte() % 6U;
    for (std::size_t i = 0; i < files; ++i) {
        NoteRecentFile(settings, input.Text());
        Holds(settings.MRU[0].has_value(), "the file opened last is shown");
        Holds(!settings.MRU[2] || settings.MRU[2] != settings.MRU[0], "the third file is not the first");
    }
    return settings;
}

void Run(Input input) {
    const std::size_t piece = PieceLength(input.Byte());
    if (input.Flag()) return CheckWrittenAnew(SettingsFrom(input));
    const auto settings = ReadAppSettings(PiecewiseSource(input.Rest(), piece), {});
    Holds(settings || settings.error().kind == ErrorKind::Malformed, "only a line too long is refused");
    if (settings) CheckWrittenAnew(*settings);
}

}  // namespace
}  // namespace pictavo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    pictavo::fuzz::Run({data, size});
    return 0;
}
