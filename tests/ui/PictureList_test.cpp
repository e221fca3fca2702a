#include "ui/PictureList.h"

#include <QContextMenuEvent>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <gmock/gmock.h>

#include "support/WidgetApplication.h"
#include "ui/PictureListModel.h"

namespace pictavo::tests {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Counts how often it is asked for a text.
class CountingModel final : public QAbstractTableModel {
  public:
    explicit CountingModel(const PictureListModel& model) : model_(model) {}
    int rowCount(const QModelIndex& parent) const override { return model_.rowCount(parent); }
    int columnCount(const QModelIndex& parent) const override { return model_.columnCount(parent); }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        return model_.headerData(section, orientation, role);
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role == Qt::DisplayRole) ++texts;
        return model_.data(model_.index(index.row(), index.column()), role);
    }
    mutable int texts = 0;

  private:
    const PictureListModel& model_;
};

class PictureListTest : public ::testing::Test {
  protected:
    PictureListTest() {
        QObject::connect(&list, &PictureList::RowShown, [this](int row) { shown.push_back(row); });
        QObject::connect(&list, &PictureList::ContextMenuWanted, [this](QPoint global) {
            menus.push_back(global);
            rowsAtMenus.push_back(list.currentIndex().row());
        });
        list.setModel(&model);
        list.resize(600, 400);
        list.show();
        list.setFocus();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&list));
    }

    void Hold(int rows) {
        session.rows.clear();
        for (int number = 0; number < rows; ++number)
            session.rows.push_back({number, 16, 16, 0x8A, 0xFFFFFFFU, 0xFFFFFFFU});
        session.replaced.assign(session.rows.size(), false);
        model.Reset();
    }

    void Key(Qt::Key key) { QTest::keyClick(&list, key); }
    void Type(const char* digits) { QTest::keyClicks(&list, digits); }

    QPoint PlaceOf(int row, int column = 1) const {
        return list.visualRect(model.index(row, column)).center();
    }
    QPoint BelowTheRows() const { return {10, list.viewport()->height() - 2}; }

    void Press(Qt::MouseButton button, QPoint place) {
        QTest::mousePress(list.viewport(), button, {}, place);
        QTest::mouseRelease(list.viewport(), button, {}, place);
    }

    void PressMenuKey() {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
        QApplication::sendEvent(&list, &event);
    }

    /// The current row is the selected one, as a whole.
    void ExpectOnlySelected(int row) const {
        EXPECT_EQ(CurrentRow(), row);
        ASSERT_EQ(list.selectionModel()->selectedRows().size(), 1);
        EXPECT_EQ(list.selectionModel()->selectedRows().constFirst().row(), row);
    }

    int CurrentRow() const { return list.currentIndex().row(); }

    Session session;
    PictureListModel model{session};
    PictureList list;
    std::vector<int> shown;
    std::vector<QPoint> menus;
    std::vector<int> rowsAtMenus;
};

TEST_F(PictureListTest, ArrowKeysShowEachPictureOnce) {
    Hold(5);
    list.setCurrentIndex(model.index(0, 0));
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Up, Qt::Key_Down}) Key(key);
    EXPECT_THAT(shown, ElementsAre(0, 1, 2, 1, 2));
}

TEST_F(PictureListTest, AtTheEndsNothingIsShownAgain) {
    Hold(2);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Down}) Key(key);
    EXPECT_EQ(CurrentRow(), 1);
    EXPECT_EQ(std::count(shown.begin(), shown.end(), 1), 1);
}

TEST_F(PictureListTest, AHeldArrowKeyShowsEachPicture) {
    Hold(40);
    list.setCurrentIndex(model.index(0, 0));
    shown.clear();
    for (int i = 0; i < 30; ++i) {
        QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier, QString(), true);
        QApplication::sendEvent(&list, &repeated);
    }
    ASSERT_EQ(shown.size(), 30U);
    for (int i = 0; i < 30; ++i) EXPECT_EQ(shown[static_cast<std::size_t>(i)], i + 1);
}

TEST_F(PictureListTest, HomeEndAndPageKeysMove) {
    Hold(500);
    list.setCurrentIndex(model.index(0, 0));
    Key(Qt::Key_End);
    EXPECT_EQ(CurrentRow(), 499);
    Key(Qt::Key_PageUp);
    const int pageUp = CurrentRow();
    EXPECT_LT(pageUp, 490);
    EXPECT_GT(pageUp, 400);
    Key(Qt::Key_Home);
    EXPECT_EQ(CurrentRow(), 0);
    Key(Qt::Key_PageDown);
    const int pageDown = CurrentRow();
    EXPECT_GT(pageDown, 9);
    EXPECT_LT(pageDown, 99);
    EXPECT_THAT(shown, ElementsAre(0, 499, pageUp, 0, pageDown));
}

