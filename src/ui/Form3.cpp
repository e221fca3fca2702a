#include "ui/Form3.h"

#include <QPushButton>
#include <QVBoxLayout>
#include <array>

#include "session/Channels.h"
#include "session/Report.h"
#include "ui/Captions.h"
#include "ui/MenuParts.h"

namespace pictavo {

namespace {

constexpr std::array kChecks = {std::pair("Check1", "R"), std::pair("Check2", "G"), std::pair("Check3", "B"),
                                std::pair("Check4", "Alpha"), std::pair("Check5", "Remember")};

}  // namespace

Form3::Form3(Session& session, Ports& ports, ChannelsMode mode, QWidget* parent)
    : QDialog(parent), session_(session), ports_(ports), mode_(mode) {
    setObjectName("Form3");
    setModal(true);
    setWindowTitle("Channels");
    MakeWidgets();
    ApplyCaptions(*this, session_.texts.captions);
    AssignMnemonics(findChildren<QAbstractButton*>());
    ShowSettings();
}

void Form3::MakeWidgets() {
    auto* layout = new QVBoxLayout(this);
    for (const auto& [name, caption] : kChecks) {
        auto* check = new QCheckBox(caption);
        check->setObjectName(name);
        layout->addWidget(check);
    }
    auto* perform = new QPushButton("OK");
    perform->setObjectName("Command1");
    perform->setDefault(true);
    layout->addWidget(perform);
    connect(perform, &QPushButton::clicked, this, [this] { Perform(); });
}

void Form3::ShowSettings() {
    const AppSettings& settings = session_.settings;
    Check("Check1").setChecked(settings.ChanR);
    Check("Check2").setChecked(settings.ChanG);
    Check("Check3").setChecked(settings.ChanB);
    Check("Check4").setChecked(settings.ChanA);
}

ChannelFlags Form3::Chosen() const {
    return {Check("Check1").isChecked(), Check("Check2").isChecked(), Check("Check3").isChecked(),
            Check("Check4").isChecked()};
}

void Form3::Remember(const ChannelFlags& channels) {
    const Status stored = RememberChannels(session_, channels);
    if (!stored) Tell(session_, ports_, stored.error());
}

void Form3::Perform() {
    const ChannelFlags channels = Chosen();
    if (Check("Check5").isChecked()) Remember(channels);
    ended_ = mode_ == ChannelsMode::Save ? SaveChannels(session_, ports_, channels)
                                         : LoadChannels(session_, ports_, channels);
    accept();
}

}  // namespace pictavo
