#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QProgressBar>
#include <QScreen>
#include <QSplitter>
#include <QStatusBar>
#include <QStyle>
#include <QTabWidget>
#include <QVBoxLayout>

#include "ui/Form1.h"

namespace pictavo {

namespace {

constexpr QSize kSize(1060, 640);
constexpr QSize kLeastSize(760, 520);
constexpr int kInfoLines = 6;
constexpr int kBarWidth = 220;

/// That of the columns with all that stands around them. What a style puts between a page and the frame of
/// its tabs it does not tell; some letters' width is more than any does.
int WidthOfList(const PictureList& list) {
    const int scrollBar = list.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const int frames = 2 * (list.frameWidth() + list.style()->pixelMetric(QStyle::PM_DefaultFrameWidth));
    constexpr int kLettersAround = 4;
    return list.header()->length() + scrollBar + frames +
           kLettersAround * list.fontMetrics().averageCharWidth();
}

}  // namespace

void Form1::MakeWidgets() {
    auto* splitter = new QSplitter(this);
    splitter->setObjectName("Splitter1");
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(MakeLeftSide());
    splitter->addWidget(MakeRightSide());
    splitter->setStretchFactor(1, 1);  // what a wide window has more is the picture's
    setCentralWidget(splitter);
    MakeBottom();
    const QSize available = screen()->availableSize();
    setMinimumSize(kLeastSize.boundedTo(available));
    resize(kSize.boundedTo(available));
    const int list = WidthOfList(*list_);
    splitter->setSizes({list, width() - list});
}

QWidget* Form1::MakeLeftSide() {
    list_ = new PictureList;
    list_->setObjectName("ListView1");
    list_->setAccessibleName("Pictures");
    list_->setModel(&model_);
    tabs_ = new QTabWidget;
    tabs_->setObjectName("TabStrip1");
    tabs_->addTab(list_, "Pictures");
    tabs_->tabBar()->setFocusPolicy(Qt::NoFocus);
    return tabs_;
}

QWidget* Form1::MakeInfoFrame() {
    info_ = new QLabel;
    info_->setObjectName("FFinfol");
    info_->setTextFormat(Qt::PlainText);
    info_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    info_->setMinimumHeight(kInfoLines * info_->fontMetrics().lineSpacing());
    auto* frame = new QGroupBox("Fullflash info");
    frame->setObjectName("FFinfo");
    (new QVBoxLayout(frame))->addWidget(info_);
    return frame;
}

QWidget* Form1::MakeRightSide() {
    pictureFrame_ = new PictureFrame;
    pictureFrame_->setObjectName("PICframe");
    transparency_ = new QCheckBox("transparency");
    transparency_->setObjectName("TransCheck");
    transparency_->setFocusPolicy(Qt::TabFocus);  // a click leaves the arrow keys with the list
    auto* side = new QWidget;
    auto* layout = new QVBoxLayout(side);
    layout->addWidget(pictureFrame_, 1);
    layout->addWidget(transparency_);
    layout->addWidget(MakeInfoFrame());
    return side;
}

void Form1::MakeBottom() {
    progress_ = new QProgressBar;
    progress_->setObjectName("ProgressBar1");
    progress_->setAccessibleName("Progress");
    progress_->setRange(0, 100);
    progress_->setValue(0);
    progress_->setMaximumWidth(kBarWidth);
    progress_->hide();  // but while a command is at work
    line_ = new TextLine;
    line_->setObjectName("Line1");
    statusBar()->addWidget(line_, 1);
    statusBar()->addPermanentWidget(progress_);
}

}  // namespace pictavo
