#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "shell/KeyStore.h"

namespace pictavo::tests {

/// Keys in memory, and a line for each change in the order of the changes.
class FakeKeyStore final : public KeyStore {
  public:
    std::map<std::string, std::map<std::string, std::string>> keys;
    std::vector<std::string> changes;
    std::string refusedKey;  ///< every change of this key fails
    std::optional<std::uint32_t> readError;
    int commits = 0;

    bool HasKey(const std::string& key) const override { return keys.contains(key); }

    Value ReadValue(const std::string& key, const std::string& name) const override {
        if (readError) return tl::unexpected(*readError);
        if (!keys.contains(key) || !keys.at(key).contains(name)) return tl::unexpected(2U);
        return keys.at(key).at(name);
    }

    Status CreateKey(const std::string& key) override {
        changes.push_back("create " + key);
        if (key == refusedKey) return Refused(key);
        keys[key];
        return {};
    }

    Status WriteValue(const std::string& key, const std::string& name, const std::string& value) override {
        changes.push_back("write " + key + " [" + name + "] " + value);
        if (key == refusedKey) return Refused(key);
        keys[key][name] = value;
        return {};
    }

    Status DeleteKey(const std::string& key) override {
        changes.push_back("delete " + key);
        if (key == refusedKey) return Refused(key);
        keys.erase(key);
        return {};
    }

    Status Commit() override {
        ++commits;
        return {};
    }

  private:
    static Failure Refused(const std::string& key) { return Fail(ErrorKind::WriteFailed, key, "refused"); }
};

}  // namespace pictavo::tests
