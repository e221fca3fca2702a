#include "ui/PictureListModel.h"

#include <QAbstractItemModelTester>
#include <QFont>
#include <QSignalSpy>
#include <gtest/gtest.h>

#include "support/WidgetApplication.h"

namespace pictavo::tests {
namespace {

PictureRecord Record(int number) {
    return {.number = number,
            .width = 16,
            .height = 240,
            .typeCode = 0x05,
            .pitOffset = 0xA0000U + 8U * static_cast<std::uint32_t>(number),
            .picOffset = 0x12345};
}

class PictureListModelTest : public ::testing::Test {
  protected:
    void Hold(int rows) {
        session.rows.clear();
        for (int number = 0; number < rows; ++number) session.rows.push_back(Record(number));
        session.replaced.assign(session.rows.size(), false);
        model.Reset();
    }

    QVariant At(int row, int column, int role = Qt::DisplayRole) const {
        return model.data(model.index(row, column), role);
    }

    Session session;
    PictureListModel model{session};
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(PictureListModelTest, WithoutAFlashItHasNoRows) {
    EXPECT_EQ(model.rowCount(), 0);
}

TEST_F(PictureListModelTest, TheHeadingsAreThoseOfTheColumns) {
    QStringList headings;
    for (int column = 0; column < 7; ++column)
        headings.append(model.headerData(column, Qt::Horizontal).toString());
    EXPECT_EQ(headings.join(' '), "# hex width height Type PIToffset PICoffset");
}

TEST_F(PictureListModelTest, ARowShowsItsRecord) {
    Hold(43);
    QStringList texts;
    for (int column = 0; column < 7; ++column) texts.append(At(42, column).toString());
    EXPECT_EQ(texts.join(' '), "0042 02A 16 240 0500 A0150 0012345");
}

TEST_F(PictureListModelTest, ASeventhSubItemHoldsOneZeroByte) {
    Hold(1);
    EXPECT_EQ(model.columnCount(), 8);
    EXPECT_EQ(At(0, PictureListModel::kHiddenColumn).toString(), QString(1, QChar(0)));
    EXPECT_EQ(model.headerData(PictureListModel::kHiddenColumn, Qt::Horizontal).toString(), "");
}

TEST_F(PictureListModelTest, AReplacedPictureIsBold) {
    Hold(2);
    session.replaced[1] = true;
    for (int column = 0; column < 7; ++column) {
        EXPECT_FALSE(At(0, column, Qt::FontRole).isValid());
        EXPECT_TRUE(At(1, column, Qt::FontRole).value<QFont>().bold());
    }
}

TEST_F(PictureListModelTest, ARowWithoutAMarkIsNotBold) {
    Hold(2);
    session.replaced.clear();
    session.replaced.shrink_to_fit();
    EXPECT_FALSE(At(1, 0, Qt::FontRole).isValid());
}

TEST_F(PictureListModelTest, AssistiveToolsHearTheHeadingAndThatAPictureIsReplaced) {
    Hold(2);
    session.replaced[1] = true;
    EXPECT_EQ(At(1, 2, Qt::AccessibleTextRole).toString(), "width 16");
    EXPECT_EQ(At(0, 2, Qt::AccessibleDescriptionRole).toString(), "");
    EXPECT_EQ(At(1, 2, Qt::AccessibleDescriptionRole).toString(), "replaced");
}

TEST_F(PictureListModelTest, ReplacementsAreToldForAllRows) {
    Hold(3);
    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    model.RowsChanged();
    ASSERT_EQ(changes.count(), 1);
    EXPECT_EQ(changes[0][0].toModelIndex(), model.index(0, 0));
    EXPECT_EQ(changes[0][1].toModelIndex(), model.index(2, 7));
}

TEST_F(PictureListModelTest, WithoutRowsNoChangeIsTold) {
    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    model.RowsChanged();
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(PictureListModelTest, AnotherFlashIsShownFromTheResetOn) {
    Hold(2);
    session.rows.push_back(Record(2));
    EXPECT_EQ(model.rowCount(), 2);
    QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    model.Reset();
    EXPECT_EQ(resets.count(), 1);
    EXPECT_EQ(model.rowCount(), 3);
    EXPECT_EQ(At(2, 0).toString(), "0002");
}

TEST_F(PictureListModelTest, RowsThatTheSessionDroppedAreEmptyUntilTheReset) {
    Hold(3);
    session.rows.clear();
    session.replaced.clear();
    EXPECT_EQ(model.rowCount(), 3);
    EXPECT_FALSE(At(2, 0).isValid());
    EXPECT_FALSE(At(2, 0, Qt::FontRole).isValid());
}

}  // namespace
}  // namespace pictavo::tests
