#pragma once

/// The list of the flash's pictures: a row each, one of them the current one.

#include <QElapsedTimer>
#include <QTreeView>

namespace pictavo {

/// Made for PictureListModel. Rows are of one height and columns sized for what they can hold, so that no row
/// is asked for before it is seen. The current row, as a whole, is the selected one, whatever keys are held.
/// Digits typed quickly one after the other move to the picture of that number, if there is one; leading
/// zeros are free. A list without rows says how to come by some.
class PictureList final : public QTreeView {
    Q_OBJECT

  public:
    explicit PictureList(QWidget* parent = nullptr);

    /// Sizes the columns and hides the model's hidden one.
    void setModel(QAbstractItemModel* model) override;

    void keyboardSearch(const QString& typed) override;

  signals:
    /// The current row is another one now, by key, mouse or program, or the current row was clicked again
    /// (the view may have shown another picture meanwhile). Once for each change or click.
    void RowShown(int row);

    /// The right button was pressed in a list that has rows, after the row under it became the current one;
    /// or the context-menu key was. `global` is a point of the screen.
    void ContextMenuWanted(QPoint global);

  protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    bool HasRows() const { return model() != nullptr && model()->rowCount() > 0; }
    void SizeColumns();
    void UseEvenDigits();

    QString typed_;
    QElapsedTimer sinceTyped_;
};

}  // namespace pictavo
