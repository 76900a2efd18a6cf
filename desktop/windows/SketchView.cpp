#include <desktop/windows/SketchView.h>

#include <desktop/windows/WindowTitle.h>

#include <algorithm>
#include <iterator>

#include <QMouseEvent>
#include <QPainter>

namespace orrivane::desktop {

namespace {

struct Named {
    const char* name;
    QRgb color;
};

constexpr Named colors[] = {{"Harbour Blue", 0xff2f6fed},   {"Signal Red", 0xffe5484d},
                            {"Lantern Yellow", 0xfff5b13d}, {"Moss Green", 0xff3a9b62},
                            {"Plum", 0xff8b5cb8},           {"Graphite", 0xff5b6070}};

struct Brush {
    const char* name;
    double thickness;
};

constexpr Brush brushes[] = {{"Fine Pen", 1.5}, {"Felt Marker", 3.5}, {"Broad Brush", 8}};

template <std::size_t count, typename T>
int indexOf(const T (&all)[count], const QString& name) {
    const auto* found = std::find_if(std::begin(all), std::end(all), [&](const T& each) {
        return name == QLatin1String(each.name);
    });
    return found == std::end(all) ? -1 : static_cast<int>(found - std::begin(all));
}

} // namespace

SketchView::SketchView(const Theme& theme)
    : theme_(theme)
    , canvas_(new SketchCanvas(theme, this)) {
    pickColor(0);
    pickBrush(1);
}

std::vector<PublishedMenu> SketchView::menus() {
    PublishedMenu palette{"Colours", {}};
    for (const Named& color : colors)
        palette.entries.emplace_back(color.name);
    PublishedMenu tips{"Brushes", {}};
    for (const Brush& brush : brushes)
        tips.entries.emplace_back(brush.name);
    return {{"File", {"New Sheet", "Open…", "Open Recent", "-", "Save a Copy…", "Print…"}},
            {"Edit", {"Undo", "Redo", "-", "Clear Sheet"}},
            {"Arrange", {"Bring to Front", "Send to Back", "Align to Grid"}},
            {"Layers", {"Add a Layer", "Merge Down", "Hide Others"}},
            std::move(tips),
            std::move(palette),
            {"Transform", {"Rotate Left", "Rotate Right", "Mirror"}},
            {"View", {"Show or Hide the Grid", "Actual Size", "Fit to Window"}},
            {"Window", {"Tools", "Palettes"}},
            {"Help", {"Sketch Handbook", "Keyboard Shortcuts"}}};
}

void SketchView::choose(const QString& menu, const QString& entry) {
    if (menu == QLatin1String("Colours"))
        pickColor(indexOf(colors, entry));
    else if (menu == QLatin1String("Brushes"))
        pickBrush(indexOf(brushes, entry));
    else if (entry == QLatin1String("Undo"))
        canvas_->undo();
    else if (entry == QLatin1String("Redo"))
        canvas_->redo();
    else if (entry == QLatin1String("New Sheet") || entry == QLatin1String("Clear Sheet"))
        canvas_->clear();
    else if (entry == QLatin1String("Show or Hide the Grid"))
        canvas_->setGrid(!canvas_->grid());
}

void SketchView::pickColor(int index) {
    color_ = index;
    canvas_->setColor(QColor(colors[index].color));
    update();
}

void SketchView::pickBrush(int index) {
    brush_ = index;
    canvas_->setThickness(brushes[index].thickness);
    update();
}

QRectF SketchView::colorPlace(int index) const {
    return {(toolsWidth - 22) / 2, WindowTitle::points + 132 + 32.0 * index, 22, 22};
}

QRectF SketchView::brushPlace(int index) const {
    return {(toolsWidth - 36) / 2, WindowTitle::points + 8 + 38.0 * index, 36, 32};
}

void SketchView::resizeEvent(QResizeEvent*) {
    const int left = theme_.pixels(toolsWidth);
    const int top = theme_.pixels(WindowTitle::points);
    canvas_->setGeometry(left, top, std::max(0, width() - left), std::max(0, height() - top));
}

void SketchView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), theme_.sidebarBackground);
    const int top = theme_.pixels(WindowTitle::points);
    const int line = std::max(1, theme_.pixels(0.8));
    painter.fillRect(QRect(0, top - line, width(), line), theme_.menuSeparator);
    painter.fillRect(QRect(theme_.pixels(toolsWidth) - line, top, line, height()),
                     theme_.menuSeparator);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(theme_.scale, theme_.scale);
    for (int i = 0; i < static_cast<int>(std::size(brushes)); ++i) {
        const QRectF place = brushPlace(i);
        if (i == brush_) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(theme_.fieldBackground);
            painter.drawRoundedRect(place, 7, 7);
        }
        QPainterPath mark(place.center() + QPointF(-9, 5));
        mark.cubicTo(place.center() + QPointF(-3, -12), place.center() + QPointF(3, 12),
                     place.center() + QPointF(9, -5));
        painter.strokePath(mark, QPen(theme_.text, std::min(6.0, brushes[i].thickness),
                                      Qt::SolidLine, Qt::RoundCap));
    }
    for (int i = 0; i < static_cast<int>(std::size(colors)); ++i) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(colors[i].color));
        painter.drawEllipse(colorPlace(i));
        if (i == color_) {
            painter.setBrush(Qt::NoBrush);
            painter.setPen(QPen(QColor(colors[i].color), 2));
            painter.drawEllipse(colorPlace(i).adjusted(-3.5, -3.5, 3.5, 3.5));
        }
    }
}

void SketchView::mousePressEvent(QMouseEvent* event) {
    const QPointF place = event->position() / theme_.scale;
    for (int i = 0; i < static_cast<int>(std::size(colors)); ++i)
        if (colorPlace(i).contains(place))
            pickColor(i);
    for (int i = 0; i < static_cast<int>(std::size(brushes)); ++i)
        if (brushPlace(i).contains(place))
            pickBrush(i);
}

} // namespace orrivane::desktop
