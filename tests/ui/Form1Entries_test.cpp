#include "support/WindowFixture.h"

/// Nothing in a menu does nothing: every entry is triggered where it has something to do.

namespace pictavo::tests {
namespace {

/// Cancels everything, and counts.
class CancellingPrompts final : public Prompts {
  public:
    int asked = 0;

    bool Confirm(const Question&) override { return ++asked == 0; }
    void Tell(const Notice&) override { ++asked; }
    std::filesystem::path ChooseOpen(const FileChoice&) override { return Cancelled(); }
    std::filesystem::path ChooseSave(const FileChoice&) override { return Cancelled(); }
    std::filesystem::path BrowseForFolder(const std::string&) override { return Cancelled(); }
    std::optional<SaveCommand> ChooseSaveCommand() override {
        ++asked;
        return std::nullopt;
    }

  private:
    std::filesystem::path Cancelled() {
        ++asked;
        return {};
    }
};

class Form1EntriesTest : public WindowFixture {
  protected:
    Form1EntriesTest() {
        QObject::connect(&dialogCloser, &QTimer::timeout, [this] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (dialog == nullptr) return;
            ++dialogsClosed;
            dialog->close();
        });
        dialogCloser.start(5);
    }

    /// A flash with its second picture replaced and shown, another one among the recent files.
    void Prepare() {
        Open(FourIcons(), "other.bin");
        const std::string other = flashPath.string();
        Open(FourIcons());
        session.settings.MRU = {other, other, other};
        ReplaceBy(1, samples::DrawIcon(9, 9, 7), 0x88);
    }

    /// A window of its own for each entry, at double size so that every magnification but that changes it.
    void ShowPrepared(const Session& prepared, const QString& entry) {
        WindowServices services{prompts, scripted.processes, scripted.pictures};
        services.showReadMe = [this] { ++readMeShown; };
        form = std::make_unique<Form1>(prepared, services);
        form->show();
        Select(1);
        if (entry != "mnu_View_X2") Trigger("mnu_View_X2");
    }

    /// Whatever an entry can change or set off.
    std::vector<std::string> Effects() const {
        const QImage painted = Painted();
        const auto* bits = reinterpret_cast<const char*>(painted.constBits());
        return {std::to_string(prompts.asked),
                std::to_string(dialogsClosed),
                std::to_string(readMeShown),
                std::to_string(form->isVisible()),
                std::to_string(State().rows.size()),
                State().flash.source ? State().flash.source->Path().string() : "",
                std::string(bits, static_cast<std::size_t>(painted.sizeInBytes()))};
    }

    QStringList EntryNames() const {
        QStringList names;
        for (const QAction* entry : form->findChildren<QAction*>())
            if (entry->menu() == nullptr && !entry->isSeparator() && entry->objectName().startsWith("mnu_"))
                names.append(entry->objectName());
        return names;
    }

    CancellingPrompts prompts;
    int dialogsClosed = 0;
    QTimer dialogCloser;
};

TEST_F(Form1EntriesTest, EveryEntryThatIsNoMenuDoesSomething) {
    Prepare();
    const Session prepared = session;
    ShowPrepared(prepared, "");
    const QStringList names = EntryNames();
    EXPECT_GE(names.size(), 40);
    for (const QString& name : names) {
        ShowPrepared(prepared, name);
        const auto before = Effects();
        Trigger(name);
        EXPECT_TRUE(Effects() != before) << name.toStdString();
    }
}

}  // namespace
}  // namespace pictavo::tests
