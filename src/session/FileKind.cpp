#include "session/FileKind.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "core/PathText.h"
#include "session/Messages.h"

namespace pictavo {

namespace {

constexpr std::size_t kChosenLength = 4;

struct Ending {
    std::string_view text;
    FileKind kind;

    std::string_view Chosen() const { return text.substr(text.size() - kChosenLength); }
};

constexpr std::array<Ending, 7> kEndings = {{
    {".bin", FileKind::Fullflash},
    {".gpf", FileKind::Gpf},
    {".gpf2", FileKind::Gpf},
    {".png", FileKind::Picture},
    {".gif", FileKind::Picture},
    {".bmp", FileKind::Picture},
    {".jpg", FileKind::Picture},
}};

/// Whatever the locale says of other letters.
char Lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

FileKind KindOnCommandLine(const std::filesystem::path& name) {
    const std::string text = PathText(name);
    for (const Ending& ending : kEndings)
        if (text.ends_with(ending.text)) return ending.kind;
    return FileKind::Unknown;
}

FileKind KindWhenChosen(const std::filesystem::path& name) {
    std::string text = PathText(name);
    std::transform(text.begin(), text.end(), text.begin(), Lowered);
    for (const Ending& ending : kEndings)
        if (text.ends_with(ending.Chosen())) return ending.kind;
    return FileKind::Unknown;
}

}  // namespace pictavo
