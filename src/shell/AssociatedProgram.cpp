#include "shell/AssociatedProgram.h"

namespace pictavo {

namespace {

std::string UpToNul(const std::string& value) {
    return value.substr(0, value.find('\0'));
}

/// A command that cannot be read is none.
std::string CommandOf(const KeyStore& store, const std::string& type) {
    const std::string key = CommandKey(type, kOpenVerb);
    const KeyStore::Value command = store.HasKey(key) ? store.ReadValue(key, "") : tl::unexpected(0U);
    return command ? UpToNul(*command) : "File type is not associated with a program.";
}

}  // namespace

std::string GetAssociatedProgram(const KeyStore& store, const std::string& extension,
                                 const std::function<void(const std::string&)>& tell) {
    if (!store.HasKey(extension)) return "Unregistered file extension " + extension;
    const KeyStore::Value type = store.ReadValue(extension, "");
    if (type) return CommandOf(store, UpToNul(*type));
    tell(std::to_string(type.error()));
    return {};
}

}  // namespace pictavo
