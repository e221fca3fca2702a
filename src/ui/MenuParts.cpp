#include "ui/MenuParts.h"

#include "ui/QtText.h"

namespace pictavo {

namespace {

QMenu& Named(QMenu& menu, const QString& name) {
    menu.setObjectName(name);
    return menu;
}

/// Where the mnemonic sign goes; -1 when every letter is taken.
qsizetype FreeLetter(const QString& caption, const QSet<QChar>& taken) {
    for (qsizetype i = 0; i < caption.size(); ++i)
        if (caption[i].isLetterOrNumber() && !taken.contains(caption[i].toLower())) return i;
    return -1;
}

QString WithMnemonic(const QString& plain, QSet<QChar>& taken) {
    const qsizetype at = FreeLetter(plain, taken);
    if (at < 0) return WithoutMnemonic(plain);
    taken.insert(plain[at].toLower());
    return WithoutMnemonic(plain.left(at)) + '&' + WithoutMnemonic(plain.mid(at));
}

}  // namespace

QMenu& AddMenu(QMenuBar& bar, const QString& name, const QString& caption) {
    return Named(*bar.addMenu(caption), name);
}

QMenu& AddMenu(QMenu& menu, const QString& name, const QString& caption) {
    return Named(*menu.addMenu(caption), name);
}

QMenu& AddPopup(QWidget& window, const QString& name) {
    return Named(*new QMenu(&window), name);
}

QAction& AddEntry(QMenu& menu, const QString& name, const QString& caption) {
    QAction* entry = menu.addAction(caption);
    entry->setObjectName(name);
    return *entry;
}

QAction* FindEntry(const QWidget& window, const QString& name) {
    if (const auto* menu = window.findChild<QMenu*>(name)) return menu->menuAction();
    return window.findChild<QAction*>(name);
}

QString PlainText(const QString& caption) {
    QString plain = caption;
    plain.replace("&&", QChar('\0'));
    plain.remove('&');
    return plain.replace(QChar('\0'), "&");
}

std::string PlainCaption(const QString& caption) {
    return PlainText(caption).toStdString();
}

QSet<QChar> AssignMnemonics(const QList<QAction*>& entries) {
    QSet<QChar> taken;
    for (QAction* entry : entries) {
        if (entry->isSeparator()) continue;
        entry->setText(WithMnemonic(PlainText(entry->text()), taken));
        if (entry->menu() != nullptr) AssignMnemonics(entry->menu()->actions());
    }
    return taken;
}

void AssignMnemonics(const QList<QAbstractButton*>& buttons, QSet<QChar> taken) {
    for (QAbstractButton* button : buttons) button->setText(WithMnemonic(PlainText(button->text()), taken));
}

}  // namespace pictavo
