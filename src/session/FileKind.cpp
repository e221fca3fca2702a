#include "session/FileKind.h"

#include <array>
#include <string>
#include <string_view>

#include "core/AsciiText.h"
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

}  // namespace

FileKind KindOnCommandLine(const std::filesystem::path& name) {
    const std::string text = PathText(name);
    for (const Ending& ending : kEndings)
        if (text.ends_with(ending.text)) return ending.kind;
    return FileKind::Unknown;
}

FileKind KindWhenChosen(const std::filesystem::path& name) {
    const std::string text = Lowered(PathText(name));
    for (const Ending& ending : kEndings)
        if (text.ends_with(ending.Chosen())) return ending.kind;
    return FileKind::Unknown;
}

}  // namespace pictavo
