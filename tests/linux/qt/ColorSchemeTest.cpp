#include "support/FakePortal.h"
#include "support/PrivateBus.h"
#include "support/Pump.h"
#include "view/Contrast.h"

#include <linux/qt/ColorScheme.h>
#include <linux/qt/RoleColors.h>
#include <tests/desktop/support/RequiredHere.h>

#include <QApplication>
#include <QDBusConnectionInterface>

#include <gtest/gtest.h>

#include <memory>

namespace orrivane {
namespace {

using Manner = FakePortal::Manner;
using std::chrono_literals::operator""ms;

constexpr uint none = 0;
constexpr uint dark = 1;
constexpr uint light = 2;

bool showsDark() {
    return isDark(QApplication::palette());
}

/// A portal on a bus of its own, and what the palette becomes.
class ColorSchemeTest : public ::testing::Test {
  protected:
    void SetUp() override {
        if (bus.address().isEmpty())
            GTEST_SKIP() << e2e::reasonToSkip("dbus-daemon could not be started");
        portal = std::make_unique<FakePortal>(bus.connect());
        ASSERT_FALSE(showsDark());
    }
    void TearDown() override { QApplication::setPalette(QPalette()); }

    void follow(std::chrono::milliseconds bound = 5000ms) {
        scheme = std::make_unique<ColorScheme>(bus.connect(), bound);
    }
    void startWith(const QVariant& value) {
        portal->value = value;
        ASSERT_TRUE(portal->appear());
        follow();
        ASSERT_TRUE(pumpUntil([&] { return !portal->questions.isEmpty(); }));
    }
    void change(const QVariant& value) {
        portal->value = value;
        ASSERT_TRUE(portal->announce());
    }
    /// All that was said before this has had its effect after it: what one bus sends arrives in
    /// order, and a portal that comes back is asked again.
    void settle() {
        portal->manner = Manner::hasNoSuchSetting;
        portal->disappear();
        const auto before = portal->questions.size();
        ASSERT_TRUE(portal->appear());
        ASSERT_TRUE(
            pumpUntil([&] { return portal->questions.size() > before && !scheme->isAsking(); }));
    }
    void staysLightUntilTold() {
        settle();
        EXPECT_FALSE(showsDark());
        change(dark);
        EXPECT_TRUE(pumpUntil(showsDark));
    }

