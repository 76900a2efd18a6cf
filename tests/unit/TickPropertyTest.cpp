#include "Random.h"
#include "ReferenceCensus.h"
#include "StripFixture.h"

#include <algorithm>
#include <set>

namespace orrivane {
namespace {

constexpr int steps = 4000;
constexpr double slowest = 0.9; // seconds: two of these stay below the limit of an answer

// What the ports see of the tick under way: everything between its census and its show.
struct Witness {
    int pendingRequests = 0; // of snapshots and captures
    bool shownSinceCensus = true;
    std::set<std::uint32_t> hidden;
    std::size_t censuses = 0;
    std::size_t censusesUnderACapture = 0;
    std::size_t shows = 0;
    std::size_t showsWithoutCensus = 0;
    std::size_t strangersShown = 0;
};

struct WitnessedWindows : WindowList {
    WitnessedWindows(ScriptedPlatform& theWorld, Witness& theWitness)
        : world(theWorld)
        , witness(theWitness) {}

    std::vector<WindowListEntry> allWindows() override {
        ++witness.censuses;
        witness.censusesUnderACapture += witness.pendingRequests > 0 ? 1 : 0;
        witness.shownSinceCensus = false;
        witness.hidden.clear();
        const auto census =
            referenceCensus(world.screens.list, world.windowList.all, world.windowList.onscreen);
        for (const auto& item : census.items)
            if (item.isEaten &&
                std::ranges::find(world.ownWindows.numbers, std::int64_t{item.id}) ==
                    world.ownWindows.numbers.end())
                witness.hidden.insert(item.id);
        return world.windowList.allWindows();
    }
    std::vector<WindowListEntry> onscreenWindows() override {
        return world.windowList.onscreenWindows();
    }

    ScriptedPlatform& world;
    Witness& witness;
};

struct WitnessedCapture : ScriptedScreenCapture {
    WitnessedCapture(ScriptedPlatform& theWorld, Witness& theWitness)
        : ScriptedScreenCapture(theWorld.loop)
        , witness(theWitness) {}

    void
    shareableContent(std::function<void(std::optional<ShareableContent>)> completion) override {
        ++witness.pendingRequests;
        ScriptedScreenCapture::shareableContent([this, completion](const auto& content) {
            --witness.pendingRequests;
            completion(content);
        });
    }
    void captureImage(const ShareableWindow& window, const CaptureConfiguration& configuration,
                      std::function<void(std::optional<Image>)> completion) override {
        ++witness.pendingRequests;
        ScriptedScreenCapture::captureImage(window, configuration,
                                            [this, completion](const auto& image) {
                                                --witness.pendingRequests;
                                                completion(image);
                                            });
    }

    Witness& witness;
};

struct WitnessedPanel : ScriptedTrayPanel {
    explicit WitnessedPanel(Witness& theWitness)
        : witness(theWitness) {}

    void setRoot(const View& view) override {
        const auto& cells = std::get<HorizontalStack>(view.node).children;
        if (!cells.empty()) {
            ++witness.shows;
            witness.showsWithoutCensus += witness.shownSinceCensus ? 1 : 0;
            witness.shownSinceCensus = true;
        }
        for (const auto& cell : cells)
            witness.strangersShown += witness.hidden.contains(cell.key) ? 0 : 1;
        ScriptedTrayPanel::setRoot(view);
    }

    Witness& witness;
};

/// A controller whose ports are watched while chance pulls every trigger there is.
struct TickProperties : StripFixture {
    Random random;
    testing::ScopedTrace trace{__FILE__, __LINE__, random.trace()};
    Witness witness;
    WitnessedWindows windows{world, witness};
    WitnessedCapture capture{world, witness};
    WitnessedPanel panel{witness};
    CaptureService service{capture, world.accessibility, world.workspace};
    std::uint32_t lastItem = 100;

    TickProperties() {
        const auto ports = world.platform();
        controller = std::make_unique<StripController>(
            Platform{ports.mainLoop, ports.screens, windows, ports.ownWindows, ports.accessibility,
                     capture, ports.userDefaults, ports.workspace, panel, ports.log},
            service);
    }
    ~TickProperties() override { controller.reset(); }

