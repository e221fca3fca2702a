#pragma once

/// Environment variables for as long as a test runs.

#include <cstdlib>
#include <map>
#include <optional>
#include <string>

namespace pictavo::tests {

class Environment {
  public:
    Environment() = default;
    ~Environment() {
        for (const auto& [name, value] : before_) Put(name, value);
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

    void Set(const std::string& name, const std::string& value) { Change(name, value); }
    void Unset(const std::string& name) { Change(name, std::nullopt); }

  private:
    using Value = std::optional<std::string>;

    void Change(const std::string& name, const Value& value) {
        const char* old = std::getenv(name.c_str());
        before_.try_emplace(name, old == nullptr ? Value() : Value(old));
        Put(name, value);
    }

    static void Put(const std::string& name, const Value& value) {
        if (value)
            setenv(name.c_str(), value->c_str(), 1);
        else
            unsetenv(name.c_str());
    }

    std::map<std::string, Value> before_;
};

}  // namespace pictavo::tests
