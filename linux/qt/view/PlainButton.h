#pragma once

#include <Orrivane/view/Drawing.h>

#include <QAbstractButton>

namespace orrivane {

/// A button that is nothing but a drawing.
class PlainButton : public QAbstractButton {
  public:
    PlainButton() { setFocusPolicy(Qt::StrongFocus); }
    void setDrawing(const Drawing& drawing);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Drawing drawing_;
};

} // namespace orrivane
