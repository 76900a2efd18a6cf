#include <linux/qt/view/ScreenView.h>

#include "Contrast.h"

#include <linux/qt/view/DrawnWidget.h>
#include <linux/qt/view/GroupBoxWidget.h>
#include <linux/qt/view/Symbols.h>
#include <linux/qt/view/TileWidget.h>
#include <tests/unit/MainViewFixture.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QTest>

#include <cstdlib>
#include <ostream>

namespace orrivane {
namespace {

struct Place {
    const char* name;
    QSize size;
    bool inWindow;
    bool dark;
    bool open = true;     // all that can be opened and closed
    bool granted = false; // permissions, with an update to tell of
};

void PrintTo(const Place& place, std::ostream* out) {
    *out << place.name;
}

bool isText(const QWidget* widget) {
    return qobject_cast<const QLabel*>(widget) || qobject_cast<const QAbstractButton*>(widget);
}

bool isControl(const QWidget* widget) {
    return qobject_cast<const QAbstractButton*>(widget) || qobject_cast<const QSlider*>(widget) ||
           dynamic_cast<const TileWidget*>(widget);
}

bool isDrawn(const QWidget* widget) {
    return dynamic_cast<const CanvasWidget*>(widget) || dynamic_cast<const SymbolWidget*>(widget);
}

class MainViewLayoutTest : public MainViewFixture, public testing::WithParamInterface<Place> {
  protected:
    MainViewLayoutTest() {
        // The longest of each text.
        world.userDefaults.setBool(MainView::arrangeExpandedKey, GetParam().open);
        world.userDefaults.setBool(MainView::squeezeShownKey, GetParam().open);
        world.screenCapture.accessGranted = GetParam().granted;
        world.accessibility.trusted = GetParam().granted;
        if (GetParam().granted) {
            updates.start();
            updates.willHandleShowingUpdate(false, "2026.11.21 Release Candidate");
            world.userDefaults.setBool("OrrivaneStripEnabled", false);
        }
        world.ownWindows.mainViewWindowVisible = true;
        squeezeLimitation = "The panel that shows the icons here decides about their spacing "
                            "itself, so nothing that is chosen below can change it.";
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
        screen.resize(GetParam().size);
        QCoreApplication::processEvents();
    }
    ~MainViewLayoutTest() override { QApplication::setPalette(QPalette()); }

