#pragma once

#include <desktop/support/Theme.h>

#include <vector>

#include <QPainterPath>
#include <QWidget>

namespace orrivane::desktop {

/// A sheet to draw on, in points.
class SketchCanvas final : public QWidget {
    Q_OBJECT

  public:
    SketchCanvas(const Theme& theme, QWidget* parent);

    void setColor(const QColor& color) { color_ = color; }
    void setThickness(double points) { thickness_ = points; }
    void undo();
    void redo();
    void clear();
    void setGrid(bool shown);
    bool grid() const { return grid_; }

  private:
    struct Stroke {
        QPainterPath path;
        QColor color;
        double thickness;
        bool filled;
    };

    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void drawSample();

    Theme theme_;
    QColor color_;
    double thickness_ = 3;
    bool grid_ = true;
    std::vector<Stroke> strokes_;
    std::vector<Stroke> undone_;
};

} // namespace orrivane::desktop
