#pragma once

#include <Orrivane/view/Canvas.h>

#include <QWidget>

namespace orrivane {

/// Draws over the whole of `widget` in device pixels; to be called while it paints.
void paintDrawing(QWidget& widget, const Drawing& drawing);

/// A canvas: its drawing follows its size.
class CanvasWidget : public QWidget {
  public:
    CanvasWidget() { setAttribute(Qt::WA_TransparentForMouseEvents); }
    void set(const Canvas& canvas);

    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    std::optional<Canvas> canvas_;
};

} // namespace orrivane
