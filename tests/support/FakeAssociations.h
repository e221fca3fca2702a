#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "session/Ports.h"

namespace pictavo::tests {

/// What a desktop has registered, and what it was told to register.
class FakeAssociations final : public Associations {
  public:
    std::map<std::string, std::string> commands;
    std::vector<std::string> registered;
    std::optional<Error> error;
    std::function<void()> whenAsked = [] {};

    std::string GetAssociatedProgram(const std::string& extension) override {
        whenAsked();
        const auto found = commands.find(extension);
        return found == commands.end() ? "Unregistered file extension " + extension : found->second;
    }

    Status RegisterPictureFileTypes(const std::string& command) override {
        if (error) return Failure(*error);
        registered.push_back(command);
        for (const char* extension : {".gpf", ".gpf2"}) commands[extension] = command;
        return {};
    }
};

}  // namespace pictavo::tests
