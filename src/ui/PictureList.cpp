#include "ui/PictureList.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QFontDatabase>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <array>

#include "ui/PictureListModel.h"

namespace pictavo {

namespace {

constexpr QLatin1String kDigits("0123456789");
constexpr QLatin1String kHexDigits("0123456789ABCDEF");

constexpr const char* kEmptyText = "Open a fullflash (Ctrl+O) or drop one here";

/// Of the longest usual text of each column, and whether hexadecimal digits occur in it.
struct TypicalText {
    int length;
    QLatin1String digits;
};
constexpr std::array<TypicalText, kColumns.size()> kTypicalTexts{{
    {4, kDigits},
    {3, kHexDigits},
    {3, kDigits},
    {3, kDigits},
    {4, kHexDigits},
    {7, kHexDigits},
    {7, kHexDigits},
}};

int WidestOf(const QFontMetrics& metrics, QLatin1String digits) {
    int widest = 0;
    for (const char digit : digits) widest = std::max(widest, metrics.horizontalAdvance(QLatin1Char(digit)));
    return widest;
}

bool AreDigitsEven(const QFontMetrics& metrics) {
    return std::all_of(kDigits.begin(), kDigits.end(), [&](char digit) {
        return metrics.horizontalAdvance(QLatin1Char(digit)) == metrics.horizontalAdvance(QLatin1Char('0'));
    });
}

bool IsDigit(QChar character) {
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

}  // namespace

PictureList::PictureList(QWidget* parent) : QTreeView(parent) {
    setUniformRowHeights(true);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setAllColumnsShowFocus(true);
    setSelectionMode(SingleSelection);
    setSelectionBehavior(SelectRows);
    setEditTriggers(NoEditTriggers);
    UseEvenDigits();
}

void PictureList::UseEvenDigits() {
    if (AreDigitsEven(fontMetrics())) return;
    QFont even = font();
    even.setFamilies(QFontDatabase::systemFont(QFontDatabase::FixedFont).families());
    setFont(even);
}

void PictureList::setModel(QAbstractItemModel* model) {
    QTreeView::setModel(model);
    if (model == nullptr) return;
    setColumnHidden(PictureListModel::kHiddenColumn, true);
    SizeColumns();
}

void PictureList::SizeColumns() {
    ensurePolished();
    QFont bold = font();
    bold.setBold(true);
    const QFontMetrics metrics(bold);
    const int margin = 2 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1);
    for (std::size_t i = 0; i < kTypicalTexts.size(); ++i) {
        const int column = static_cast<int>(i);
        const int text = kTypicalTexts[i].length * WidestOf(metrics, kTypicalTexts[i].digits);
        setColumnWidth(column, std::max(text + 2 * margin, header()->sectionSizeHint(column)));
    }
}

void PictureList::keyboardSearch(const QString& typed) {
    const bool isContinued =
        sinceTyped_.isValid() && sinceTyped_.elapsed() <= QApplication::keyboardInputInterval();
    sinceTyped_.start();
    if (!isContinued) typed_.clear();
    std::copy_if(typed.begin(), typed.end(), std::back_inserter(typed_), IsDigit);
    bool isNumber = false;
    const int row = typed_.toInt(&isNumber);
    if (isNumber && HasRows() && row < model()->rowCount()) setCurrentIndex(model()->index(row, 0));
}

void PictureList::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTreeView::currentChanged(current, previous);
    if (current.isValid() && current.row() != previous.row()) emit RowShown(current.row());
}

QItemSelectionModel::SelectionFlags PictureList::selectionCommand(const QModelIndex& index,
                                                                  const QEvent* event) const {
    const bool isRelease = event != nullptr && event->type() == QEvent::MouseButtonRelease;
    if (!index.isValid() || isRelease) return QItemSelectionModel::NoUpdate;
    return QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
}

void PictureList::mousePressEvent(QMouseEvent* event) {
    const int before = currentIndex().row();
    QTreeView::mousePressEvent(event);
    const QModelIndex pressed = indexAt(event->position().toPoint());
    if (pressed.isValid() && pressed.row() == before) emit RowShown(before);
    if (event->button() == Qt::RightButton && HasRows())
        emit ContextMenuWanted(event->globalPosition().toPoint());
}

void PictureList::paintEvent(QPaintEvent* event) {
    QTreeView::paintEvent(event);
    if (HasRows()) return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, kEmptyText);
}

void PictureList::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (event->reason() != QContextMenuEvent::Keyboard || !HasRows()) return;
    const QPoint place = visualRect(currentIndex()).intersected(viewport()->rect()).center();
    emit ContextMenuWanted(viewport()->mapToGlobal(place));
}

}  // namespace pictavo
