#pragma once

#include <desktop/windows/AppMenuPublisher.h>
#include <desktop/windows/SketchCanvas.h>

namespace orrivane::desktop {

/// A drawing program: colours and brushes at the left, the sheet beside them.
class SketchView final : public QWidget {
    Q_OBJECT

  public:
    static constexpr double toolsWidth = 64; ///< points

    explicit SketchView(const Theme& theme);

    static std::vector<PublishedMenu> menus();
    void choose(const QString& menu, const QString& entry);

  private:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void pickColor(int index);
    void pickBrush(int index);
    QRectF colorPlace(int index) const;
    QRectF brushPlace(int index) const;

    Theme theme_;
    SketchCanvas* canvas_;
    int color_ = 0;
    int brush_ = 1;
};

} // namespace orrivane::desktop
