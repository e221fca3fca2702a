#pragma once

/// The real window on the offscreen platform, with scripted answers.

#include <QAction>
#include <QCheckBox>
#include <QGroupBox>
#include <QTest>
#include <QTimer>
#include <set>

#include "session/Settings.h"
#include "session/ShowPicture.h"
#include "support/SessionFixture.h"
#include "support/WidgetApplication.h"
#include "ui/Form1.h"
#include "ui/MenuParts.h"

namespace pictavo::tests {

class WindowFixture : public SessionFixture {
  protected:
    WindowFixture() {
        session.places.settingsFile = temp / "Pictavo.ini";
        session.places.languageFolders = {temp.Path()};
        session.settings.Language = "Test";
        session.settings.nConvert = (temp / "converter").string();
    }

    /// The window with the session as it stands, shown.
    void Show() {
        WindowServices services{scripted.prompts, scripted.processes, scripted.pictures};
        services.associations = associations;
        services.executable = "/opt/pictavo";
        services.showReadMe = [this] { ++readMeShown; };
        services.readMe = temp / "ReadMe.txt";
        form = std::make_unique<Form1>(std::move(session), services);
        form->show();
    }

    /// The same with a flash of four icons open.
    void ShowFourIcons() {
        Open(FourIcons());
        Show();
    }

    const Session& State() const { return form->State(); }

    template <typename Control>
    Control& Find(const char* name) const {
        auto* control = form->findChild<Control*>(name);
        EXPECT_NE(control, nullptr) << name;
        return *control;
    }

    QAction& Entry(const QString& name) const {
        QAction* entry = FindEntry(*form, name);
        EXPECT_NE(entry, nullptr) << name.toStdString();
        return *entry;
    }

    /// As a user can: an entry that is disabled or hidden does nothing.
    void Trigger(const QString& name) const {
        EXPECT_TRUE(Entry(name).isEnabled() && Entry(name).isVisible()) << name.toStdString();
        Entry(name).trigger();
    }

    bool IsEnabled(const QString& name) const { return Entry(name).isEnabled(); }
    bool IsChecked(const QString& name) const { return Entry(name).isChecked(); }
    std::string CaptionOf(const QString& name) const { return PlainCaption(Entry(name).text()); }

    PictureList& List() const { return Find<PictureList>("ListView1"); }

    void Select(int row) const { List().setCurrentIndex(List().model()->index(row, 0)); }

    /// The line above the picture.
    std::string FrameCaption() const { return Find<PictureFrame>("PICframe").Caption().toStdString(); }

    /// The picture box as it is painted.
    QImage Painted() const { return Find<PictureView>("Picture1").grab().toImage(); }

    /// The line at the bottom.
    std::string Line() const { return Find<TextLine>("Line1").Text().toStdString(); }

    /// Does this to the dialog that is opened next.
    void WithDialog(const std::function<void(QWidget&)>& act) const {
        QTimer::singleShot(0, form.get(), [act] {
            QWidget* dialog = QApplication::activeModalWidget();
            ASSERT_NE(dialog, nullptr);
            act(*dialog);
            dialog->close();
        });
    }

    /// Buttons and check boxes that Alt and a letter press.
    static void ExpectLettersOfTheirOwn(const QWidget& window, std::size_t count) {
        std::set<QChar> letters;
        for (const auto* button : window.findChildren<QAbstractButton*>()) {
            const QString text = QString(button->text()).remove("&&");
            ASSERT_TRUE(text.contains('&')) << text.toStdString();
            EXPECT_TRUE(letters.insert(text[text.indexOf('&') + 1].toLower()).second) << text.toStdString();
        }
        EXPECT_EQ(letters.size(), count);
    }

    /// A bitmap to replace pictures with.
    std::filesystem::path Bitmap(const std::string& name, int width = 4, int height = 4) const {
        return WriteFile(temp / name,
                         samples::MakeBmp(samples::DrawOneColour(width, height, {255, 0, 0, 255}), 32));
    }

    void WriteLanguage(const std::string& lines) const { WriteFile(temp / "Test.lng", lines); }

    std::unique_ptr<Form1> form;
    Associations* associations = nullptr;
    int readMeShown = 0;
};

}  // namespace pictavo::tests
