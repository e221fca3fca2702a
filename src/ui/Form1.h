#pragma once

/// The main window. It owns the session, shows it, and binds menus, list and view to the commands over it;
/// what a command does and asks stands in session/. Controls and entries bear their real names.

#include <QHash>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <functional>
#include <optional>

#include "session/Outcome.h"
#include "session/Session.h"
#include "ui/Busy.h"
#include "ui/Form3.h"
#include "ui/PictureFrame.h"
#include "ui/PictureList.h"
#include "ui/PictureListModel.h"
#include "ui/PictureRenderer.h"
#include "ui/PromptsWhileOpen.h"

class QCheckBox;
class QTabWidget;

namespace pictavo {

/// What the window asks the world outside for. The objects outlive the window.
struct WindowServices {
    Prompts& prompts;
    ProcessRunner& processes;
    PictureLoader& pictures;
    Associations* associations = nullptr;   ///< null: the start asks nothing about file types
    std::filesystem::path executable = {};  ///< what a file type would be registered for
    std::function<void()> showReadMe = [] {};
    std::filesystem::path readMe = {};  ///< what that shows
};

class Form1 final : public QMainWindow {
  public:
    Form1(Session session, const WindowServices& services);

    /// Once, when the window is shown: temporary files, settings, language, file types, then the files that
    /// the command line names. Settings or a language that cannot be read are told, and it goes on with what
    /// there is.
    void Start(const std::vector<std::string>& names);

    /// Shows the picture's popup menu with its save commands only; nothing when it was closed.
    std::optional<SaveCommand> PickSaveCommand();

    const Session& State() const { return session_; }

    /// What the language file calls Cancel; empty where it does not.
    QString CancelCaption() const;

  protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    using Command = std::function<Outcome(Session&, Ports&)>;

    /// A command of one depth, on the selected row.
    using DepthCommand = Outcome (*)(Session&, Ports&, std::size_t row, std::uint8_t typeCode);

    /// How an entry runs its command: Run, RunLong or RunOverRows.
    using Way = void (Form1::*)(const Command&);

    // The layout.
    void MakeWidgets();
    QWidget* MakeLeftSide();
    QWidget* MakeRightSide();
    QWidget* MakeInfoFrame();
    void MakeBottom();
    void Connect();

    // The menus.
    void MakeMenus();
    void MakeFileMenu();
    void MakeFullFlashMenu();
    void MakeViewMenu();
    void MakeToolsMenu();
    void MakeOtherMenus();
    void MakePicturesPopup();
    void MakePicPopup();
    QAction& AddCommand(QMenu& menu, const QString& name, const QString& caption, Command command,
                        Way way = &Form1::Run);
    void AddDepthMenu(QMenu& menu, const QString& name, const QString& caption, DepthCommand command,
                      Way way = &Form1::Run);
    QAction& Entry(const QString& name);  ///< found once, since each picture shown asks for all of them
    void ShowPicturesPopup(const QPoint& position);
    void ShowPicPopup(const QPoint& position);

    // Commands.
    void Run(const Command& command);          ///< unless one is running; shows what it left
    void RunLong(const Command& command);      ///< the same, and says that Esc stops it
    void RunOverRows(const Command& command);  ///< the same, and shows the selected row again
    void Open(const Command& command);         ///< the same, and goes to the first picture of a new flash
    void OpenAll(const std::vector<std::string>& names);
    Outcome Perform(const Command& command, const QString& atStart = {});  ///< `atStart` stands in the line
    void Conclude(const Outcome& outcome, bool showsFirst);
    void ReadSettings(Session& session, Ports& ports);  ///< and the language; what fails is told
    std::size_t SelectedRow() const;
    void ShowSelectedRow(int row);
    void ShowSelectedRowAgain();
    void SelectFirstPicture();
    void Magnify(int factor);
    void ToggleChannel(bool ViewState::*shown);
    void ToggleAlpha();
    void ShowSettings();
    void ShowChannels(ChannelsMode mode);
    void ShowAbout();
    void ShowReadMe();

    // What is shown of the session.
    void RefreshAll();
    void RefreshList();
    void RefreshInfo();
    void RefreshView();
    void RefreshMenus();
    void RefreshViewMenu();
    void RefreshRecentFiles();
    void RefreshCaptions();
    void ShowOutcome(const Outcome& outcome);
    void ShowLine(const QString& text);
    void Settled();  ///< the settings and the language were read

    Session session_;
    WindowServices services_;
    ViewState view_;
    bool isClosing_ = false;  // wanted while a command ran

    std::shared_ptr<const ByteSource> listed_;  // the flash whose rows the list shows
    PictureListModel model_;
    PictureList* list_ = nullptr;
    QTabWidget* tabs_ = nullptr;
    PictureFrame* pictureFrame_ = nullptr;
    QLabel* info_ = nullptr;
    QCheckBox* transparency_ = nullptr;
    QProgressBar* progress_ = nullptr;
    TextLine* line_ = nullptr;
    QMenu* picturesPopup_ = nullptr;
    QMenu* picPopup_ = nullptr;
    QHash<QString, QAction*> entries_;
    std::optional<Busy> busy_;
    std::optional<PromptsWhileOpen> prompts_;
    std::optional<Ports> ports_;
};

}  // namespace pictavo