    CaptureReply anyReply() {
        if (random.chance(0.5))
            return CaptureReply::now();
        return CaptureReply::later(random.real(0, slowest), random.chance(0.2));
    }
    void changeTheWorld() {
        if (random.chance(0.3) && world.windowList.all.size() < 12) {
            const auto id = ++lastItem;
            addItem(id, random.integer(500, 900), random.integer(18, 60),
                    static_cast<std::int32_t>(id), "App");
        }
        if (random.chance(0.3) && !world.windowList.all.empty()) {
            const auto at = random.integer(0, static_cast<int>(world.windowList.all.size()) - 1);
            world.windowList.remove(*world.windowList.all[static_cast<std::size_t>(at)].number);
        }
        if (random.chance(0.1))
            world.screens.list = {
                ScriptedScreens::notched({1512, 982}, 37, random.integer(500, 700), 850)};
        if (random.chance(0.1))
            world.ownWindows.numbers = {random.integer(90, static_cast<int>(lastItem)), -1};
        capture.windows = world.screenCapture.windows;
        capture.captureReply = anyReply();
        capture.contentReply = anyReply();
    }
    void pullATrigger() {
        using enum SystemNotification;
        if (random.chance(0.05))
            controller->setEnabled(random.chance(0.7));
        if (random.chance(0.05))
            return post(static_cast<SystemNotification>(random.integer(0, 5)));
        if (random.chance(0.1))
            return post(random.chance(0.5) ? didWake : didChangeScreenParameters);
        if (random.chance(0.5))
            post(didActivateApplication);
    }
};

TEST_F(TickProperties, holdWhateverTheOrderOfTriggers) {
    start();
    for (int step = 0; step < steps; ++step) {
        changeTheWorld();
        pullATrigger();
        advance(random.real(0, 1.2));
        ASSERT_EQ(witness.censusesUnderACapture, 0U)
            << "a second tick began before the first ended";
        ASSERT_EQ(witness.showsWithoutCensus, 0U) << "one census was shown twice";
        ASSERT_EQ(witness.strangersShown, 0U) << "shown, but not hidden in this tick's census";
        ASSERT_LE(world.loop.repeatingTimerCount(), 1U);
        ASSERT_EQ(panel.visible, controller->mirroredCount() > 0);
    }
    EXPECT_GT(witness.shows, 200U) << "too little was watched";
    EXPECT_GT(witness.censuses, witness.shows);
}

TEST_F(TickProperties, theShownRowIsTheLongestThatFitsWheneverTheWorldIsCalm) {
    start();
    std::size_t compared = 0;
    for (int step = 0; step < 300; ++step) {
        changeTheWorld();
        const double menus = random.integer(0, 640);
        setMenuWidth(menus);
        advance(9); // longer than a menu's width is kept and any capture takes
        std::vector<StatusItemWindow> eaten;
        const auto census =
            referenceCensus(world.screens.list, world.windowList.all, world.windowList.onscreen);
        for (const auto& item : census.items)
            if (item.isEaten &&
                std::ranges::find(world.ownWindows.numbers, std::int64_t{item.id}) ==
                    world.ownWindows.numbers.end())
                eaten.push_back(item);
        Row expected;
        double room = census.notch->notchMinX - 6 - (menus + 10);
        while (!eaten.empty() && eaten.back().frame.width() <= room) {
            room -= eaten.back().frame.width();
            expected.insert(expected.begin(), eaten.back().id);
            eaten.pop_back();
        }
        Row cells;
        if (panel.visible)
            for (const auto& cell : std::get<HorizontalStack>(panel.root->node).children)
                cells.push_back(cell.key);
        ASSERT_EQ(cells, expected);
        compared += expected.empty() ? 0 : 1;
    }
    EXPECT_GT(compared, 30U) << "too little was compared";
}

} // namespace
} // namespace orrivane
