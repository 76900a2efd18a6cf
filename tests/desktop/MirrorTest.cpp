#include "Mirror.h"

#include <cctype>

namespace orrivane::e2e {
namespace {

std::string testName(const std::string& name) {
    std::string result;
    for (const char c : name)
        result += std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
    return result;
}

/// A tray with two applications under the notch, and the program.
class OnHost : public testing::TestWithParam<std::string> {
  protected:
    void start(double scale = 1, std::vector<std::string> clients = {"parcellite", "volumeicon"}) {
        Desktop::Options options;
        options.host = GetParam();
        desktop_.emplace(options);
        for (const auto& client : clients)
            desktop_->startClient(client);
        desktop_->cutOutIcons(0, desktop_->settledIcons().size() - 1);
        mirror_.emplace(*desktop_, scale);
        desktop_->startProgram({}, {{"QT_SCALE_FACTOR", std::to_string(scale)}});
    }

    std::optional<Desktop> desktop_;
    std::optional<Mirror> mirror_;
};

TEST_P(OnHost, theStripMirrorsExactlyTheIconsThatTheNotchHides) {
    start();
    ASSERT_EQ(mirror_->hiddenIcons().size(), 2U);
    EXPECT_TRUE(mirror_->waitUntilRight());
}

TEST_P(OnHost, anIconThatTheNotchOnlyTouchesIsNotMirrored) {
    start();
    const auto icons = desktop_->settledIcons();
    desktop_->setCutout(icons[1].area.x, icons[1].area.right() + 40);
    ASSERT_EQ(mirror_->hiddenIcons().size(), 1U);
    EXPECT_TRUE(mirror_->waitUntilRight());
}

TEST_P(OnHost, aCellShowsItsIconsPixels) {
    start();
    ASSERT_TRUE(mirror_->waitUntilRight());
    // tint2 draws 32-bit icons itself and blends their soft edges in its own way.
    const int tolerance = GetParam() == "tint2" ? 60 : 2;
    for (const auto& icon : mirror_->hiddenIcons()) {
        ASSERT_GT(desktop_->observer().imageOfRoot(icon.area).colours(), 3U);
        EXPECT_TRUE(waitFor("the cell is the same as the icon",
                            [&] { return mirror_->differenceOf(icon) <= tolerance; }))
            << "difference " << mirror_->differenceOf(icon);
    }
}

TEST_P(OnHost, anApplicationThatIsKilledLosesItsCellAndOneThatComesGetsOne) {
    start();
    ASSERT_TRUE(mirror_->waitUntilRight());
    desktop_->clients().front().process.kill();
    ASSERT_TRUE(waitFor("its icon goes", [&] { return desktop_->foreignIcons().size() == 1; }));
    EXPECT_TRUE(mirror_->waitUntilRight());
    desktop_->startClient("parcellite");
    EXPECT_TRUE(mirror_->waitUntilRight());
    EXPECT_TRUE(desktop_->program().isRunning());
}

TEST_P(OnHost, aTrayThatIsKilledHidesTheStripAndOneThatComesBackBringsIt) {
    start();
    ASSERT_TRUE(mirror_->waitUntilRight());
    desktop_->host().kill();
    EXPECT_TRUE(waitFor("the strip goes", [&] { return !desktop_->strip(); }));
    desktop_->startHost(GetParam());
    desktop_->startClient("volumeicon"); // not every application docks again by itself
    desktop_->cutOutIcons(0, desktop_->settledIcons().size() - 1);
    EXPECT_TRUE(mirror_->waitUntilRight());
    EXPECT_TRUE(desktop_->program().isRunning());
}

TEST_P(OnHost, theStripStandsDirectlyAboveTheDock) {
    start();
    ASSERT_TRUE(mirror_->waitUntilRight());
    auto dock = desktop_->observer().dockOf(desktop_->foreignIcons().at(0).id);
    while (dock && dock->parent != desktop_->observer().root())
        dock = desktop_->observer().window(dock->parent);
    ASSERT_TRUE(dock);
    const auto isDirectlyAbove = [&] {
        const auto strip = desktop_->strip();
        xcb_window_t below = 0;
        for (const auto& window : desktop_->observer().topLevels()) {
            if (!window.isViewable() || window.inputOnly || window.area.width <= 8)
                continue;
            if (strip && window.id == strip->id)
                return below == dock->id;
            below = window.id;
        }
        return false;
    };
    EXPECT_TRUE(waitFor("it stands there", isDirectlyAbove));
}

INSTANTIATE_TEST_SUITE_P(Hosts, OnHost,
                         testing::Values("trayer", "tint2", "lxpanel", "xfce4-panel", "mate-panel"),
                         [](const auto& test) { return testName(test.param); });

/// The same on the tray that is as wide as its icons, at several scales.
class AtScale : public testing::TestWithParam<double> {
  protected:
    AtScale() {
        desktop_.emplace(Desktop::Options{});
        desktop_->startClient("parcellite");
        desktop_->startClient("volumeicon");
        desktop_->cutOutIcons(0, 1);
        mirror_.emplace(*desktop_, GetParam());
        desktop_->startProgram({}, {{"QT_SCALE_FACTOR", std::to_string(GetParam())}});
    }

    std::optional<Desktop> desktop_;
    std::optional<Mirror> mirror_;
};

TEST_P(AtScale, theStripEndsSixPointsLeftOfTheNotchToThePixel) {
    EXPECT_TRUE(mirror_->waitUntilRight()) << desktop_->waitForStrip().area;
}

TEST_P(AtScale, aCellShowsItsIcon) {
    ASSERT_TRUE(mirror_->waitUntilRight());
    // Where points are not whole pixels, an icon goes through a picture of another size.
    const int tolerance = GetParam() == 1.5 ? 90 : 2;
    for (const auto& icon : mirror_->hiddenIcons())
        EXPECT_TRUE(waitFor("the cell is like the icon",
                            [&] { return mirror_->differenceOf(icon) <= tolerance; }))
            << "difference " << mirror_->differenceOf(icon);
}

INSTANTIATE_TEST_SUITE_P(Scales, AtScale, testing::Values(1.0, 1.5, 2.0), [](const auto& test) {
    return testName(std::to_string(test.param).substr(0, 3));
});

} // namespace
} // namespace orrivane::e2e
