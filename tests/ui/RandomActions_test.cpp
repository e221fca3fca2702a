/// The window in the hands of someone who presses everything, in no order, and answers as it comes.

#include <QContextMenuEvent>
#include <QDropEvent>
#include <QMimeData>
#include <random>

#include "shell/QtPictureLoader.h"
#include "support/WholePatch.h"
#include "support/WindowFixture.h"

namespace pictavo::tests {
namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr int kActions = 20'000;
#else
constexpr int kActions = 4'000;
#endif

constexpr std::chrono::seconds kHang{30};  // also under the sanitizers, on a busy machine

class Dice {
  public:
    explicit Dice(std::uint32_t seed) : random_(seed) {}

    int Below(std::size_t count) {
        return static_cast<int>(std::uniform_int_distribution<std::size_t>(0, count - 1)(random_));
    }

    bool OneIn(std::size_t count) { return Below(count) == 0; }

    template <typename Container>
    const auto& AnyOf(const Container& container) {
        return *std::next(std::begin(container), Below(static_cast<std::size_t>(std::size(container))));
    }

  private:
    std::mt19937 random_;
};

/// Says OK or Cancel to anything, and picks any of the paths.
class RandomPrompts final : public Prompts {
  public:
    RandomPrompts(Dice& dice, const std::vector<std::filesystem::path>& files,
                  const std::vector<std::filesystem::path>& folders)
        : dice_(dice), files_(files), folders_(folders) {}

    bool Confirm(const Question&) override { return Count() && !dice_.OneIn(3); }
    void Tell(const Notice&) override { Count(); }
    std::filesystem::path ChooseOpen(const FileChoice&) override { return Any(files_); }
    std::filesystem::path BrowseForFolder(const std::string&) override { return Any(folders_); }

    std::filesystem::path ChooseSave(const FileChoice& choice) override {
        const std::filesystem::path folder = Any(folders_);
        if (folder.empty()) return {};
        return folder / (choice.suggestedName.empty() ? "saved" : choice.suggestedName);
    }

    std::optional<SaveCommand> ChooseSaveCommand() override {
        if (dice_.OneIn(6)) return std::nullopt;
        return static_cast<SaveCommand>(dice_.Below(6));
    }

    int asked = 0;

  private:
    bool Count() {
        ++asked;
        return true;
    }

    std::filesystem::path Any(const std::vector<std::filesystem::path>& paths) {
        ++asked;
        return dice_.OneIn(8) ? std::filesystem::path() : dice_.AnyOf(paths);
    }

    Dice& dice_;
    const std::vector<std::filesystem::path>& files_;
    const std::vector<std::filesystem::path>& folders_;
};

class RandomActionsTest : public WindowFixture {
  protected:
    RandomActionsTest() {
        for (const char* name : {"pictures", "outputs"}) {
            folders_.push_back(temp / name);
            std::filesystem::create_directory(folders_.back());
        }
        MakeFlashes();
        MakePictures();
        session.places.settingsFile = temp / "Pictavo.ini";
        scripted.processes.effect = [this](const auto& call) { Convert(call); };
    }

    void MakeFlashes() {
        flashes_ = {temp / "four.bin", temp / "long.bin", temp / "none.bin"};
        EXPECT_TRUE(FourIcons().WriteTo(flashes_[0]));
        EXPECT_TRUE(FourIcons(FlashKind::NewSGoldEL71).WriteTo(flashes_[1]));
        WriteFile(flashes_[2], Bytes(1000, 0xFF));
        for (const auto& flash : flashes_) flashContents_.push_back(ReadFile(flash));
        files_ = flashes_;
    }

    void MakePictures() {
        const auto drawing = samples::DrawIcon(16, 16, 7);
        files_.push_back(Bitmap("pictures/0.bmp", 16, 16));
        files_.push_back(Bitmap("pictures/1.bmp", 240, 320));
        files_.push_back(Bitmap("pictures/2.bmp", 300, 10));
        files_.push_back(WriteFile(temp / "pictures/3.gif", samples::MakeGif(drawing)));
        files_.push_back(
            WriteFile(temp / "pictures/4.png", samples::MakePng(drawing, samples::PngColour::Rgba)));
        files_.push_back(WriteGpf2("pictures/0.gpf2", 16, 16, 0x08, samples::EncodeForPhone(drawing, 0x08)));
        files_.push_back(WriteFile(temp / "pictures/broken.gpf", std::string("broken")));
        files_.push_back(temp / "missing.bmp");
        files_.push_back(temp / "outputs/PNGpatch.vkp");
    }

    /// What the converter might do: its work, nothing, or nonsense.
    void Convert(const FakeProcesses::Call& call) {
        const auto option = std::find(call.arguments.begin(), call.arguments.end(), "-o");
        if (option == call.arguments.end() || dice_.OneIn(3)) return;
        const std::filesystem::path output = *std::next(option);
        WriteFile(output, dice_.OneIn(2) ? ReadFile(temp / "pictures/0.bmp") : Bytes(10, 1));
    }

    void ShowWith(RandomPrompts& prompts) {
        WindowServices services{prompts, scripted.processes, loader_};
        services.showReadMe = [this] { ++readMeShown; };
        form = std::make_unique<Form1>(std::move(session), services);
        form->show();
        QObject::connect(&inDialogs_, &QTimer::timeout, form.get(), [this] { ActInDialog(); });
        inDialogs_.start(0);
    }

