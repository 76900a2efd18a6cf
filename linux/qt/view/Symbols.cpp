#include <linux/qt/view/Symbols.h>

#include <linux/qt/DrawingPainter.h>
#include <linux/qt/RoleColors.h>

#include <QFontMetrics>
#include <QIcon>
#include <QPainter>
#include <QPixmap>

#include <algorithm>
#include <array>
#include <string_view>

namespace orrivane {

namespace {

constexpr double side = 20;
constexpr double line = 1.5;

Path stroke(std::vector<PathElement> elements, ColorRole color, double width = line) {
    return {.elements = std::move(elements), .strokeWidth = width, .color = color};
}

RoundedRectangle ring(ColorRole color) {
    return {.rect = {{2, 2}, {16, 16}}, .cornerRadius = 8, .fill = color, .borderWidth = line};
}

Oval dot(Point center, double radius, ColorRole color) {
    return {.rect = {{center.x - radius, center.y - radius}, {2 * radius, 2 * radius}},
            .fill = color};
}

std::vector<Primitive> check(ColorRole color) {
    return {ring(color),
            stroke({MoveTo{{6.4, 10.4}}, LineTo{{9, 13}}, LineTo{{13.6, 7.4}}}, color)};
}

std::vector<Primitive> ellipsis(ColorRole color) {
    return {ring(color), dot({6.2, 10}, 1.15, color), dot({10, 10}, 1.15, color),
            dot({13.8, 10}, 1.15, color)};
}

std::vector<Primitive> warning(ColorRole color) {
    return {stroke({MoveTo{{10, 3}}, LineTo{{18, 16.8}}, LineTo{{2, 16.8}}, ClosePath{}}, color),
            stroke({MoveTo{{10, 8}}, LineTo{{10, 11.8}}}, color), dot({10, 14.2}, 0.95, color)};
}

std::vector<Primitive> window(ColorRole color) {
    return {
        RoundedRectangle{
            .rect = {{2, 3.5}, {16, 13}}, .cornerRadius = 2.5, .fill = color, .borderWidth = line},
        stroke({MoveTo{{2.8, 7.4}}, LineTo{{17.2, 7.4}}}, color), dot({5, 5.6}, 0.7, color),
        dot({7.3, 5.6}, 0.7, color)};
}

std::vector<Primitive> crossedEye(ColorRole color) {
    return {stroke({MoveTo{{1.8, 10}}, CurveTo{{5, 4}, {15, 4}, {18.2, 10}},
                    CurveTo{{15, 16}, {5, 16}, {1.8, 10}}, ClosePath{}},
                   color),
            dot({10, 10}, 2.4, color), stroke({MoveTo{{4, 17}}, LineTo{{16, 3}}}, color)};
}

// The arrow is cut out of the disc by leaving it free.
std::vector<Primitive> download(ColorRole color) {
    return {
        RoundedRectangle{
            .rect = {{1.5, 1.5}, {17, 17}}, .cornerRadius = 8.5, .fill = color, .borderWidth = 3},
        stroke({MoveTo{{10, 5.6}}, LineTo{{10, 13.6}}}, color, 2),
        stroke({MoveTo{{6.9, 10.6}}, LineTo{{10, 13.8}}, LineTo{{13.1, 10.6}}}, color, 2)};
}

std::vector<Primitive> clockwise(ColorRole color) {
    // Three quarters of a circle about (10, 10.5), open at the upper right.
    constexpr double k = 3.6; // a quarter's control distance for a radius of 6.5
    return {stroke({MoveTo{{14.6, 5.9}}, CurveTo{{13.4, 4.7}, {11.8, 4}, {10, 4}},
                    CurveTo{{10 - k, 4}, {3.5, 10.5 - k}, {3.5, 10.5}},
                    CurveTo{{3.5, 10.5 + k}, {10 - k, 17}, {10, 17}},
                    CurveTo{{10 + k, 17}, {16.5, 10.5 + k}, {16.5, 10.5}}},
                   color),
            stroke({MoveTo{{15.2, 2.4}}, LineTo{{14.9, 6.2}}, LineTo{{11.1, 5.9}}}, color)};
}

struct Figure {
    std::string_view name;
    const char* themeName; // null: themes have nothing like it
    std::vector<Primitive> (*draw)(ColorRole);
};

constexpr std::array<Figure, 7> figures{{
    {"checkmark.circle", nullptr, check},
    {"ellipsis.circle", nullptr, ellipsis},
    {"exclamationmark.triangle", "dialog-warning-symbolic", warning},
    {"macwindow", nullptr, window},
    {"eye.slash", "view-conceal-symbolic", crossedEye},
    {"arrow.down.circle.fill", nullptr, download},
    {"arrow.clockwise", "view-refresh-symbolic", clockwise},
}};

const Figure* find(const SymbolName& name) {
    const auto found = std::ranges::find(figures, std::string_view(name), &Figure::name);
    return found == figures.end() ? nullptr : &*found;
}

} // namespace

Drawing symbolDrawing(const SymbolName& name, ColorRole color) {
    const auto* figure = find(name);
    if (!figure)
        return {.size = {side, side},
                .primitives = {RoundedRectangle{
                    .rect = {{3, 3}, {14, 14}}, .fill = color, .borderWidth = line}}};
    return {.size = {side, side}, .primitives = figure->draw(color)};
}

QPixmap symbolPixmap(const SymbolName& name, ColorRole color, const QPalette& palette, int points,
                     double scale) {
    const int pixels = std::max(1, qRound(points * scale));
    QPixmap pixmap(pixels, pixels);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    const auto* figure = find(name);
    const auto themed = figure && figure->themeName ? QIcon::fromTheme(figure->themeName) : QIcon();
    if (!themed.isNull()) {
        themed.paint(&painter, pixmap.rect());
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(pixmap.rect(), roleColor(color, palette));
    } else {
        DrawingPainter(painter, palette).draw(symbolDrawing(name, color), pixmap.rect());
    }
    painter.end();
    pixmap.setDevicePixelRatio(scale);
    return pixmap;
}

SymbolWidget::SymbolWidget() {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void SymbolWidget::set(const SymbolName& name, ColorRole color, const QFont& font) {
    const int height = QFontMetrics(font).height();
    setFixedSize(height, height);
    if (name == name_ && color == color_)
        return;
    name_ = name;
    color_ = color;
    update();
}

void SymbolWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (!isEnabled())
        painter.setOpacity(0.4);
    painter.drawPixmap(0, 0, symbolPixmap(name_, color_, palette(), width(), devicePixelRatioF()));
}

} // namespace orrivane