    // Also what has to be scrolled to. Without the scroll bar the content is wider, and lower.
    QPixmap whole() {
        for (int i = 0; i < 2; ++i) {
            screen.resize(screen.width(), screen.naturalHeight());
            QCoreApplication::processEvents();
        }
        return screen.grab();
    }
    /// Every label, control and picture that shows.
    std::vector<QWidget*> leaves() {
        std::vector<QWidget*> result;
        for (auto* widget : screen.findChildren<QWidget*>())
            if (widget->isVisible() && (isText(widget) || isControl(widget) || isDrawn(widget)))
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
    void expectAllFits() {
        const auto* content = screen.findChild<QScrollArea*>()->viewport();
        const auto all = leaves();
        ASSERT_GT(all.size(), 15U);
        for (const auto* widget : all) {
            const int needed = widget->hasHeightForWidth() ? widget->heightForWidth(widget->width())
                                                           : widget->minimumSizeHint().height();
            EXPECT_LE(needed, widget->height()) << name(widget);
            EXPECT_LE(widget->minimumSizeHint().width(), widget->width()) << name(widget);
            EXPECT_GE(place(widget).left(), place(content).left()) << name(widget);
            EXPECT_LE(place(widget).right(), place(content).right()) << name(widget);
        }
    }

    ScreenView screen;
};

TEST_P(MainViewLayoutTest, runsAtTheScaleThatItsSurroundingsSay) {
    const auto wanted = qEnvironmentVariable("QT_SCALE_FACTOR", "1").toDouble();
    EXPECT_EQ(screen.devicePixelRatioF(), wanted);
    EXPECT_EQ(screen.grab().size(), (QSizeF(screen.size()) * wanted).toSize());
}

TEST_P(MainViewLayoutTest, everyTextFitsThePlaceItHas) {
    whole();
    expectAllFits();
}

TEST_P(MainViewLayoutTest, everythingFitsBesideTheScrollBarToo) {
    screen.resize(GetParam().size.width(), 300);
    QCoreApplication::processEvents();
    ASSERT_TRUE(screen.findChild<QScrollArea*>()->verticalScrollBar()->isVisible());
    expectAllFits();
}

// Measured with the font itself, whatever the labels say that they need.
TEST_P(MainViewLayoutTest, noLetterOfALabelLiesOutsideOfIt) {
    whole();
    for (const auto* label : screen.findChildren<QLabel*>()) {
        if (!label->isVisible())
            continue;
        const QFontMetricsF metrics(label->font());
        const auto flags = Qt::AlignLeft | (label->wordWrap() ? Qt::TextWordWrap : 0);
        const auto needed =
            metrics.boundingRect(QRectF(0, 0, label->width(), 10000), int(flags), label->text());
        EXPECT_LE(needed.width(), label->width()) << name(label);
        EXPECT_LE(needed.height(), label->height() + 0.5) << name(label);
    }
    for (const auto* box : screen.findChildren<GroupBoxWidget*>())
        EXPECT_LE(QFontMetricsF(box->font()).horizontalAdvance(box->title()), box->width() * 0.9)
            << box->title().toStdString();
}

TEST_P(MainViewLayoutTest, theNaturalHeightIsThatOfTheContent) {
    whole();
    int bottom = 0;
    for (const auto* widget : leaves())
        bottom = std::max(bottom, place(widget).bottom() + 1);
    constexpr int padding = 16;
    EXPECT_EQ(screen.naturalHeight(), bottom + padding);
}

TEST_P(MainViewLayoutTest, whatAHighWindowHasLeftStaysEmptyBelow) {
    const auto places = [this] {
        std::vector<QRect> result;
        for (const auto* widget : leaves())
            result.push_back(place(widget));
        return result;
    };
    whole();
    const auto before = places();
    screen.resize(screen.width(), screen.height() + 500);
    QCoreApplication::processEvents();
    EXPECT_EQ(places(), before);
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
    for (auto* widget : leaves()) {
        if (!isText(widget) || name(widget).empty() || !widget->isEnabled())
            continue;
        const auto role =
            widget->inherits("QPushButton") ? QPalette::ButtonText : QPalette::WindowText;
        const auto [ground, painted] = inksIn(picture, place(widget));
        const auto ink = over(widget->palette().color(role), ground);
        EXPECT_GE(contrast(ink, ground), 4.5) << name(widget);
        EXPECT_GE(painted, 4.5) << "as painted: " << name(widget);
    }
}

// WCAG 2, section "non-text contrast". Symbols stand beside words that say the same.
TEST_P(MainViewLayoutTest, aSwitchCanBeMadeOutOnAndOff) {
    const auto picture = whole().toImage();
    for (auto* each : screen.findChildren<QCheckBox*>()) {
        if (!each->isVisible() || !each->isEnabled())
            continue;
        const int height = QFontMetrics(each->font()).height();
        const auto at = [&](double x) {
            const QPointF point(place(each).x() + x, place(each).y() + 2 + height / 2.0);
            return QColor(picture.pixel((point * picture.devicePixelRatioF()).toPoint()));
        };
        const double width = height * 0.95 * 1.75;
        const auto track = at(width * (each->isChecked() ? 0.3 : 0.7));
        const auto knob = at(width * (each->isChecked() ? 0.7 : 0.3));
        // The colour of what is on is the user's own.
        if (!each->isChecked()) {
            EXPECT_GE(contrast(track, at(-2)), 3) << name(each);
        }
        EXPECT_GE(contrast(track, knob), 3) << name(each);
    }
}

TEST_P(MainViewLayoutTest, theControlWithTheKeyboardIsSeen) {
    whole();
    screen.activateWindow();
    QTest::keyClick(&screen, Qt::Key_Tab); // from now on the keyboard is what is used
    for (auto* each : leaves()) {
        if (!isControl(each) || !each->isEnabled())
            continue;
        if (auto* focused = screen.focusWidget())
            focused->clearFocus();
        const auto before = screen.grab(place(each)).toImage();
        each->setFocus(Qt::TabFocusReason);
        ASSERT_TRUE(each->hasFocus()) << name(each);
        const auto after = screen.grab(place(each)).toImage();
        double most = 0;
        for (int y = 0; y < before.height(); ++y)
            for (int x = 0; x < before.width(); ++x)
                most = std::max(most, contrast(before.pixel(x, y), after.pixel(x, y)));
        EXPECT_GE(most, 3) << name(each);
    }
}

TEST_P(MainViewLayoutTest, everyControlHasANameAndIsReachedByTab) {
    for (auto* widget : leaves()) {
        auto* accessible = QAccessible::queryAccessibleInterface(widget);
        ASSERT_NE(accessible, nullptr);
        if (isControl(widget)) {
            EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty()) << name(widget);
            EXPECT_TRUE(widget->focusPolicy() & Qt::TabFocus) << name(widget);
        } else if (qobject_cast<QLabel*>(widget) && !name(widget).empty()) {
            EXPECT_EQ(accessible->text(QAccessible::Name).toStdString(), name(widget));
        }
    }
    for (auto* box : screen.findChildren<GroupBoxWidget*>()) {
        auto* accessible = QAccessible::queryAccessibleInterface(box);
        EXPECT_EQ(accessible->text(QAccessible::Name), box->title());
    }
}

INSTANTIATE_TEST_SUITE_P(
    Everywhere, MainViewLayoutTest,
    testing::Values(Place{"popover-light", {980, 640}, false, false},
                    Place{"popover-dark", {980, 640}, false, true},
                    Place{"small-popover-light", {560, 400}, false, false},
                    Place{"small-popover-dark", {560, 400}, false, true},
                    Place{"window-light", {980, 620}, true, false},
                    Place{"window-dark", {980, 620}, true, true},
                    Place{"small-window-light", {560, 400}, true, false},
                    Place{"small-window-dark", {560, 400}, true, true},
                    Place{"closed-popover-dark", {560, 400}, false, true, false},
                    Place{"closed-window-light", {560, 400}, true, false, false},
                    Place{"granted-window-light", {560, 400}, true, false, true, true},
                    Place{"granted-popover-dark", {980, 640}, false, true, true, true}),
    [](const auto& place) {
        std::string name = place.param.name;
        std::ranges::replace(name, '-', '_');
        return name;
    });

} // namespace
} // namespace orrivane
