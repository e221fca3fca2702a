#include "shell/SystemAssociations.h"

#include "codec/GPFcodec.h"
#include "shell/AssociatedProgram.h"
#include "shell/CFileAssociation.h"
#include "shell/MimePackage.h"

namespace pictavo {

std::string SystemAssociations::GetAssociatedProgram(const std::string& extension) {
    const auto tell = [this](const std::string& text) { prompts_.Tell({"", text}); };
    return pictavo::GetAssociatedProgram(store_, extension, tell);
}

Status SystemAssociations::RegisterPictureFileTypes(const std::string& command) {
    if (!command.ends_with(kFileArgument))
        return Fail(ErrorKind::Malformed, "the command to register takes no file");
    const std::string program = command.substr(0, command.size() - kFileArgument.size());
    Status written;
    for (const char* extension : kGpfExtensions) {
        const Status status = RegisterPictureFileType(store_, program, extension, kPictureTypeDescription);
        if (written) written = status;
    }
    const Status committed = store_.Commit();
    return written ? committed : written;
}

}  // namespace pictavo