    /// A dialog or a popup menu that an action opened, from within its own loop.
    void ActInDialog() {
        QWidget* open = QApplication::activePopupWidget();
        if (open == nullptr) open = QApplication::activeModalWidget();
        if (open == nullptr) return;
        const auto buttons = open->findChildren<QAbstractButton*>();
        if (!buttons.isEmpty() && dice_.OneIn(2)) return dice_.AnyOf(buttons)->click();
        const std::array keys = {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Down,
                                 Qt::Key_Up,     Qt::Key_Tab,    Qt::Key_Space};
        QTest::keyClick(open, dice_.AnyOf(keys));
    }

    /// Neither the entry nor a menu above it is disabled.
    static bool IsWithinReach(const QAction& entry) {
        bool isEnabled = entry.isEnabled() && entry.isVisible();
        for (const QObject* above = entry.parent(); above != nullptr; above = above->parent())
            if (const auto* menu = qobject_cast<const QMenu*>(above))
                isEnabled &= menu->menuAction()->isEnabled();
        return isEnabled;
    }

    void TriggerAnEntry() {
        std::vector<QAction*> entries;
        for (QAction* entry : form->findChildren<QAction*>())
            if (IsWithinReach(*entry) && entry->menu() == nullptr && entry->objectName() != "mnu_FileExit")
                entries.push_back(entry);
        dice_.AnyOf(entries)->trigger();
    }

    void PressAKey() {
        const std::array keys = {Qt::Key_Up,   Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Home,
                                 Qt::Key_End,  Qt::Key_Tab,  Qt::Key_Return, Qt::Key_Escape,   Qt::Key_F1,
                                 Qt::Key_Menu, Qt::Key_1,    Qt::Key_S,      Qt::Key_Delete};
        const std::array modifiers = {Qt::NoModifier, Qt::NoModifier, Qt::ControlModifier, Qt::ShiftModifier};
        QWidget* target = dice_.OneIn(2) ? static_cast<QWidget*>(&List()) : form.get();
        QTest::keyClick(target, dice_.AnyOf(keys), dice_.AnyOf(modifiers));
    }

    void UseTheMouse() {
        QWidget* picture = &Find<PictureView>("Picture1");
        QWidget* target = dice_.OneIn(2) ? picture : List().viewport();
        const QPoint place(dice_.Below(300), dice_.Below(340));
        if (dice_.OneIn(4)) {
            QContextMenuEvent event(QContextMenuEvent::Mouse, place, target->mapToGlobal(place));
            QApplication::sendEvent(target, &event);
        } else if (dice_.OneIn(2)) {
            QTest::mouseClick(target, Qt::LeftButton, {}, place);
        } else {
            QTest::mouseMove(target, place);
        }
    }

    void Drop() {
        QMimeData data;
        QList<QUrl> urls;
        for (int count = 1 + dice_.Below(4); count > 0; --count)
            urls.push_back(QUrl::fromLocalFile(QString::fromStdString(dice_.AnyOf(files_).string())));
        data.setUrls(urls);
        QDropEvent event({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(form.get(), &event);
    }

    void ActOnce() {
        switch (dice_.Below(8)) {
            case 0:
                return UseTheMouse();
            case 1:
                return Find<QCheckBox>("TransCheck").click();
            case 2:
                return dice_.OneIn(4) ? Drop() : PressAKey();
            case 3:
            case 4:
                return PressAKey();
            case 5:
                return form->resize(300 + dice_.Below(900), 200 + dice_.Below(600));
            default:
                return TriggerAnEntry();
        }
    }

    void ExpectFlashesUntouched() const {
        for (std::size_t i = 0; i < flashes_.size(); ++i) EXPECT_EQ(ReadFile(flashes_[i]), flashContents_[i]);
    }

    static bool HoldsPatchLines(const std::filesystem::path& path) {
        const auto file = FileSource::Open(path);
        EXPECT_TRUE(file.has_value()) << path;
        if (!file) return false;
        const auto lines = ReadWholePatch(**file);
        EXPECT_TRUE(lines.has_value()) << path;
        return lines && !lines->empty();
    }

    /// Each patch that was saved reads as one, and there are some.
    void ExpectPatchesWhole() const {
        std::ptrdiff_t patches = 0;
        for (const auto& folder : folders_)
            for (const auto& entry : std::filesystem::directory_iterator(folder))
                if (entry.path().extension() == ".vkp") patches += HoldsPatchLines(entry.path());
        EXPECT_GT(patches, 0) << "no patch was ever saved";
    }

    Dice dice_{20};
    std::vector<std::filesystem::path> files_;
    std::vector<std::filesystem::path> folders_;
    std::vector<std::filesystem::path> flashes_;
    std::vector<Bytes> flashContents_;
    QtPictureLoader loader_;
    QTimer inDialogs_;
};

TEST_F(RandomActionsTest, NothingCrashesHangsOrWritesAFlash) {
    RandomPrompts prompts(dice_, files_, folders_);
    ShowWith(prompts);
    for (int action = 0; action < kActions; ++action) {
        const auto start = std::chrono::steady_clock::now();
        ActOnce();
        QApplication::processEvents();
        ASSERT_LT(std::chrono::steady_clock::now() - start, kHang) << "action " << action;
        ASSERT_TRUE(form->isVisible()) << "closed by action " << action;
        ASSERT_TRUE(IsEnabled("mnu_FileOpen")) << "stuck after action " << action;
    }
    EXPECT_GT(prompts.asked, kActions / 20) << "the commands were never reached";
    ExpectFlashesUntouched();
    ExpectPatchesWhole();
}

}  // namespace
}  // namespace pictavo::tests
