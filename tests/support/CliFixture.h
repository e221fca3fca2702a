#pragma once

/// pictavo-cli run as a script runs it, over small flashes. Whatever a test does, the files that it protects
/// must come out as they went in, and nothing temporary may stay behind.

#include <gmock/gmock.h>

#include "samples/FileMakers.h"
#include "samples/FlashBuilder.h"
#include "samples/PictureEncoders.h"
#include "support/BmpFile.h"
#include "support/ChildProcess.h"
#include "support/FourIcons.h"

namespace pictavo::tests {

using samples::Drawing;
using ::testing::HasSubstr;

using Arguments = std::vector<std::string>;

/// A picture as it was put into a flash.
struct Stored {
    Drawing drawing;
    std::uint8_t typeCode = 0;
};

class CliTest : public ::testing::Test {
  protected:
    CliTest() : runFolders(temp / "run folders") {
        std::filesystem::create_directory(runFolders);
        around.environment.push_back("TMP=" + runFolders.string());
    }

    void TearDown() override {
        for (const Protected& file : protected_) ExpectUntouched(file);
        if (!leftoversAreFine) ExpectNothingLeft();
    }

    Ended Cli(const Arguments& arguments) const {
        Arguments command{program};
        command.insert(command.end(), arguments.begin(), arguments.end());
        return RunProgram(command, around);
    }

    /// Bytes and time of the last change must be the same at the test's end.
    void Protect(const std::filesystem::path& path) {
        protected_.push_back({path, ReadFile(path), std::filesystem::last_write_time(path)});
    }

    void PutBackProtected() const {
        for (const Protected& file : protected_) {
            if (ReadFile(file.path) == file.bytes) continue;
            WriteFile(file.path, file.bytes);
            std::filesystem::last_write_time(file.path, file.time);
        }
    }

    std::string Write(const FlashBuilder& flash, const std::string& name = "flash.bin") {
        const std::filesystem::path path = temp / name;
        const samples::Outcome written = flash.WriteTo(path);
        EXPECT_TRUE(written) << written.Reason();
        Protect(path);
        return path.string();
    }

    std::string Write(const std::string& name, const Bytes& bytes) {
        const std::filesystem::path path = WriteFile(temp / name, bytes);
        Protect(path);
        return path.string();
    }

    std::string Write(const std::string& name, const std::string& text) {
        return Write(name, Bytes(text.begin(), text.end()));
    }

    std::string WriteProgram(const std::string& name, const std::string& script) {
        const std::string path = Write(name, script);
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        return path;
    }

    std::string Path(const std::string& name) const { return (temp / name).string(); }

    /// A converter that takes so many seconds more for each picture. It adds a line to "conversions" when it
    /// begins one and another when it has ended.
    std::string SlowConverter(const std::string& seconds) {
        const std::string log = " >>'" + Path("conversions") + "'\n";
        const std::string real = "'" + std::string(PICTAVO_BIN_DIR) + "/pictavo-convert' \"$@\"\n";
        return WriteProgram(
            "slow", "#!/bin/sh\necho begun" + log + "sleep " + seconds + "\n" + real + "echo ended" + log);
    }

    /// Lines that such a converter wrote.
    std::size_t Conversions() const {
        const std::filesystem::path log = temp / "conversions";
        return std::filesystem::exists(log) ? Lines(ReadText(log)).size() : 0;
    }

    /// Icons of 13 x 9 and more, one of each type code in the order of samples::kTypeCodes.
    static std::vector<Stored> OneOfEachType() {
        std::vector<Stored> all;
        std::uint32_t seed = 0;
        for (const std::uint8_t type : samples::kTypeCodes) {
            ++seed;
            all.push_back({samples::DrawIcon(static_cast<int>(12 + seed), 9, seed), type});
        }
        return all;
    }

    static FlashBuilder FlashOf(const std::vector<Stored>& pictures, FlashKind kind = FlashKind::NewSGold) {
        FlashBuilder flash(kind);
        flash.Size(2U << 20);
        for (const Stored& picture : pictures) flash.AddDrawing(picture.drawing, picture.typeCode);
        return flash;
    }

    static std::vector<std::string> Lines(const std::string& text) {
        std::vector<std::string> lines;
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t end = text.find('\n', at);
            lines.push_back(text.substr(at, end - at));
            if (end == std::string::npos) break;
            at = end + 1;
        }
        return lines;
    }

    const std::string program = std::string(PICTAVO_BIN_DIR) + "/pictavo-cli";
    TempFolder temp;
    std::filesystem::path runFolders;
    Surroundings around;

    /// Set by tests that kill the program.
    bool leftoversAreFine = false;

  private:
    struct Protected {
        std::filesystem::path path;
        Bytes bytes;
        std::filesystem::file_time_type time;
    };

    static void ExpectUntouched(const Protected& file) {
        EXPECT_TRUE(ReadFile(file.path) == file.bytes) << file.path << " was written";
        EXPECT_EQ(std::filesystem::last_write_time(file.path), file.time) << file.path;
    }

    void ExpectNothingLeft() const {
        EXPECT_TRUE(ListNames(runFolders).empty()) << "a folder of temporary files stayed behind";
        for (const auto& entry : std::filesystem::recursive_directory_iterator(temp.Path()))
            EXPECT_FALSE(entry.path().filename().string().starts_with(".pictavo-")) << entry.path();
    }

    std::vector<Protected> protected_;
};

/// Ended well, and said this and nothing else.
inline void ExpectDone(const Ended& ended, const std::string& out = {}) {
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.out, out);
    EXPECT_EQ(ended.err, "");
}

/// Each line of standard error is one complaint; the only line holds all of `mentions`.
inline void ExpectOneComplaint(const Ended& ended, const std::vector<std::string>& mentions) {
    EXPECT_TRUE(ended.err.starts_with("pictavo-cli: ")) << ended.err;
    EXPECT_EQ(std::count(ended.err.begin(), ended.err.end(), '\n'), 1) << ended.err;
    EXPECT_TRUE(ended.err.ends_with("\n"));
    for (const std::string& mention : mentions) EXPECT_THAT(ended.err, HasSubstr(mention));
}

/// Exit status 1, one line on standard error, nothing on standard output.
inline void ExpectRefused(const Ended& ended, const std::vector<std::string>& mentions) {
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.out, "");
    ExpectOneComplaint(ended, mentions);
}

/// Exit status 2, the usage line on standard error, nothing on standard output.
inline void ExpectWrongUsage(const Ended& ended, const std::string& usageStart = "Usage: pictavo-cli ") {
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.out, "");
    const std::size_t first = ended.err.find('\n');
    ASSERT_NE(first, std::string::npos) << ended.err;
    EXPECT_TRUE(ended.err.starts_with("pictavo-cli: ")) << ended.err;
    EXPECT_TRUE(ended.err.substr(first + 1).starts_with(usageStart)) << ended.err;
    EXPECT_EQ(std::count(ended.err.begin(), ended.err.end(), '\n'), 2) << ended.err;
}

}  // namespace pictavo::tests
