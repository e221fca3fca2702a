#pragma once

#include <QWidget>

namespace pictavo {

/// One line of text. Unlike a label it never asks for room: a text that is too long is cut, and shown whole
/// by the tool tip, so that another text neither moves nor repaints anything else.
class TextLine final : public QWidget {
  public:
    explicit TextLine(QWidget* parent = nullptr);

    void SetText(const QString& text);
    const QString& Text() const { return text_; }

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString text_;
};

}  // namespace pictavo
