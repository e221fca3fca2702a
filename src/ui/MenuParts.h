#pragma once

/// Menus and their entries under the names by which language files and tests know them.

#include <QMenu>
#include <QMenuBar>

namespace pictavo {

/// Adds a menu to a menu bar or to a menu, or makes a popup menu of a window.
QMenu& AddMenu(QMenuBar& bar, const QString& name, const QString& caption);
QMenu& AddMenu(QMenu& menu, const QString& name, const QString& caption);
QMenu& AddPopup(QWidget& window, const QString& name);

QAction& AddEntry(QMenu& menu, const QString& name, const QString& caption);

/// The entry, or the entry that opens the menu, of this name in the window; null when there is none.
QAction* FindEntry(const QWidget& window, const QString& name);

/// A caption as people read it, without mnemonic signs.
std::string PlainCaption(const QString& caption);

/// Gives every entry of a menu, and of the menus in it, a letter to press: the first of its caption that no
/// entry before it has.
void AssignMnemonics(const QList<QAction*>& entries);

}  // namespace pictavo
