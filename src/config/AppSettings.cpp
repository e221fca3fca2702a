#include "config/AppSettings.h"

#include "core/BasicCalculations_Tarsk.h"
#include "core/LineReader.h"

namespace pictavo {

namespace {

/// One key of the file, in the order of the file, and the member that it sets: exactly one of the three is
/// given.
struct Key {
    std::string_view name;
    std::string AppSettings::*text = nullptr;
    bool AppSettings::*flag = nullptr;
    std::optional<std::size_t> recent;
};

constexpr std::array<Key, 14> kKeys = {{
    {"nConvert", &AppSettings::nConvert, nullptr, {}},
    {"Language", &AppSettings::Language, nullptr, {}},
    {"Transparency", nullptr, &AppSettings::Transparency, {}},
    {"CompressGPF", nullptr, &AppSettings::CompressGPF, {}},
    {"DefaultGPF2", nullptr, &AppSettings::DefaultGPF2, {}},
    {"ZeroFilename", nullptr, &AppSettings::ZeroFilename, {}},
    {"HEXFilename", nullptr, &AppSettings::HEXFilename, {}},
    {"ChanR", nullptr, &AppSettings::ChanR, {}},
    {"ChanG", nullptr, &AppSettings::ChanG, {}},
    {"ChanB", nullptr, &AppSettings::ChanB, {}},
    {"ChanA", nullptr, &AppSettings::ChanA, {}},
    {"MRU1", nullptr, nullptr, 0},
    {"MRU2", nullptr, nullptr, 1},
    {"MRU3", nullptr, nullptr, 2},
}};

/// The line without the key and the one character behind it, whatever that is.
std::string ValueOf(const std::string& line, const Key& key) {
    return line.size() > key.name.size() ? line.substr(key.name.size() + 1) : std::string();
}

void Take(const std::string& line, const Key& key, AppSettings& settings) {
    if (!line.starts_with(key.name)) return;
    if (key.text != nullptr) settings.*key.text = ValueOf(line, key);
    if (key.flag != nullptr) settings.*key.flag = line.ends_with("true");
    if (key.recent) settings.MRU[*key.recent] = ValueOf(line, key);
}

}  // namespace

Result<AppSettings> ReadAppSettings(const ByteSource& source, AppSettings initial) {
    LineReader reader(source);
    for (;;) {
        PICTAVO_TRY(const auto line, reader.Next());
        if (!line) return initial;
        for (const Key& key : kKeys) Take(*line, key, initial);
    }
}

Result<AppSettings> LoadAppSettings(const std::filesystem::path& path, AppSettings initial) {
    if (FileMissing(path)) return initial;
    PICTAVO_TRY(const auto source, FileSource::Open(path));
    return ReadAppSettings(*source, std::move(initial));
}

}  // namespace pictavo
