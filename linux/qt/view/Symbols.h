#pragma once

#include <Orrivane/view/Drawing.h>
#include <Orrivane/view/Roles.h>

#include <QWidget>

namespace orrivane {

/// The built-in figure for a symbol, on a canvas of 20 × 20 points, in one colour. An unknown name
/// gives an empty square, so that a missing figure is seen.
Drawing symbolDrawing(const SymbolName& name, ColorRole color);

/// A symbol `side` points high and wide: the icon theme's, in the given colour, else the built-in
/// one.
QPixmap symbolPixmap(const SymbolName& name, ColorRole color, const QPalette& palette, int side,
                     double scale);

/// Shows a symbol at the height of a line of its font.
class SymbolWidget : public QWidget {
  public:
    SymbolWidget();
    void set(const SymbolName& name, ColorRole color, const QFont& font);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    SymbolName name_;
    ColorRole color_ = ColorRole::primary;
};

} // namespace orrivane
