#include "shell/FreedesktopStore.h"

#include "shell/CFileAssociation.h"
#include "shell/DesktopCommand.h"
#include "shell/MimePackage.h"

namespace pictavo {

namespace {

constexpr const char* kNewKey = "\\ShellNew";

/// What a registry says of a key or value that it does not have.
constexpr std::uint32_t kNotFound = 2;

const std::string& OpenCommandKey() {
    static const std::string key = CommandKey(kPictureFileClass, kOpenVerb);
    return key;
}

const std::string& IconKey() {
    static const std::string key = std::string(kPictureFileClass) + "\\DefaultIcon";
    return key;
}

/// The extension of a key such as ".gpf\ShellNew"; empty for any other.
std::string ExtensionOfNewKey(const std::string& key) {
    if (!key.ends_with(kNewKey)) return {};
    const std::string extension = key.substr(0, key.find('\\'));
    return extension + kNewKey == key && IsPictureExtension(extension) ? extension : "";
}

bool IsKnown(const std::string& key) {
    return IsPictureExtension(key) || !ExtensionOfNewKey(key).empty() || key == kPictureFileClass ||
           key == OpenCommandKey() || key == IconKey();
}

Failure Unknown(const std::string& key) {
    return Fail(ErrorKind::WriteFailed, "the desktop has no place for \"" + key + "\"");
}

}  // namespace

FreedesktopStore::FreedesktopStore(DesktopFolders folders, ProcessRunner& processes, DrawIcon drawIcon)
    : folders_(std::move(folders)),
      processes_(processes),
      drawIcon_(std::move(drawIcon)),
      type_(LoadFileType(folders_)) {}

bool FreedesktopStore::HasKey(const std::string& key) const {
    if (key == OpenCommandKey()) return !FoundCommand(folders_, kPictureMimeType).empty();
    return IsPictureExtension(key) && HasFileType(folders_, key);
}

KeyStore::Value FreedesktopStore::ReadValue(const std::string& key, const std::string& name) const {
    if (!name.empty() || !HasKey(key)) return tl::unexpected(kNotFound);
    return key == OpenCommandKey() ? FoundCommand(folders_, kPictureMimeType)
                                   : std::string(kPictureFileClass);
}

Status FreedesktopStore::CreateKey(const std::string& key) {
    if (!IsKnown(key)) return Unknown(key);
    return {};
}

Status FreedesktopStore::WriteValue(const std::string& key, const std::string& name,
                                    const std::string& value) {
    const std::string extension = ExtensionOfNewKey(key);
    if (!IsKnown(key) || name != (extension.empty() ? "" : "NullFile")) return Unknown(key + " " + name);
    if (!extension.empty())
        type_.newFiles.insert(extension);
    else if (key == OpenCommandKey())
        type_.command = value;
    else if (key == IconKey())
        type_.hasIcon = true;
    else if (key == kPictureFileClass)
        type_.description = value;
    else if (value == kPictureFileClass)
        type_.extensions.insert(key);
    else
        return Unknown(value);
    return {};
}

Status FreedesktopStore::DeleteKey(const std::string& key) {
    if (key == kPictureFileClass) {
        type_.description.clear();
        type_.command.clear();
        type_.hasIcon = false;
    } else if (IsPictureExtension(key)) {
        type_.extensions.erase(key);
        type_.newFiles.erase(key);
        type_.droppedFiles.insert(key);
    } else {
        return Unknown(key);
    }
    return {};
}

Status FreedesktopStore::Commit() {
    PICTAVO_TRY(SaveFileType(type_, folders_, processes_, drawIcon_));
    type_.droppedFiles.clear();
    return {};
}

}  // namespace pictavo
