#include "Picture.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace orrivane::demo {

namespace {

constexpr std::uint32_t black = 0xff000000;
constexpr std::uint32_t white = 0xffffffff;
constexpr int cornerRadius = 10;

constexpr std::array<std::string_view, 17> arrow{
    "X..........", "XX.........", "XoX........", "XooX.......", "XoooX......", "XooooX.....",
    "XoooooX....", "XooooooX...", "XoooooooX..", "XooooooooX.", "XooooooXXXX", "XoooXooX...",
    "XooX.XooX..", "XoX..XooX..", "XX....XooX.", "X.....XooX.", ".......XX..",
};

void paint(e2e::Image& image, int x, int y, std::uint32_t colour) {
    if (x >= 0 && x < image.width && y >= 0 && y < image.height)
        image.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) +
                     static_cast<std::size_t>(x)] = colour;
}

bool isInsideRoundedBottom(const e2e::PixelRect& area, int x, int y) {
    const int fromSide = std::min(x - area.x, area.right() - 1 - x);
    const int fromBottom = area.bottom() - 1 - y;
    if (fromSide >= cornerRadius || fromBottom >= cornerRadius)
        return true;
    const int dx = cornerRadius - fromSide;
    const int dy = cornerRadius - fromBottom;
    return dx * dx + dy * dy <= cornerRadius * cornerRadius;
}

void paintNotch(e2e::Image& image, const e2e::PixelRect& area) {
    for (int y = area.y; y < area.bottom(); ++y)
        for (int x = area.x; x < area.right(); ++x)
            if (isInsideRoundedBottom(area, x, y))
                paint(image, x, y, black);
}

void paintPointer(e2e::Image& image, const e2e::PixelPoint& tip) {
    int y = tip.y;
    for (const std::string_view row : arrow) {
        int x = tip.x;
        for (const char dot : row) {
            if (dot != '.')
                paint(image, x, y, dot == 'X' ? black : white);
            ++x;
        }
        ++y;
    }
}

} // namespace

void savePicture(e2e::Observer& observer, const e2e::PixelRect& cutout, const std::string& path,
                 const std::optional<e2e::PixelRect>& part) {
    e2e::Image image = observer.imageOfRoot();
    paintNotch(image, cutout);
    paintPointer(image, observer.pointer());
    e2e::writePng(path, part ? image.crop(*part) : image);
}

} // namespace orrivane::demo
