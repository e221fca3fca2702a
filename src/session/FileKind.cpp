#include "session/FileKind.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "codec/GPFcodec.h"
#include "core/AsciiText.h"
#include "core/PathText.h"

namespace pictavo {

namespace {

constexpr const char* kFullflashExtension = ".bin";
constexpr std::size_t kChosenLength = 4;

/// The kind of which one of the extensions is the name's.
template <typename IsOfName>
FileKind KindBy(IsOfName isOfName) {
    const auto holdsIt = [&](const auto& extensions) {
        return std::any_of(extensions.begin(), extensions.end(), isOfName);
    };
    if (isOfName(kFullflashExtension)) return FileKind::Fullflash;
    if (holdsIt(kGpfExtensions)) return FileKind::Gpf;
    return holdsIt(kPlainPictureExtensions) ? FileKind::Picture : FileKind::Unknown;
}

}  // namespace

FileKind KindOnCommandLine(const std::filesystem::path& name) {
    return KindBy([text = PathText(name)](std::string_view extension) { return text.ends_with(extension); });
}

FileKind KindWhenChosen(const std::filesystem::path& name) {
    return KindBy([text = Lowered(PathText(name))](std::string_view extension) {
        return text.ends_with(extension.substr(extension.size() - kChosenLength));
    });
}

}  // namespace pictavo
