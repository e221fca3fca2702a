#include "ui/Captions.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QTabWidget>

#include "ui/MenuParts.h"
#include "ui/QtText.h"

namespace pictavo {

namespace {

/// A caption that holds "&" shows it.
void SetCaption(QWidget& window, const QString& name, const QString& caption) {
    if (QAction* entry = FindEntry(window, name)) return entry->setText(WithoutMnemonic(caption));
    auto* control = window.findChild<QWidget*>(name);
    if (auto* button = qobject_cast<QAbstractButton*>(control)) button->setText(WithoutMnemonic(caption));
    if (auto* frame = qobject_cast<QGroupBox*>(control)) frame->setTitle(WithoutMnemonic(caption));
    if (auto* tabs = qobject_cast<QTabWidget*>(control)) tabs->setTabText(0, WithoutMnemonic(caption));
}

}  // namespace

void ApplyCaptions(QWidget& window, const std::map<std::string, std::string>& captions) {
    const QString prefix = window.isModal() ? window.objectName() + "." : QString();
    for (const auto& [name, text] : captions) {
        const QString control = QString::fromStdString(name);
        if (control == window.objectName()) window.setWindowTitle(Shown(text));
        if (control.startsWith(prefix)) SetCaption(window, control.mid(prefix.size()), Shown(text));
    }
}

}  // namespace pictavo
