#include "session/StartUp.h"

#include <algorithm>

#include "codec/GPFcodec.h"
#include "core/PathText.h"
#include "session/Messages.h"
#include "session/PngConverter.h"
#include "session/Report.h"

namespace pictavo {

namespace {

/// Kept: the program's path stands without quotation marks, blanks or not.
std::string OpenCommand(const std::filesystem::path& executable) {
    return PathText(executable) + std::string(kFileArgument);
}

bool IsRegistered(Associations& associations, const std::string& command) {
    return std::all_of(kGpfExtensions.begin(), kGpfExtensions.end(), [&](const char* extension) {
        return associations.GetAssociatedProgram(extension) == command;
    });
}

}  // namespace

void RemoveTemporaries(Session& session) {
    RemovePngTemporaries(session);
    RemoveWorkFile(session.workFiles.PngPatch());
    session.pngPatchPending = false;
}

Outcome CheckAssociation(Session& session, Ports& ports, const std::filesystem::path& executable) {
    const std::string command = OpenCommand(executable);
    if (ports.associations == nullptr || IsRegistered(*ports.associations, command)) return {};
    if (!ports.prompts.Confirm(RegisterTypesQuestion(session.texts))) return Outcome::Cancelled();
    const Status registered = ports.associations->RegisterPictureFileTypes(command);
    return registered ? Outcome() : Refuse(session, ports, registered.error());
}

}  // namespace pictavo
