#pragma once

/// The box that shows the picture.

#include <QImage>
#include <QWidget>

namespace pictavo {

/// kViewWidth x kViewHeight points inside a frame line, which is in the highlight colour while the box has
/// the focus. The box is white whatever the theme. A point of the image is a block of whole device pixels, as
/// large as the screen's scale allows, and never smoothed; what then remains is white, the same on opposite
/// sides.
class PictureView final : public QWidget {
    Q_OBJECT

  public:
    explicit PictureView(QWidget* parent = nullptr);

    /// An image of kViewWidth x kViewHeight points, or a null one for the white box.
    void SetImage(QImage image);

    const QImage& Image() const { return image_; }
    QSize sizeHint() const override;

  signals:
    /// The right button or the context-menu key was pressed. `global` is a point of the screen.
    void ContextMenuWanted(QPoint global);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    QImage image_;
};

}  // namespace pictavo
