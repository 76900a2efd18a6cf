#include <linux/qt/view/ScreenView.h>

#include <linux/qt/RoleColors.h>
#include <tests/unit/MainViewFixture.h>

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QSlider>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>

namespace orrivane {
namespace {

struct Place {
    const char* name;
    QSize size;
    bool inWindow;
    bool dark;
};

QPalette darkPalette() {
    QPalette palette(QColor(0x2b2b2e));
    palette.setColor(QPalette::Window, QColor(0x232326));
    palette.setColor(QPalette::WindowText, QColor(0xf2f2f4));
    palette.setColor(QPalette::ButtonText, QColor(0xf2f2f4));
    palette.setColor(QPalette::Text, QColor(0xf2f2f4));
    palette.setColor(QPalette::Highlight, QColor(0x2f7be5));
    return palette;
}

QPalette lightPalette() {
    QPalette palette(QColor(0xefefef));
    palette.setColor(QPalette::WindowText, QColor(0x1d1d1f));
    palette.setColor(QPalette::Highlight, QColor(0x2f7be5));
    return palette;
}

double luminance(const QColor& color) {
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

// WCAG 2, section "contrast ratio".
double contrast(const QColor& a, const QColor& b) {
    const double first = luminance(a);
    const double second = luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

QColor over(const QColor& top, const QColor& bottom) {
    const double alpha = top.alphaF();
    const auto mix = [alpha](double a, double b) { return float(a * alpha + b * (1 - alpha)); };
    return QColor::fromRgbF(mix(top.redF(), bottom.redF()), mix(top.greenF(), bottom.greenF()),
                            mix(top.blueF(), bottom.blueF()));
}

// Of what a text covers most is the ground beside its letters.
QColor mostFrequentColor(const QImage& picture, const QRect& place, double scale) {
    std::map<QRgb, int> counts;
    const QRect pixels(QPointF(place.topLeft() * scale).toPoint(), place.size() * scale);
    for (int y = pixels.top(); y <= pixels.bottom(); ++y)
        for (int x = pixels.left(); x <= pixels.right(); ++x)
            if (picture.valid(x, y))
                ++counts[picture.pixel(x, y)];
    const auto most =
        std::ranges::max_element(counts, {}, [](const auto& each) { return each.second; });
    return most == counts.end() ? QColor() : QColor(most->first);
}

class MainViewLayoutTest : public MainViewFixture, public testing::WithParamInterface<Place> {
  protected:
    MainViewLayoutTest() {
        // Everything open, and the longest of each text.
        world.userDefaults.setBool(MainView::arrangeExpandedKey, true);
        world.userDefaults.setBool(MainView::squeezeShownKey, true);
        world.screenCapture.accessGranted = false;
        world.accessibility.trusted = false;
        QApplication::setPalette(GetParam().dark ? darkPalette() : lightPalette());
        create(GetParam().inWindow);
        appear();
        screen.setRoot(root);
        screen.resize(GetParam().size);
        screen.show();
        QCoreApplication::processEvents();
        screen.setRoot(root);
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
        if (const char* folder = std::getenv("ORRIVANE_PICTURES"))
            whole().save(QString("%1/%2-%3x.png")
                             .arg(folder, GetParam().name)
                             .arg(screen.devicePixelRatioF()));
    }
    ~MainViewLayoutTest() override { QApplication::setPalette(QPalette()); }

    // Also what has to be scrolled to.
    QPixmap whole() {
        screen.resize(screen.width(), std::max(screen.height(), screen.naturalHeight()));
        QCoreApplication::processEvents();
        return screen.grab();
    }
    std::vector<QWidget*> leaves() {
        std::vector<QWidget*> result;
        for (auto* widget : screen.findChildren<QWidget*>())
            if (widget->isVisible() &&
                (qobject_cast<QLabel*>(widget) || qobject_cast<QAbstractButton*>(widget) ||
                 qobject_cast<QSlider*>(widget)))
                result.push_back(widget);
        return result;
    }
    static std::string name(const QWidget* widget) {
        if (const auto* label = qobject_cast<const QLabel*>(widget))
            return label->text().toStdString();
        if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
            return button->text().toStdString() + button->accessibleName().toStdString();
        return widget->accessibleName().toStdString();
    }
    QRect place(const QWidget* widget) {
        return {widget->mapTo(&screen, QPoint()), widget->size()};
    }

    ScreenView screen;
};

TEST_P(MainViewLayoutTest, everyTextFitsThePlaceItHas) {
    whole();
    const auto all = leaves();
    ASSERT_GT(all.size(), 20U);
    for (const auto* widget : all) {
        const int needed = widget->hasHeightForWidth() ? widget->heightForWidth(widget->width())
                                                       : widget->minimumSizeHint().height();
        EXPECT_LE(needed, widget->height()) << name(widget);
        EXPECT_LE(widget->minimumSizeHint().width(), widget->width()) << name(widget);
        EXPECT_GE(place(widget).left(), 0) << name(widget);
        EXPECT_LE(place(widget).right(), screen.width()) << name(widget);
    }
}

TEST_P(MainViewLayoutTest, theNaturalHeightIsThatOfTheContent) {
    whole();
    int bottom = 0;
    for (const auto* widget : leaves())
        bottom = std::max(bottom, place(widget).bottom() + 1);
    constexpr int padding = 16;
    EXPECT_EQ(screen.naturalHeight(), bottom + padding);
}

TEST_P(MainViewLayoutTest, nothingOverlaps) {
    whole();
    const auto all = leaves();
    for (std::size_t i = 0; i < all.size(); ++i)
        for (std::size_t j = i + 1; j < all.size(); ++j)
            if (!all[i]->isAncestorOf(all[j]) && !all[j]->isAncestorOf(all[i])) {
                EXPECT_FALSE(place(all[i]).intersects(place(all[j])))
                    << name(all[i]) << " and " << name(all[j]);
            }
}

TEST_P(MainViewLayoutTest, everyTextStandsOutFromItsGround) {
    const auto picture = whole().toImage();
    const double scale = picture.devicePixelRatioF();
    for (auto* widget : leaves()) {
        if (name(widget).empty() || !widget->isEnabled() || qobject_cast<QSlider*>(widget))
            continue;
        const auto role = qobject_cast<QAbstractButton*>(widget) && widget->inherits("QPushButton")
                              ? QPalette::ButtonText
                              : QPalette::WindowText;
        const auto ground = mostFrequentColor(picture, place(widget), scale);
        const auto ink = over(widget->palette().color(role), ground);
        EXPECT_GE(contrast(ink, ground), 4.5) << name(widget);
    }
}

TEST_P(MainViewLayoutTest, everyControlHasANameAndIsReachedByTab) {
    for (const auto* widget : leaves()) {
        if (qobject_cast<const QLabel*>(widget))
            continue;
        EXPECT_FALSE(name(widget).empty());
        EXPECT_TRUE(widget->focusPolicy() & Qt::TabFocus) << name(widget);
    }
}

INSTANTIATE_TEST_SUITE_P(Everywhere, MainViewLayoutTest,
                         testing::Values(Place{"popover-light", {980, 640}, false, false},
                                         Place{"popover-dark", {980, 640}, false, true},
                                         Place{"window-light", {980, 620}, true, false},
                                         Place{"small-light", {560, 400}, true, false},
                                         Place{"small-dark", {560, 400}, true, true}),
                         [](const auto& place) {
                             std::string name = place.param.name;
                             std::ranges::replace(name, '-', '_');
                             return name;
                         });

} // namespace
} // namespace orrivane