TEST_F(PictureListTest, AClickShowsTheRow) {
    Hold(5);
    Press(Qt::LeftButton, PlaceOf(3));
    EXPECT_THAT(shown, ElementsAre(3));
    ExpectOnlySelected(3);
    EXPECT_THAT(menus, IsEmpty());
}

TEST_F(PictureListTest, AClickOnTheCurrentRowShowsItAgain) {
    Hold(5);
    Press(Qt::LeftButton, PlaceOf(3, 1));
    Press(Qt::LeftButton, PlaceOf(3, 4));
    EXPECT_THAT(shown, ElementsAre(3, 3));
}

TEST_F(PictureListTest, AClickBelowTheRowsShowsNothing) {
    Hold(2);
    Press(Qt::LeftButton, PlaceOf(1));
    Press(Qt::LeftButton, BelowTheRows());
    EXPECT_THAT(shown, ElementsAre(1));
    ExpectOnlySelected(1);
}

TEST_F(PictureListTest, OneWholeRowIsSelectedWhateverKeysAreHeld) {
    Hold(5);
    Press(Qt::LeftButton, PlaceOf(1));
    for (const Qt::KeyboardModifier held : {Qt::ShiftModifier, Qt::ControlModifier}) {
        QTest::mouseClick(list.viewport(), Qt::LeftButton, held, PlaceOf(3));
        ExpectOnlySelected(3);
        QTest::mouseClick(list.viewport(), Qt::LeftButton, held, PlaceOf(3));
        ExpectOnlySelected(3);
        QTest::keyClick(&list, Qt::Key_Up, held);
        ExpectOnlySelected(2);
        QTest::keyClick(&list, Qt::Key_Space, held);
        ExpectOnlySelected(2);
    }
}

TEST_F(PictureListTest, ADragShowsTheRowsItPasses) {
    Hold(9);
    QTest::mousePress(list.viewport(), Qt::LeftButton, {}, PlaceOf(2));
    for (const int row : {3, 4, 5}) {
        QMouseEvent move(QEvent::MouseMove, PlaceOf(row), list.viewport()->mapToGlobal(PlaceOf(row)),
                         Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(list.viewport(), &move);
    }
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, PlaceOf(5));
    EXPECT_THAT(shown, ElementsAre(2, 3, 4, 5));
    ExpectOnlySelected(5);
}

TEST_F(PictureListTest, ARightPressSelectsTheRowAndWantsTheMenu) {
    Hold(5);
    list.setCurrentIndex(model.index(0, 0));
    const QPoint place = PlaceOf(2);
    QTest::mousePress(list.viewport(), Qt::RightButton, {}, place);
    EXPECT_THAT(rowsAtMenus, ElementsAre(2));
    EXPECT_THAT(menus, ElementsAre(list.viewport()->mapToGlobal(place)));
    EXPECT_THAT(shown, ElementsAre(0, 2));
    ExpectOnlySelected(2);
}

TEST_F(PictureListTest, ARightPressBelowTheRowsWantsTheMenuOfTheCurrentRow) {
    Hold(2);
    list.setCurrentIndex(model.index(1, 0));
    Press(Qt::RightButton, BelowTheRows());
    EXPECT_THAT(rowsAtMenus, ElementsAre(1));
    ExpectOnlySelected(1);
}

TEST_F(PictureListTest, WithoutRowsThereIsNoMenu) {
    Hold(0);
    Press(Qt::RightButton, {20, 20});
    PressMenuKey();
    EXPECT_THAT(menus, IsEmpty());
}

TEST_F(PictureListTest, WithoutAModelThereIsNoMenu) {
    list.setModel(nullptr);
    Press(Qt::RightButton, {20, 20});
    PressMenuKey();
    Type("1");
    EXPECT_THAT(menus, IsEmpty());
    EXPECT_THAT(shown, IsEmpty());
}

TEST_F(PictureListTest, TheMenuKeyWantsTheMenuAtTheCurrentRow) {
    Hold(5);
    list.setCurrentIndex(model.index(3, 0));
    PressMenuKey();
    EXPECT_THAT(menus, ElementsAre(list.viewport()->mapToGlobal(PlaceOf(3, 0))));
}

