#pragma once

/// What a command asks the world outside for. The window answers with boxes and choosers, the command line
/// with its options, a test with a script. A command knows no more of its front than this.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "codec/ImportedPixels.h"
#include "core/Result.h"

namespace pictavo {

/// What a question is about, for a front that answers by rule and not by reading.
enum class Asked {
    Overwrite,      ///< replace the file that exists?
    Compress,       ///< keep the compressed type?
    WriteGpf2,      ///< GPF2 instead of GPF?
    SaveWithAlpha,  ///< 32 bit instead of 24?
    ApplyToAll,     ///< save the other pictures of the command line the same way?
    RegisterTypes,  ///< open GPF files with this program?
};

/// The save commands of the picture's popup menu that a batch of files can be saved with.
enum class SaveCommand { Bmp, Png, Gpf1Bit, Gpf8Bit, Gpf16Bit, Gpf24Bit };

/// A box with the buttons OK and Cancel. Lines of the text are parted by a carriage return.
struct Question {
    Asked about;
    std::string title;
    std::string text;
    std::filesystem::path path;  ///< the file it is about; may be empty
};

/// A box with an OK button only.
struct Notice {
    std::string title;
    std::string text;
};

/// The files that a chooser offers.
struct FileFilter {
    std::string name;                   ///< such as "Bitmap File"; a chooser shows the patterns behind it
    std::vector<std::string> patterns;  ///< such as "*.bmp"

    bool operator==(const FileFilter&) const = default;
};

/// A file chooser.
struct FileChoice {
    std::string title;
    std::vector<FileFilter> filters;  ///< at least one; the first is in force at the start
    std::string suggestedName;
    std::string defaultExtension;       ///< without a dot; may be empty
    std::filesystem::path folder = {};  ///< where to begin; empty for the folder used last
};

class Prompts {
  public:
    virtual ~Prompts() = default;

    /// True for OK, false for Cancel.
    virtual bool Confirm(const Question& question) = 0;
    virtual void Tell(const Notice& notice) = 0;

    /// The chosen path, empty when cancelled.
    virtual std::filesystem::path ChooseOpen(const FileChoice& choice) = 0;
    virtual std::filesystem::path ChooseSave(const FileChoice& choice) = 0;
    virtual std::filesystem::path BrowseForFolder(const std::string& title) = 0;

    /// Offers the picture's popup menu; nothing when it was closed without a choice.
    virtual std::optional<SaveCommand> ChooseSaveCommand() = 0;
};

class Progress {
  public:
    virtual ~Progress() = default;

    /// Told between two pictures how much is done, 0 to 100 percent; the only moment at which a command
    /// yields. False asks it to stop, which a command heeds unless its header says otherwise.
    virtual bool At(double percent) = 0;
};

class ProcessRunner {
  public:
    virtual ~ProcessRunner() = default;

    /// Runs a program and waits for its end, without a shell: each argument (UTF-8) arrives as it stands.
    /// Returns what it met, such as "cannot be started (Permission denied)", "was ended by signal 9" or
    /// "ended with status 3", and nothing where all went well. Whether a program did its work the caller sees
    /// by its output file alone.
    virtual std::string RunAndWait(const std::filesystem::path& program,
                                   const std::vector<std::string>& arguments) = 0;
};

class PictureLoader {
  public:
    virtual ~PictureLoader() = default;

    /// The pixels of a picture file that the system's readers know (bitmaps, GIF, JPEG); of several frames
    /// the first. Transparent parts are laid over white, every A is 0, `hasAlpha` is false. Fails with
    /// UnknownFile when no reader takes the file, with Malformed when the reader refuses it, with TooLarge
    /// when it is larger than 240 x 320, and with FileMissing.
    virtual Result<ImportedPixels> Load(const std::filesystem::path& path) = 0;
};

/// What follows the program in a command that opens a file: the place of the file's name.
inline constexpr std::string_view kFileArgument = " \"%1\"";

/// What the system opens a file type with.
class Associations {
  public:
    virtual ~Associations() = default;

    /// The command registered for an extension such as ".gpf", or a text that says why there is none; such a
    /// text differs from every command.
    virtual std::string GetAssociatedProgram(const std::string& extension) = 0;

    /// Registers kGpfExtensions as "Graphic Patch File", opened by `command`.
    virtual Status RegisterPictureFileTypes(const std::string& command) = 0;
};

/// All of them, as a command receives them. The objects outlive the command.
struct Ports {
    Prompts& prompts;
    Progress& progress;
    ProcessRunner& processes;
    PictureLoader& pictures;
    Associations* associations = nullptr;  ///< null where there are none to offer
};

}  // namespace pictavo
