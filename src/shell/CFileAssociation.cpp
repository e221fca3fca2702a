#include "shell/CFileAssociation.h"

#include <algorithm>

#include "session/Ports.h"

namespace pictavo {

namespace {

constexpr const char* kDefaultValue = "";
constexpr const char* kNullFile = "NullFile";

bool IsNewFileType(const std::string& type) {
    return type == "Command" || type == kNullFile || type == "FileName";
}

/// A negative number names an icon by its identifier.
bool IsNumeric(const std::string& text) {
    const std::size_t first = text.starts_with('-') ? 1 : 0;
    return text.size() > first && std::all_of(text.begin() + static_cast<std::ptrdiff_t>(first), text.end(),
                                              [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

CFileAssociation::CFileAssociation(KeyStore& store, std::string program)
    : store_(store), program_(std::move(program)) {}

int CFileAssociation::CreateAssociation() {
    if (strExt.empty() || strAppID.empty()) return 1;
    CreateKeyWithValue(strExt, kDefaultValue, strAppID);
    if (IsNewFileType(strNewFileType)) CreateNewEntry();
    CreateType();
    CreateContextMenuItem(kOpenVerb, strOpenCommand);
    if (!strIcon.empty() || !strExePath.empty()) CreateIcon();
    return 0;
}

void CFileAssociation::CreateContextMenuItem(const std::string& strText, const std::string& strCommand) {
    CreateKeyWithValue(CommandKey(strAppID, strText), kDefaultValue, strCommand);
}

void CFileAssociation::DeleteAssociation() {
    if (strExt.empty() || strAppID.empty()) return;
    Note(store_.DeleteKey(strExt));
    Note(store_.DeleteKey(strAppID));
}

void CFileAssociation::CreateKeyWithValue(const std::string& key, const std::string& name,
                                          const std::string& value) {
    Note(store_.CreateKey(key));
    Note(store_.WriteValue(key, name, value));
}

void CFileAssociation::CreateNewEntry() {
    if (strNewFileType == kNullFile) strNewFileCommand.clear();
    CreateKeyWithValue(strExt + "\\ShellNew", strNewFileType, strNewFileCommand);
}

void CFileAssociation::CreateType() {
    Note(store_.CreateKey(strAppID));
    if (!strFileType.empty()) Note(store_.WriteValue(strAppID, kDefaultValue, strFileType));
}

void CFileAssociation::CreateIcon() {
    CreateKeyWithValue(strAppID + "\\DefaultIcon", kDefaultValue, IconLocation());
}

std::string CFileAssociation::IconLocation() const {
    if (strIcon.empty()) return strExePath;
    return IsNumeric(strIcon) ? program_ + "," + strIcon : strIcon;
}

void CFileAssociation::Note(const Status& status) {
    if (written_) written_ = status;
}

Status RegisterPictureFileType(KeyStore& store, const std::string& program, const std::string& extension,
                               const std::string& description) {
    CFileAssociation association(store, program);
    association.strExt = extension;
    association.strAppID = kPictureFileClass;
    association.strExePath = program;
    association.strOpenCommand = kOpenVerb;
    association.strFileType = description;
    association.strIcon = program + ",0";
    association.strNewFileType = kNullFile;
    association.CreateAssociation();
    association.CreateContextMenuItem(kOpenVerb, program + std::string(kFileArgument));
    return association.Written();
}

}  // namespace pictavo