    PrivateBus bus;
    std::unique_ptr<FakePortal> portal;
    std::unique_ptr<ColorScheme> scheme;
};

TEST_F(ColorSchemeTest, isDarkFromTheStartOnADarkDesktop) {
    startWith(dark);
    EXPECT_TRUE(pumpUntil(showsDark));
    EXPECT_EQ(portal->questions, QStringList{"Read"});
}

TEST_F(ColorSchemeTest, changesNothingBeforeTheAnswerIsThere) {
    portal->manner = Manner::isSilent;
    startWith(dark);
    EXPECT_FALSE(showsDark());
    ASSERT_TRUE(portal->answerNow());
    EXPECT_TRUE(pumpUntil(showsDark));
}

TEST_F(ColorSchemeTest, leavesThePaletteAloneOnALightDesktopAndOnOneWithoutAPreference) {
    for (const uint value : {light, none}) {
        const auto before = QApplication::palette();
        portal->manner = Manner::answers;
        startWith(value);
        change(value);
        settle();
        EXPECT_EQ(QApplication::palette(), before);
        portal->disappear();
        portal->questions.clear();
    }
}

TEST_F(ColorSchemeTest, followsTheDesktopToAndFro) {
    const auto before = QApplication::palette();
    startWith(none);
    for (const uint value : {light, none, 7U}) {
        change(dark);
        ASSERT_TRUE(pumpUntil(showsDark));
        EXPECT_EQ(QApplication::palette().color(QPalette::Window),
                  ColorScheme::darkPalette().color(QPalette::Window));
        change(value);
        ASSERT_TRUE(pumpUntil([] { return !showsDark(); }));
        EXPECT_EQ(QApplication::palette(), before);
    }
}

TEST_F(ColorSchemeTest, asksAPortalThatAppearsLater) {
    follow();
    pumpQueued();
    EXPECT_FALSE(showsDark());
    portal->value = dark;
    ASSERT_TRUE(portal->appear());
    EXPECT_TRUE(pumpUntil(showsDark));
}

TEST_F(ColorSchemeTest, keepsWhatItKnowsWhileThePortalIsAway) {
    startWith(dark);
    ASSERT_TRUE(pumpUntil(showsDark));
    settle();
    EXPECT_TRUE(showsDark());
    portal->disappear();
    portal->manner = Manner::answers;
    portal->value = light;
    ASSERT_TRUE(portal->appear());
    EXPECT_TRUE(pumpUntil([] { return !showsDark(); }));
}

TEST_F(ColorSchemeTest, aPortalThatNeverAnswersHoldsNothingUpAndIsHeardAllTheSame) {
    portal->manner = Manner::isSilent;
    portal->value = dark;
    ASSERT_TRUE(portal->appear());
    follow(1ms);
    ASSERT_TRUE(pumpUntil([&] { return !portal->questions.isEmpty(); }));
    ASSERT_TRUE(pumpUntil([&] { return !scheme->isAsking(); }));
    EXPECT_FALSE(showsDark());
    change(dark);
    EXPECT_TRUE(pumpUntil(showsDark));
}

TEST_F(ColorSchemeTest, anAnswerAfterTheBoundCountsForNothing) {
    portal->manner = Manner::isSilent;
    portal->value = dark;
    ASSERT_TRUE(portal->appear());
    follow(1ms);
    ASSERT_TRUE(pumpUntil([&] { return !scheme->isAsking() && !portal->questions.isEmpty(); }));
    ASSERT_TRUE(portal->answerNow());
    staysLightUntilTold();
}

TEST_F(ColorSchemeTest, asksTheNewerWayWhereTheOlderOneIsGone) {
    portal->manner = Manner::knowsReadOneOnly;
    startWith(dark);
    EXPECT_TRUE(pumpUntil(showsDark));
    EXPECT_EQ(portal->questions, (QStringList{"Read", "ReadOne"}));
}

TEST_F(ColorSchemeTest, aPortalWithoutTheSettingIsAskedOnce) {
    portal->manner = Manner::hasNoSuchSetting;
    startWith(dark);
    ASSERT_TRUE(pumpUntil([&] { return !scheme->isAsking(); }));
    EXPECT_EQ(portal->questions, QStringList{"Read"});
    staysLightUntilTold();
}

TEST_F(ColorSchemeTest, valuesThatMakeNoSenseAtTheStartAreNoPreference) {
    const QVariantList senseless{"1", 7U, 0xffffffffU, 1, 1.0, true, QStringList{"1"}};
    for (const auto& value : senseless) {
        portal->manner = Manner::answers;
        startWith(value);
        staysLightUntilTold();
        scheme.reset();
        QApplication::setPalette(QPalette());
        portal->disappear();
        portal->questions.clear();
    }
}

TEST_F(ColorSchemeTest, aValueOfAnotherTypeDoesNotEndTheDark) {
    startWith(dark);
    ASSERT_TRUE(pumpUntil(showsDark));
    change("2");
    change(2);
    ASSERT_TRUE(portal->announce("org.freedesktop.appearance", "contrast"));
    ASSERT_TRUE(portal->announce("org.gnome.desktop.interface"));
    settle();
    EXPECT_TRUE(showsDark());
    change(light);
    EXPECT_TRUE(pumpUntil([] { return !showsDark(); }));
}

TEST_F(ColorSchemeTest, believesThePortalAlone) {
    startWith(light);
    const auto connection = bus.connect();
    FakePortal other(connection);
    other.value = dark;
    ASSERT_TRUE(other.announce());
    // With this answer the bus has passed on what came before it.
    ASSERT_TRUE(connection.interface()->isServiceRegistered("org.freedesktop.DBus"));
    staysLightUntilTold();
}

TEST_F(ColorSchemeTest, aDarkPaletteOfTheToolkitsOwnStaysAsItIs) {
    QPalette own(QColor(0x102030), QColor(0x203040));
    QApplication::setPalette(own);
    const auto before = QApplication::palette();
    ASSERT_TRUE(showsDark());
    startWith(dark);
    ASSERT_TRUE(pumpUntil([&] { return !scheme->isAsking(); }));
    EXPECT_EQ(QApplication::palette(), before);
    change(light);
    settle();
    EXPECT_EQ(QApplication::palette(), before);
}

TEST(ColorSchemeWithoutABus, leavesThePaletteAlone) {
    const auto before = QApplication::palette();
    const ColorScheme scheme(QDBusConnection("no such connection"));
    pumpQueued();
    EXPECT_FALSE(scheme.isAsking());
    EXPECT_EQ(QApplication::palette(), before);
}

TEST(ColorSchemeWithoutABus, startsNoneOfItsOwn) {
    const auto address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    const auto folder = qgetenv("XDG_RUNTIME_DIR");
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("XDG_RUNTIME_DIR", "/no/such/folder");
    EXPECT_FALSE(ColorScheme::sessionBus().isConnected());
    if (!address.isEmpty())
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    qputenv("XDG_RUNTIME_DIR", folder);
}

TEST(DarkPalette, everyTextStandsOutFromEveryGroundItIsShownOn) {
    const auto palette = ColorScheme::darkPalette();
    const auto pair = [&palette](QPalette::ColorRole ink, QPalette::ColorRole ground) {
        return contrast(palette.color(ink), palette.color(ground));
    };
    EXPECT_TRUE(isDark(palette));
    for (const auto group : {QPalette::Active, QPalette::Inactive})
        EXPECT_EQ(palette.color(group, QPalette::Text), palette.color(QPalette::Text));
    EXPECT_GE(pair(QPalette::WindowText, QPalette::Window), 4.5);
    EXPECT_GE(pair(QPalette::ButtonText, QPalette::Button), 4.5);
    EXPECT_GE(pair(QPalette::ToolTipText, QPalette::ToolTipBase), 4.5);
    EXPECT_GE(pair(QPalette::HighlightedText, QPalette::Highlight), 4.5);
    for (const auto ground : {QPalette::Window, QPalette::Base, QPalette::AlternateBase})
        for (const auto ink :
             {QPalette::Text, QPalette::PlaceholderText, QPalette::Link, QPalette::LinkVisited})
            EXPECT_GE(pair(ink, ground), 4.5) << ink << " on " << ground;
    // What is no text but has to be made out.
    EXPECT_GE(pair(QPalette::Highlight, QPalette::Window), 3);
}

} // namespace
} // namespace orrivane
