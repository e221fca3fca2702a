#include "config/AppSettings.h"

#include "core/BasicCalculations_Tarsk.h"
#include "core/LineReader.h"
#include "core/OutputFile.h"
#include "core/SystemNames.h"

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

constexpr const char* kLineEnd = "\r\n";

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

/// What the key's line will hold; nothing for a recent file that is not shown.
std::optional<std::string> StoredValue(const AppSettings& settings, const Key& key) {
    if (key.text != nullptr) return settings.*key.text;
    if (key.flag != nullptr) return settings.*key.flag ? "true" : "false";
    return settings.MRU[*key.recent];
}

/// A line end in a file's name must not begin a setting of its own: such a value has no line.
std::string LineOf(const AppSettings& settings, const Key& key) {
    const auto value = StoredValue(settings, key);
    if (!value || value->find_first_of("\r\n") != std::string::npos) return {};
    return std::string(key.name) + "=" + *value + kLineEnd;
}

std::string RecentLines(const AppSettings& settings) {
    std::string lines;
    for (const Key& key : kKeys)
        if (key.recent) lines += LineOf(settings, key);
    return lines;
}

/// What parts the lines to append from the last line there.
Result<std::string> MissingLineEnd(const ByteSource& source) {
    if (source.Size() == 0) return std::string();
    PICTAVO_TRY(const Bytes last, source.ReadExactly(source.Size() - 1, 1));
    return std::string(last.front() == '\n' ? "" : kLineEnd);
}

Status CopyOldLines(const std::filesystem::path& path, OutputFile& file) {
    PICTAVO_TRY(const auto source, FileSource::Open(path));
    PICTAVO_TRY(CopyRange(*source, 0, source->Size(), file));
    PICTAVO_TRY(const std::string lineEnd, MissingLineEnd(*source));
    return file.Write(AsBytes(lineEnd));
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
    if (NameIsFree(path)) return initial;
    PICTAVO_TRY(const auto source, FileSource::Open(path));
    return ReadAppSettings(*source, std::move(initial));
}

std::string SettingsText(const AppSettings& settings) {
    std::string lines;
    for (const Key& key : kKeys) lines += LineOf(settings, key);
    return lines;
}

Status SaveAppSettings(const std::filesystem::path& path, const AppSettings& settings) {
    return WriteWholeFile(path, AsBytes(SettingsText(settings)), CommitMode::Replace, Durability::Synced);
}

Status AppendRecentFiles(const std::filesystem::path& path, const AppSettings& settings) {
    const std::string lines = RecentLines(settings);
    if (lines.empty()) return {};
    PICTAVO_TRY(OutputFile file, OutputFile::Create(path));
    if (system_file::TypeOfFile(path) != std::filesystem::file_type::not_found)
        PICTAVO_TRY(CopyOldLines(path, file));
    PICTAVO_TRY(file.Write(AsBytes(lines)));
    return file.Commit(CommitMode::Replace, Durability::Synced);
}

void NoteRecentFile(AppSettings& settings, const std::string& path) {
    auto& [first, second, third] = settings.MRU;
    if (first && *first != path) {
        if (second) third = second;
        second = first;
    }
    first = path;
    if (third == first) third.reset();
}

}  // namespace pictavo
