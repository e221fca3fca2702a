#pragma once

/// A scratch folder of the test's own, removed at its end, and short ways to read and write files in it.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "core/Bytes.h"

namespace pictavo::tests {

class TempFolder {
  public:
    TempFolder() {
        std::random_device random;
        do {
            path_ = std::filesystem::canonical(std::filesystem::temp_directory_path()) /
                    ("pictavo-test-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path_));
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all);
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    std::filesystem::path operator/(const std::string& name) const {
        return path_ / std::u8string(name.begin(), name.end());
    }

  private:
    std::filesystem::path path_;
};

inline Bytes ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    std::error_code error;
    Bytes bytes(static_cast<std::size_t>(std::filesystem::file_size(path, error)));
    EXPECT_FALSE(error) << path;
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    EXPECT_EQ(file.gcount(), static_cast<std::streamsize>(bytes.size())) << path;
    return bytes;
}

inline std::string ReadText(const std::filesystem::path& path) {
    return std::string(AsText(ReadFile(path)));
}

inline std::filesystem::path WriteFile(const std::filesystem::path& path, ByteView bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    EXPECT_TRUE(file.good()) << path;
    return path;
}

inline std::filesystem::path WriteFile(const std::filesystem::path& path, const std::string& text) {
    return WriteFile(path, AsBytes(text));
}

/// The names in a folder in UTF-8, hidden ones included, in order.
inline std::vector<std::string> ListNames(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::u8string name = entry.path().filename().u8string();
        names.emplace_back(name.begin(), name.end());
    }
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace pictavo::tests
