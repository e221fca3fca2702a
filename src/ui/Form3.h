#pragma once

/// The Channels dialog: picks the channels of one save or load of the shown picture, and does it.

#include <QCheckBox>
#include <QDialog>

#include "session/Outcome.h"
#include "session/Ports.h"
#include "session/Session.h"

namespace pictavo {

enum class ChannelsMode { Save, Load };

class Form3 final : public QDialog {
  public:
    Form3(Session& session, Ports& ports, ChannelsMode mode, QWidget* parent);

    /// How the save or load ended; cancelled when the dialog was only closed.
    const Outcome& Ended() const { return ended_; }

  private:
    void MakeWidgets();
    void ShowSettings();
    void Remember(const ChannelFlags& channels);
    void Perform();
    ChannelFlags Chosen() const;
    QCheckBox& Check(const char* name) const { return *findChild<QCheckBox*>(name); }

    Session& session_;
    Ports& ports_;
    ChannelsMode mode_;
    Outcome ended_ = Outcome::Cancelled();
};

}  // namespace pictavo
