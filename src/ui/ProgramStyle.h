#pragma once

/// The desktop's style, with one icon that is drawn here: the button at the end of a menu bar that is too
/// narrow for its menus. Every menu bar has one, mostly unseen, and Qt reads its icon from a picture file of
/// unknown kind, for which it loads all its picture readers: a tenth of the time until the window stands.

#include <QProxyStyle>

namespace pictavo {

class ProgramStyle final : public QProxyStyle {
  public:
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option = nullptr,
                       const QWidget* widget = nullptr) const override;
};

}  // namespace pictavo
