#include <packaging/ScalableIcon.h>

#include <algorithm>
#include <locale>
#include <sstream>

namespace orrivane {

namespace {

class Writer {
  public:
    Writer(const Size& size, std::string_view color) {
        text_.imbue(std::locale::classic());
        const double side = std::max(size.width, size.height);
        text_ << R"(<svg xmlns="http://www.w3.org/2000/svg" width="256" height="256" viewBox=")"
              << (size.width - side) / 2 << ' ' << (size.height - side) / 2 << ' ' << side << ' '
              << side << "\">\n"
              << "<g fill=\"" << color << "\" stroke=\"" << color
              << "\" stroke-width=\"0\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n";
    }

    void write(const Oval& oval) {
        const auto& rect = oval.rect;
        text_ << "<ellipse cx=\"" << (rect.minX() + rect.maxX()) / 2 << "\" cy=\""
              << (rect.minY() + rect.maxY()) / 2 << "\" rx=\"" << rect.width() / 2 << "\" ry=\""
              << rect.height() / 2 << '"';
        finish(oval.opacity);
    }

    void write(const Path& path) {
        text_ << "<path d=\"";
        for (const auto& element : path.elements)
            std::visit([this](const auto& value) { step(value); }, element);
        text_ << '"';
        if (path.strokeWidth > 0)
            text_ << " fill=\"none\" stroke-width=\"" << path.strokeWidth << '"';
        finish(path.opacity);
    }

    template <typename Other>
    void write(const Other&) {
        complete_ = false;
    }

    std::optional<std::string> result() {
        text_ << "</g>\n</svg>\n";
        return complete_ ? std::optional(text_.str()) : std::nullopt;
    }

  private:
    void step(const MoveTo& move) { point('M', move.to); }
    void step(const LineTo& line) { point('L', line.to); }
    void step(const CurveTo& curve) {
        point('C', curve.control1);
        point(' ', curve.control2);
        point(' ', curve.to);
    }
    void step(const ClosePath&) { text_ << 'Z'; }

    void point(char command, const Point& point) { text_ << command << point.x << ',' << point.y; }

    void finish(double opacity) {
        if (opacity < 1)
            text_ << " opacity=\"" << opacity << '"';
        text_ << "/>\n";
    }

    std::ostringstream text_;
    bool complete_ = true;
};

} // namespace

std::optional<std::string> scalableIcon(const Drawing& figure, std::string_view color) {
    Writer writer(figure.size, color);
    for (const auto& primitive : figure.primitives)
        std::visit([&writer](const auto& value) { writer.write(value); }, primitive);
    return writer.result();
}

} // namespace orrivane
