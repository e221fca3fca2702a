#pragma once

/// The rows of the picture list, as Qt's views ask for them.

#include <QAbstractTableModel>

#include "session/Session.h"

namespace pictavo {

/// A table over the session's rows: the columns of kColumns, and behind them one that views hide. Nothing is
/// stored beside the session: a text is made when it is asked for.
///
/// The session must outlive the model. The rows there are as many as at the last Reset; one that the session
/// no longer holds is empty, so a command may change the session and repaint before it is done.
class PictureListModel final : public QAbstractTableModel {
    Q_OBJECT

  public:
    /// Kept: each row has one sub-item more than columns are shown, of one zero byte, in a column that is
    /// never shown.
    static constexpr int kHiddenColumn = static_cast<int>(kColumns.size());
    static constexpr int kColumnCount = kHiddenColumn + 1;

    explicit PictureListModel(const Session& session, QObject* parent = nullptr);

    /// Another flash, or none, is open.
    void Reset();

    /// Pictures were replaced or the table was read again, of as many rows as before.
    void RowsChanged();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;

    /// Texts, a bold font for a replaced picture, and for assistive tools a cell's text behind its heading
    /// and "replaced" as its description.
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

  private:
    bool IsReplaced(std::size_t row) const;

    const Session& session_;
    int rowCount_ = 0;
};

}  // namespace pictavo