TEST_F(PictureListTest, TheMenuOfARowScrolledAwayStaysInsideTheList) {
    Hold(500);
    list.setCurrentIndex(model.index(0, 0));
    list.verticalScrollBar()->setValue(list.verticalScrollBar()->maximum());
    PressMenuKey();
    ASSERT_EQ(menus.size(), 1U);
    EXPECT_TRUE(list.viewport()->rect().contains(list.viewport()->mapFromGlobal(menus[0])));
}

TEST_F(PictureListTest, AMouseMadeContextMenuEventWantsNoSecondMenu) {
    Hold(5);
    QTest::mousePress(list.viewport(), Qt::RightButton, {}, PlaceOf(2));
    QContextMenuEvent event(QContextMenuEvent::Mouse, PlaceOf(2), list.viewport()->mapToGlobal(PlaceOf(2)));
    QApplication::sendEvent(list.viewport(), &event);
    EXPECT_EQ(menus.size(), 1U);
    EXPECT_TRUE(event.isAccepted());
}

TEST_F(PictureListTest, TypedDigitsMoveToThePictureOfThatNumber) {
    Hold(500);
    Type("142");
    ExpectOnlySelected(142);
    EXPECT_TRUE(list.viewport()->rect().contains(PlaceOf(142)));
}

TEST_F(PictureListTest, LeadingZerosAreFree) {
    Hold(500);
    Type("0042");
    EXPECT_EQ(CurrentRow(), 42);
}

TEST_F(PictureListTest, AfterAPauseTheDigitsStartAnew) {
    Hold(500);
    Type("14");
    const int usual = QApplication::keyboardInputInterval();
    QApplication::setKeyboardInputInterval(0);
    QTest::qWait(2);
    Type("3");
    QApplication::setKeyboardInputInterval(usual);
    EXPECT_EQ(CurrentRow(), 3);
}

TEST_F(PictureListTest, ANumberWithoutAPictureMovesNowhere) {
    Hold(50);
    Type("49");
    Type("9");
    Type("99999999999");
    EXPECT_EQ(CurrentRow(), 49);
}

TEST_F(PictureListTest, LettersMoveNowhere) {
    Hold(50);
    list.setCurrentIndex(model.index(7, 0));
    shown.clear();
    Type("x#");
    EXPECT_EQ(CurrentRow(), 7);
    EXPECT_THAT(shown, IsEmpty());
}

TEST_F(PictureListTest, AnotherFlashLeavesNoRowCurrent) {
    Hold(5);
    list.setCurrentIndex(model.index(3, 0));
    Hold(4);
    EXPECT_FALSE(list.currentIndex().isValid());
    EXPECT_THAT(shown, ElementsAre(3));
    list.setCurrentIndex(model.index(3, 0));
    EXPECT_THAT(shown, ElementsAre(3, 3));
}

TEST_F(PictureListTest, OnlyTheSevenColumnsAreSeenAlsoAfterAnotherFlash) {
    for (const int rows : {5, 7, 0}) {
        Hold(rows);
        for (int column = 0; column < 7; ++column) EXPECT_FALSE(list.isColumnHidden(column));
        EXPECT_TRUE(list.isColumnHidden(PictureListModel::kHiddenColumn));
    }
}

TEST_F(PictureListTest, AWidthThatTheUserChoseStaysWithAnotherFlash) {
    Hold(5);
    list.setColumnWidth(2, 123);
    Hold(7);
    EXPECT_EQ(list.columnWidth(2), 123);
}

TEST_F(PictureListTest, EachColumnHoldsItsHeadingAndABoldText) {
    Hold(2);
    session.replaced[1] = true;
    model.RowsChanged();
    for (int column = 0; column < 7; ++column) {
        const int width = list.columnWidth(column);
        list.resizeColumnToContents(column);
        EXPECT_LE(list.columnWidth(column), width) << "column " << column;
        EXPECT_LE(width, 2 * list.columnWidth(column) + 20) << "column " << column;
    }
}

TEST_F(PictureListTest, DigitsAreOfOneWidth) {
    const QFontMetrics metrics = list.fontMetrics();
    for (const char digit : {'1', '4', '7', '9'})
        EXPECT_EQ(metrics.horizontalAdvance(digit), metrics.horizontalAdvance('0'));
}

TEST_F(PictureListTest, OnlyRowsInSightAreAskedForTheirTexts) {
    Hold(2500);
    EXPECT_TRUE(list.uniformRowHeights());
    CountingModel counting(model);
    list.setModel(&counting);
    list.grab();
    EXPECT_GT(counting.texts, 7 * 5);
    EXPECT_LT(counting.texts, 7 * 100);
    list.setModel(&model);
}

}  // namespace
}  // namespace pictavo::tests
