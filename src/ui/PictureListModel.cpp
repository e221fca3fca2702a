#include "ui/PictureListModel.h"

#include <QFont>

namespace pictavo {

namespace {

QString Latin1(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

QString Heading(int column) {
    if (column == PictureListModel::kHiddenColumn) return {};
    return Latin1(ColumnName(kColumns[static_cast<std::size_t>(column)]));
}

QString CellText(const PictureRecord& record, int column) {
    if (column == PictureListModel::kHiddenColumn) return QString(QChar('\0'));
    return Latin1(ColumnText(record, kColumns[static_cast<std::size_t>(column)]));
}

QVariant BoldFont() {
    QFont font;
    font.setBold(true);
    return font;
}

}  // namespace

PictureListModel::PictureListModel(const Session& session, QObject* parent)
    : QAbstractTableModel(parent), session_(session), rowCount_(static_cast<int>(session.rows.size())) {}

void PictureListModel::Reset() {
    beginResetModel();
    rowCount_ = static_cast<int>(session_.rows.size());
    endResetModel();
}

void PictureListModel::RowsChanged() {
    if (rowCount_ > 0) emit dataChanged(index(0, 0), index(rowCount_ - 1, kColumnCount - 1));
}

int PictureListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rowCount_;
}

int PictureListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kColumnCount;
}

bool PictureListModel::IsReplaced(std::size_t row) const {
    return row < session_.replaced.size() && session_.replaced[row];
}

QVariant PictureListModel::data(const QModelIndex& index, int role) const {
    const auto row = static_cast<std::size_t>(index.row());
    if (!index.isValid() || row >= session_.rows.size()) return {};
    switch (role) {
        case Qt::DisplayRole:
            return CellText(session_.rows[row], index.column());
        case Qt::AccessibleTextRole:
            return Heading(index.column()) + ' ' + CellText(session_.rows[row], index.column());
        case Qt::AccessibleDescriptionRole:
            return IsReplaced(row) ? QString("replaced") : QString();
        case Qt::FontRole:
            return IsReplaced(row) ? BoldFont() : QVariant();
        default:
            return {};
    }
}

QVariant PictureListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal) return {};
    if (section < 0 || section >= kColumnCount) return {};
    return Heading(section);
}

}  // namespace pictavo
