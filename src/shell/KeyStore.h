#pragma once

/// Where the system keeps what it opens file types with, as a tree of keys with named text values. Keys are
/// written with "\" between their parts and begin at the root of all file types: ".gpf\ShellNew". Texts are
/// UTF-8. The value without a name is the key's default value.

#include <cstdint>
#include <string>
#include <tl/expected.hpp>

#include "core/Result.h"

namespace pictavo {

/// The verb of a file type that a double click means.
inline constexpr const char* kOpenVerb = "open";

/// The key whose default value is the command that `verb` runs on a file of the type.
inline std::string CommandKey(const std::string& type, const std::string& verb) {
    return type + "\\shell\\" + verb + "\\command";
}

class KeyStore {
  public:
    /// A value as it is stored, with or without a terminating NUL, or the system's number for why it cannot
    /// be read.
    using Value = tl::expected<std::string, std::uint32_t>;

    virtual ~KeyStore() = default;

    virtual bool HasKey(const std::string& key) const = 0;
    virtual Value ReadValue(const std::string& key, const std::string& name) const = 0;

    /// Creates the key and its parents; one that exists stays as it is. Fails with WriteFailed.
    virtual Status CreateKey(const std::string& key) = 0;

    /// Sets a text value of a key that was created. Fails with WriteFailed.
    virtual Status WriteValue(const std::string& key, const std::string& name, const std::string& value) = 0;

    /// A single deletion: a key that still has keys below it may stay. Fails with WriteFailed.
    virtual Status DeleteKey(const std::string& key) = 0;

    /// Makes all changes since the last Commit hold, where that is not done at once. Fails with WriteFailed,
    /// naming the file; changes that were made before it stay.
    virtual Status Commit() { return {}; }
};

}  // namespace pictavo
