#pragma once

/// A page under docs/formats and the fenced blocks in it: "hex NAME" holds bytes, "text NAME" lines.

#include <charconv>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "core/Bytes.h"
#include "support/TempFolder.h"

namespace pictavo::tests {

using Lines = std::vector<std::string>;

inline std::filesystem::path SourceTree() {
    return PICTAVO_SOURCE_DIR;
}

inline Lines LinesOf(const std::string& text) {
    std::istringstream stream(text);
    Lines lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

class FormatPage {
  public:
    explicit FormatPage(const std::string& name) : name_(name) {
        constexpr std::string_view kFence = "```";
        std::string block;
        for (const std::string& line : LinesOf(ReadText(SourceTree() / "docs" / "formats" / name))) {
            if (line.starts_with(kFence))
                block = block.empty() ? line.substr(kFence.size()) : std::string();
            else if (!block.empty())
                blocks_[block].push_back(line);
        }
    }

    /// The lines of the block "text `name`".
    Lines Text(const std::string& name) const { return Block("text " + name); }

    /// The bytes of the block "hex `name`". A line may begin with its offset in hex and a colon; what lies
    /// between the lines is 00. A comment runs from ";" to the end of the line.
    Bytes Hex(const std::string& name) const {
        Bytes bytes;
        for (const std::string& line : Block("hex " + name))
            AppendLine(line.substr(0, line.find(';')), bytes);
        EXPECT_FALSE(bytes.empty()) << name_ << ": " << name;
        return bytes;
    }

  private:
    Lines Block(const std::string& name) const {
        const auto found = blocks_.find(name);
        if (found != blocks_.end()) return found->second;
        ADD_FAILURE() << name_ << " has no block \"" << name << "\"";
        return {};
    }

    std::size_t Number(std::string_view digits) const {
        std::size_t number = 0;
        const char* end = digits.data() + digits.size();
        const auto read = std::from_chars(digits.data(), end, number, 16);
        EXPECT_TRUE(read.ec == std::errc() && read.ptr == end) << name_ << ": " << digits;
        return number;
    }

    void AppendLine(const std::string& line, Bytes& bytes) const {
        std::istringstream words(line);
        for (std::string word; words >> word;) {
            if (word.back() == ':') {
                const std::size_t offset = Number(std::string_view(word).substr(0, word.size() - 1));
                EXPECT_GE(offset, bytes.size()) << name_ << ": lines overlap at " << word;
                bytes.resize(std::max(offset, bytes.size()));
            } else {
                EXPECT_EQ(word.size(), 2U) << name_ << ": " << word;
                bytes.push_back(static_cast<std::uint8_t>(Number(word)));
            }
        }
    }

    std::string name_;
    std::map<std::string, Lines> blocks_;
};

}  // namespace pictavo::tests
