#pragma once

#include <QFrame>

#include "ui/PictureView.h"
#include "ui/TextLine.h"

namespace pictavo {

/// The picture under its information line, which is the frame's caption.
class PictureFrame final : public QFrame {
  public:
    explicit PictureFrame(QWidget* parent = nullptr);

    void SetCaption(const QString& caption);
    const QString& Caption() const { return caption_->Text(); }
    PictureView& View() { return *view_; }

  private:
    TextLine* caption_;
    PictureView* view_;
};

}  // namespace pictavo
