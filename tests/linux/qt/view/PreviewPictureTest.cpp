#include <Orrivane/MenuBarPreview.h>

#include "Contrast.h"

#include <tests/linux/qt/support/Canvas.h>

#include <linux/support/PixelImage.h>

#include <QString>

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>

namespace orrivane {
namespace {

constexpr Size place{420, MenuBarPreview::height}; // points

struct Rendering {
    const char* name;
    int scale; // pixels a point
    bool dark;
};

void PrintTo(const Rendering& rendering, std::ostream* out) {
    *out << rendering.name;
}

/// Simple figures, two pixels a point, that differ in shape and colour and touch no edge.
Image figure(std::size_t index, double width) {
    constexpr std::array<std::uint32_t, 4> inks{0xff2a6fdb, 0xff8e4ec6, 0xffb3541e, 0xff2f8f4e};
    constexpr int height = 74;
    const int across = static_cast<int>(2 * width);
    auto image = std::make_shared<PixelImage>(across, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < across; ++x) {
            const double dx = x + 0.5 - across / 2.0;
            const double dy = y + 0.5 - height / 2.0;
            const double distance = dx * dx + dy * dy;
            const bool inside = std::abs(dx) < 18 && std::abs(dy) < 18;
            const std::array<bool, 4> shapes{
                distance < 18 * 18, inside && std::abs(dx) - std::abs(dy) < 1 && dy > -10,
                distance < 18 * 18 && distance > 10 * 10, inside && (x / 8) % 2 == 0};
            if (shapes[index % shapes.size()])
                image->set(x, y, inks[index % inks.size()]);
        }
    return Image(std::move(image));
}

/// Nine icons in a row that reaches under the notch. All have pictures: what stands for a missing
/// one has a letter in it, and letters differ from machine to machine.
MenuBarPreview scene() {
    MenuBarPreview preview;
    preview.notch = NotchInfo{};
    preview.notch->screenMinX = 0;
    preview.notch->screenWidth = 600;
    preview.notch->notchMinX = 190;
    preview.notch->notchMaxX = 290;
    constexpr std::array widths{34.0, 44.0, 30.0, 52.0, 38.0, 40.0, 34.0, 48.0, 36.0};
    for (std::size_t i = 0; i < widths.size(); ++i)
        preview.icons.push_back(
            {static_cast<std::uint32_t>(i + 1), widths[i], figure(i, widths[i])});
    return preview;
}

QImage render(const MenuBarPreview& preview, const Rendering& rendering) {
    const QPalette palette = rendering.dark ? darkPalette() : lightPalette();
    const QSize pixels(static_cast<int>(place.width) * rendering.scale,
                       static_cast<int>(place.height) * rendering.scale);
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(palette.color(QPalette::Window));
    QPainter painter(&image);
    painter.drawImage(0, 0, drawn(preview.drawing(place), pixels, palette));
    painter.end();
    return image.convertToFormat(QImage::Format_RGB32);
}

struct Difference {
    int largest = 0; // of any channel of any pixel
    double mean = 0; // over all channels
};

Difference difference(const QImage& a, const QImage& b) {
    Difference result;
    double sum = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb first = a.pixel(x, y);
            const QRgb second = b.pixel(x, y);
            for (const int each : {qRed(first) - qRed(second), qGreen(first) - qGreen(second),
                                   qBlue(first) - qBlue(second)}) {
                result.largest = std::max(result.largest, std::abs(each));
                sum += std::abs(each);
            }
        }
    result.mean = sum / (3.0 * a.width() * a.height());
    return result;
}

// Versions of the toolkit smooth edges a little differently; what has moved or has another colour
// is beyond these.
bool areAlike(const QImage& a, const QImage& b) {
    if (a.size() != b.size())
        return false;
    const auto found = difference(a, b);
    return found.largest <= 40 && found.mean <= 0.3;
}

class PreviewPictureTest : public testing::TestWithParam<Rendering> {
  protected:
    static QString reference() {
        return QStringLiteral(ORRIVANE_REFERENCE_PICTURES "/preview-%1.png").arg(GetParam().name);
    }
};

TEST_P(PreviewPictureTest, looksAsItDidWhenSomebodyLookedAtIt) {
    const auto image = render(scene(), GetParam());
    // After a wanted change: write them there, look at them, keep them.
    if (const char* folder = std::getenv("ORRIVANE_WRITE_PICTURES")) {
        ASSERT_TRUE(image.save(QString("%1/preview-%2.png").arg(folder, GetParam().name)));
    }
    const QImage expected(reference());
    ASSERT_FALSE(expected.isNull()) << reference().toStdString();
    ASSERT_EQ(image.size(), expected.size());
    const auto found = difference(image, expected);
    EXPECT_TRUE(areAlike(image, expected))
        << "largest difference " << found.largest << ", mean " << found.mean;
}

TEST_P(PreviewPictureTest, theLookIsFineEnoughToSeeASmallChange) {
    const auto image = render(scene(), GetParam());
    auto spaced = scene();
    spaced.simulatedSpacing = 15;
    EXPECT_FALSE(areAlike(image, render(spaced, GetParam())));
    auto notched = scene();
    notched.notch->notchMaxX += 3;
    EXPECT_FALSE(areAlike(image, render(notched, GetParam())));
    auto recoloured = scene();
    recoloured.icons[4].image = figure(5, recoloured.icons[4].width);
    EXPECT_FALSE(areAlike(image, render(recoloured, GetParam())));
    auto other = GetParam();
    other.dark = !other.dark;
    EXPECT_FALSE(areAlike(image, render(scene(), other)));
}

INSTANTIATE_TEST_SUITE_P(Renderings, PreviewPictureTest,
                         testing::Values(Rendering{"light-1x", 1, false},
                                         Rendering{"light-2x", 2, false},
                                         Rendering{"dark-1x", 1, true},
                                         Rendering{"dark-2x", 2, true}),
                         [](const auto& rendering) {
                             std::string name = rendering.param.name;
                             std::ranges::replace(name, '-', '_');
                             return name;
                         });

} // namespace
} // namespace orrivane
