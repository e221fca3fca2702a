#pragma once

#include "session/Ports.h"
#include "shell/KeyStore.h"

namespace pictavo {

/// The file types as a store of the system keeps them. Store and prompts outlive the object.
class SystemAssociations final : public Associations {
  public:
    SystemAssociations(KeyStore& store, Prompts& prompts) : store_(store), prompts_(prompts) {}

    std::string GetAssociatedProgram(const std::string& extension) override;

    /// Fails with Malformed when `command` is no program followed by "%1" in quotation marks, and with
    /// WriteFailed; extensions are all tried before that.
    Status RegisterPictureFileTypes(const std::string& command) override;

  private:
    KeyStore& store_;
    Prompts& prompts_;
};

}  // namespace pictavo
