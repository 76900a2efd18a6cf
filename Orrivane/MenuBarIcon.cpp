#include <Orrivane/MenuBarIcon.h>

#include <array>
#include <span>
#include <utility>

namespace orrivane {

namespace {

constexpr double armWidth = 1.8;
constexpr double legWidth = 2.2;

void stroke(Drawing& drawing, std::span<const Point> points, double width) {
    if (points.empty())
        return;
    Path path{.elements = {MoveTo{points.front()}}, .strokeWidth = width};
    for (const auto& point : points.subspan(1))
        path.elements.emplace_back(LineTo{point});
    drawing.primitives.emplace_back(std::move(path));
}

Path torso() {
    return {.elements = {MoveTo{{8.0, 5.2}}, CurveTo{{8.7, 4.8}, {10.1, 4.8}, {10.8, 5.2}},
                         LineTo{{11.2, 10.2}}, LineTo{{8.1, 10.2}}, ClosePath{}}};
}

} // namespace

Drawing MenuBarIcon::image() {
    Drawing drawing{{22, 18}, {}, true, "Orrivane"};
    drawing.primitives.emplace_back(Oval{{{7.5, 0.7}, {3.5, 3.5}}});
    drawing.primitives.emplace_back(torso());
    stroke(drawing, std::array{Point{8.4, 5.9}, Point{5.5, 8.4}, Point{3.8, 6.4}}, armWidth);
    stroke(drawing, std::array{Point{10.5, 5.9}, Point{13.4, 8.4}, Point{15.1, 6.4}}, armWidth);
    stroke(drawing, std::array{Point{9.0, 10.0}, Point{5.9, 12.5}, Point{6.8, 16.2}}, legWidth);
    stroke(drawing, std::array{Point{10.3, 10.0}, Point{14.4, 13.0}, Point{18.5, 16.2}}, legWidth);
    return drawing;
}

} // namespace orrivane
