#include "Random.h"
#include "StripFixture.h"

#include <algorithm>
#include <iostream>
#include <utility>

namespace orrivane {
namespace {

using enum SystemNotification;

/// A day of somebody's desktop: applications come and go, hang, screens are plugged, the machine
/// sleeps, the switch is turned, captures are slow, fail or never answer.
struct SimulatedDay : StripFixture {
    static constexpr double day = 86'400; // seconds
    static constexpr double hour = 3'600; // seconds
    Random random;
    testing::ScopedTrace trace{__FILE__, __LINE__, random.trace()};
    std::uint32_t lastItem = 100;
    bool asleep = false;
    bool suspended = false;        // as the controller should think, from what it was told
    std::vector<double> resumesAt; // one after every wake
    std::size_t shows = 0;
    std::size_t events = 0;

    void somethingHappens() {
        ++events;
        switch (random.integer(0, 9)) {
        case 0:
            return appear();
        case 1:
            return disappear();
        case 2:
            return plugScreen();
        case 3:
            return sleepOrWake();
        case 4:
            return turnTheSwitch(random.chance(0.8));
        case 5:
            world.screenCapture.captureReply = anyReply();
            world.screenCapture.contentReply = anyReply();
            return;
        case 6:
            return hangOrRecover();
        case 7:
            setMenuWidth(random.integer(0, 640));
            return post(didActivateApplication);
        case 8:
            if (shown() && !row().empty())
                world.trayPanel.click(static_cast<std::size_t>(
                    random.integer(0, static_cast<int>(row().size()) - 1)));
            return;
        default:
            world.screenCapture.accessGranted = random.chance(0.9);
            world.accessibility.trusted = random.chance(0.9);
            world.ownWindows.numbers = {-1, static_cast<std::int64_t>(lastItem)};
            world.loop.setNow(world.loop.now() + random.real(-4000, 4000));
        }
    }

    void appear() {
        const auto id = ++lastItem;
        addItem(id, random.integer(500, 900), random.integer(18, 60), static_cast<std::int32_t>(id),
                random.chance(0.1) ? "" : "App");
    }
    void disappear() {
        if (world.windowList.all.size() < 2)
            return;
        const auto index = static_cast<std::size_t>(
            random.integer(0, static_cast<int>(world.windowList.all.size()) - 1));
        const auto id = *world.windowList.all[index].number;
        world.windowList.remove(id);
        world.screenCapture.removeWindow(id);
        world.accessibility.quit(static_cast<std::int32_t>(id == left ? 1 : id == right ? 2 : id));
    }
    void turnTheSwitch(bool on) {
        controller->setEnabled(on);
        suspended = suspended && on;
    }
    void plugScreen() {
        if (world.screens.list.empty())
            world.screens.list = {ScriptedScreens::notched()};
        else if (random.chance(0.1))
            world.screens.list.clear();
        else if (world.screens.list.size() > 1 && random.chance(0.7))
            world.screens.list.pop_back();
        else if (random.chance(0.5))
            world.screens.list.push_back(ScriptedScreens::plain({{1512, 0}, {1920, 1080}}));
        setDefault(StripController::externalKey, random.chance(0.7));
        post(didChangeScreenParameters);
    }
    void sleepOrWake() {
        asleep = !asleep;
        world.screens.displayIsAsleep = asleep && random.chance(0.5);
        // While it is switched off it hears of neither.
        suspended = suspended || (asleep && controller->enabled());
        if (!asleep && suspended)
            resumesAt.push_back(world.loop.elapsed() + 3);
        post(asleep ? (random.chance(0.5) ? willSleep : screensDidSleep)
                    : (random.chance(0.5) ? didWake : screensDidWake));
        if (!asleep)
            world.screens.displayIsAsleep = false;
    }
    CaptureReply anyReply() {
        switch (random.integer(0, 5)) {
        case 0:
            return CaptureReply::failure();
        case 1:
            return CaptureReply::never();
        case 2:
            return CaptureReply::drop();
        case 3:
            return CaptureReply::later(random.real(0, 3), random.chance(0.3));
        default:
            return CaptureReply::now();
        }
    }
    void hangOrRecover() {
        if (world.accessibility.hung.empty())
            world.accessibility.hung.insert(static_cast<std::int32_t>(lastItem));
        else
            world.accessibility.hung.clear();
    }

    // Everything is well again, for long enough to be noticed.
    void calmDown() {
        world.screens.list = {ScriptedScreens::notched()};
        world.screens.displayIsAsleep = false;
        world.accessibility.hung.clear();
        world.accessibility.trusted = true;
        world.screenCapture.accessGranted = true;
        world.screenCapture.captureReply = CaptureReply::now();
        world.screenCapture.contentReply = CaptureReply::now();
        setMenuWidth(200);
        turnTheSwitch(false);
        turnTheSwitch(true);
        asleep = false;
        // A width that was read before the clock was set back would count as young for long.
        post(didActivateApplication);
        advance(10);
    }
    [[nodiscard]] Row whatShouldBeShown() {
        const auto census = WindowCensus::take(world.screens, world.windowList);
        auto hidden = census.eaten();
        std::erase_if(hidden, [this](const StatusItemWindow& item) {
            return std::ranges::count(world.ownWindows.numbers, std::int64_t{item.id}) > 0;
        });
        Row expected;
        for (const auto& item : StripController::fit(hidden, *census.notch, 200))
            expected.push_back(item.id);
        return expected;
    }

    // What must hold between any two events.
    void check() {
        for (const double at : std::exchange(resumesAt, {}))
            if (at > world.loop.elapsed())
                resumesAt.push_back(at);
            else if (controller->enabled())
                suspended = false;
        const auto cells = row();
        ASSERT_EQ(controller->mirroredCount(), static_cast<std::int64_t>(cells.size()));
        ASSERT_LE(world.loop.repeatingTimerCount(), 1U);
        if (!controller->enabled() || suspended) {
            ASSERT_FALSE(shown());
        }
        if (!shown())
            return;
        ++shows;
        ASSERT_FALSE(cells.empty());
        double width = 0;
        for (const auto& button : world.trayPanel.buttons())
            width += button.label.size.width;
        ASSERT_DOUBLE_EQ(world.trayPanel.frame.width(), width);
        ASSERT_DOUBLE_EQ(world.trayPanel.frame.maxX(), 654);
    }
};

TEST_F(SimulatedDay, keepsItsPromisesThroughEverything) {
    start();
    double nextEvent = 0;
    double nextCalm = hour;
    while (world.loop.elapsed() < day) {
        if (world.loop.elapsed() >= nextEvent) {
            somethingHappens();
            nextEvent = world.loop.elapsed() + random.real(0.1, 40);
        }
        advance(0.5);
        check();
        if (HasFatalFailure())
            return;
        if (world.loop.elapsed() < nextCalm)
            continue;
        nextCalm += hour;
        calmDown();
        check();
        ASSERT_EQ(row(), whatShouldBeShown()) << "at " << world.loop.elapsed() << " s";
    }
    const auto ticks = world.journal.count("allWindows");
    std::cout << events << " events, " << ticks << " ticks, shown at " << shows << " of "
              << 2 * static_cast<int>(day) << " looks\n";
    EXPECT_GT(events, 2000U);
    EXPECT_GT(ticks, 1000U);
    EXPECT_GT(shows, 1000U);
    EXPECT_LT(ticks, static_cast<std::size_t>(day) + 2 * events);
}

} // namespace
} // namespace orrivane
