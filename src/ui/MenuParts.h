#pragma once

/// Menus and their entries under the names by which language files and tests know them.

#include <QAbstractButton>
#include <QMenu>
#include <QMenuBar>
#include <QSet>

namespace pictavo {

/// Adds a menu to a menu bar or to a menu, or makes a popup menu of a window.
QMenu& AddMenu(QMenuBar& bar, const QString& name, const QString& caption);
QMenu& AddMenu(QMenu& menu, const QString& name, const QString& caption);
QMenu& AddPopup(QWidget& window, const QString& name);

QAction& AddEntry(QMenu& menu, const QString& name, const QString& caption);

/// The entry, or the entry that opens the menu, of this name in the window; null when there is none.
QAction* FindEntry(const QWidget& window, const QString& name);

/// A caption as people read it, without mnemonic signs.
QString PlainText(const QString& caption);
std::string PlainCaption(const QString& caption);

/// Gives every entry of a menu, and of the menus in it, a letter to press: the first of its caption that no
/// entry before it has. Returns the letters of the menu itself.
QSet<QChar> AssignMnemonics(const QList<QAction*>& entries);

/// The same for buttons and check boxes of one window, in which `taken` are pressed for something else.
void AssignMnemonics(const QList<QAbstractButton*>& buttons, QSet<QChar> taken = {});

}  // namespace pictavo
