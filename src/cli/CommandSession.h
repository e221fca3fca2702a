#pragma once

/// What one run of a command over the session needs: the settings, the ports, and the flash opened.

#include <CLI/App.hpp>

#include "cli/Front.h"
#include "cli/RunFolder.h"
#include "cli/Terminal.h"
#include "cli/TerminalProgress.h"
#include "session/Session.h"
#include "shell/LatePictureLoader.h"
#include "shell/Shell_.h"

namespace pictavo::cli {

/// Options that stand for settings and for answers; a command declares those that it heeds.
struct AnswerOptions {
    bool hexNames = false;
    bool zeroNames = false;
    bool overwrite = false;
    bool compress = false;
    std::string converter;

    void DeclareNames(CLI::App& app);
    void DeclareOverwrite(CLI::App& app);
    void DeclareCompress(CLI::App& app);
    void DeclareConverter(CLI::App& app);
};

/// A session with its ports, set up as the settings file beside the executable and the options say.
class CommandSession {
  public:
    CommandSession(Front& front, const AnswerOptions& options);

    /// Opens the flash, whatever it is; after this `session.flash` is usable.
    Status Open(const std::filesystem::path& flash);

    /// The same, for commands that make no sense without a picture table. They heed interrupts from here on.
    Status OpenFlashWithTable(const std::filesystem::path& flash);

    /// Fails with UnknownFile when the open file has no place for a picture table: it is no fullflash, or one
    /// cut short.
    Status CheckIsFullflash() const;

    /// Gives the session a folder of temporary files, removed when the run ends, also after an interrupt.
    Status NeedWorkFiles();

    Session session;
    Ports ports;

  private:
    TerminalProgress progress_;
    ChildProcessRunner processes_{[] { return !WasInterrupted(); }};
    LatePictureLoader pictures_;
    std::optional<RunFolder> folder_;
};

}  // namespace pictavo::cli
