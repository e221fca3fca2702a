#include "ui/PictureFrame.h"

#include <QVBoxLayout>

namespace pictavo {

PictureFrame::PictureFrame(QWidget* parent) : QFrame(parent), caption_(new TextLine), view_(new PictureView) {
    setFrameShape(StyledPanel);
    view_->setObjectName("Picture1");
    view_->setAccessibleName("Picture");
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(caption_);
    layout->addWidget(view_, 1, Qt::AlignCenter);
}

void PictureFrame::SetCaption(const QString& caption) {
    caption_->SetText(caption);
    view_->setAccessibleDescription(caption);
}

}  // namespace pictavo
