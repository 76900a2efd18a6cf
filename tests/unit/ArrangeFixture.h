#pragma once

#include <Orrivane/ArrangeView.h>
#include <Orrivane/support/Awaiters.h>

#include <tests/support/ScriptedPlatform.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orrivane {

/// Four items in a row, the first one under the notch, and a mover that takes its time and keeps
/// what it was asked for. The third item has no owner.
struct ArrangeFixture : testing::Test {
    struct Move {
        StatusItemWindow item;
        double toX = 0;
        double at = 0; ///< virtual seconds

        friend bool operator==(const Move&, const Move&) = default;
    };
    static constexpr double moveTime = 0.55; ///< seconds

    ScriptedPlatform world;
    CaptureService captures{world.screenCapture, world.accessibility, world.workspace};
    std::vector<Move> moves;
    std::string limitation;
    std::shared_ptr<ArrangeView> view;

    ArrangeFixture() {
        world.screens.list = {ScriptedScreens::notched()};
        addItem(11, 820, 24, "Clock");
        addItem(12, 900, 30, "Network");
        addItem(13, 940, 40, "");
        addItem(14, 990, 22, "Sound");
        view = std::make_shared<ArrangeView>(world.platform(), captures, mover());
    }

    /// Its owner has the item's number plus 100 as its process; no owner without a name.
    void addItem(std::uint32_t id, double x, double width, const std::string& name) {
        const Rect frame{{x, 0}, {width, 37}};
        world.windowList.add(id, frame);
        world.screenCapture.addWindow(id, frame.size, frame.origin);
        if (name.empty())
            return;
        world.accessibility.addApplication(static_cast<std::int32_t>(id + 100), name);
        world.accessibility.addStatusItem(static_cast<std::int32_t>(id + 100), frame);
    }
    ItemMover mover() {
        return {[this](StatusItemWindow item, double toX) { return move(std::move(item), toX); },
                [this] { return limitation; }};
    }
    Task<bool> move(StatusItemWindow item, double toX) {
        moves.push_back({std::move(item), toX, world.loop.elapsed()});
        Sleep gesture(moveTime);
        co_await gesture;
        co_return false; // what became of it is of no interest
    }
    void appear() {
        view->appear();
        world.loop.runUntilIdle();
    }
    void run(Task<> task) {
        start(world.loop, std::move(task));
        world.loop.runUntilIdle();
    }
    /// The whole of what the user does to drop the tile `id` in the gap `gap`.
    bool dragAndDrop(std::uint32_t id, int gap) {
        view->beginDrag(id);
        view->setInsertion(gap);
        const bool accepted = view->performDrop();
        view->endDrag();
        world.loop.runUntilIdle();
        return accepted;
    }
    [[nodiscard]] std::vector<std::uint32_t> order() const {
        std::vector<std::uint32_t> ids;
        for (const auto& item : view->items())
            ids.push_back(item.id);
        return ids;
    }
    [[nodiscard]] bool isDragging() const { return view->draggingID() || view->insertionIndex(); }
};

} // namespace orrivane
