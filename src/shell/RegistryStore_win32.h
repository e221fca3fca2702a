#pragma once

#include "shell/KeyStore.h"

namespace pictavo {

/// The registry's classes root, HKEY_CLASSES_ROOT. What the rights do not suffice to change there is changed
/// for this user alone, in HKEY_CURRENT_USER\Software\Classes, which Windows shows through the classes root
/// as well. Changes hold at once. A text is written without a terminating NUL; Windows may store one with it.
class RegistryStore final : public KeyStore {
  public:
    bool HasKey(const std::string& key) const override;

    /// Fails with the registry's own number; with ERROR_INVALID_DATA when the value is no text.
    Value ReadValue(const std::string& key, const std::string& name) const override;

    Status CreateKey(const std::string& key) override;
    Status WriteValue(const std::string& key, const std::string& name, const std::string& value) override;

    /// Together with the keys below it. One that is not there is deleted already.
    Status DeleteKey(const std::string& key) override;

    /// Tells the desktop that file types have changed, so that it draws their icons anew.
    Status Commit() override;
};

}  // namespace pictavo
