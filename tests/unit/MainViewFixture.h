#pragma once

#include <Orrivane/MainView.h>
#include <Orrivane/NotificationName.h>
#include <Orrivane/StripController.h>
#include <Orrivane/UpdateController.h>
#include <Orrivane/support/NotificationCenter.h>

#include <tests/support/ScriptedShellPlatform.h>
#include <tests/support/ViewReading.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace orrivane {

/// A notched screen with two hidden items (11, 12) and two others (13, 14), all services on
/// scripted ports, and one main view whose newest value is `root`.
struct MainViewFixture : testing::Test {
    struct Post {
        std::string name;
        UserInfo userInfo;

        friend bool operator==(const Post&, const Post&) = default;
    };

    ScriptedPlatform world;
    ScriptedShellPlatform shell{world};
    CaptureService captures{world.screenCapture, world.accessibility, world.workspace};
    NotificationCenter notifications;
    StripController strip{world.platform(), captures};
    UpdateController updates{shell.updater, world.workspace, world.loop, notifications};
    std::vector<Post> posts; ///< of the screen's notifications, in order
    std::vector<Subscription> observations;
    std::string squeezeLimitation;
    View root;
    int renderings = 0;
    std::shared_ptr<MainView> view;

    MainViewFixture() {
        world.screens.list = {ScriptedScreens::notched()};
        addItem(11, 700);
        addItem(12, 740);
        addItem(13, 1400);
        addItem(14, 1440);
        for (const auto name :
             {NotificationName::orrivaneShowWindow, NotificationName::orrivaneStatusItemChanged,
              NotificationName::orrivaneContentHeight})
            observations.push_back(
                notifications.addObserver(name, [this, name](const UserInfo& info) {
                    posts.push_back({std::string(name), info});
                }));
    }

    void addItem(std::uint32_t id, double x, double width = 30) {
        const Rect frame{{x, 0}, {width, 37}};
        world.windowList.add(id, frame);
        world.screenCapture.addWindow(id, frame.size, frame.origin);
    }
    void create(bool inWindow = false) {
        const MainView::Services services{
            captures,
            strip,
            updates,
            notifications,
            {[](StatusItemWindow, double) -> Task<bool> { co_return true; }, {}},
            [this] { return squeezeLimitation; }};
        view = MainView::create(inWindow, world.platform(), shell.platform(), services,
                                [this](const View& value) {
                                    root = value;
                                    ++renderings;
                                });
    }
    void appear() {
        const auto appeared = root.appeared.run;
        appeared();
        world.loop.runUntilIdle();
    }
    void disappear() {
        const auto disappeared = root.disappeared.run;
        disappeared();
        world.loop.runUntilIdle();
    }
    void settle() { world.loop.runUntilIdle(); }
    void createAndAppear(bool inWindow = false) {
        create(inWindow);
        appear();
    }
    void press(std::string_view title) {
        reading::press(root, title);
        settle();
    }
    void flip(std::string_view label, bool on) {
        reading::flip(root, label, on);
        settle();
    }
    /// Chooses the button of the dialog that is open.
    void answer(std::string_view title, std::string_view button) {
        const auto buttons = dialog(title).buttons;
        for (const auto& each : buttons)
            if (each.title == button)
                each.chosen.run();
        settle();
    }
    [[nodiscard]] const ConfirmationDialog& dialog(std::string_view title) const {
        for (const auto* each : reading::all<ConfirmationDialog>(root))
            if (const auto& found = std::get<ConfirmationDialog>(each->node); found.title == title)
                return found;
        throw std::runtime_error("no dialog \"" + std::string(title) + "\"");
    }
    [[nodiscard]] bool isOn(std::string_view label) const {
        return reading::onlyNode<Switch>(root, label).isOn;
    }
    template <typename Node>
    [[nodiscard]] bool isShown(std::string_view text) const {
        return reading::isShown<Node>(root, text);
    }
    [[nodiscard]] std::size_t censuses() const { return world.journal.count("allWindows"); }
    [[nodiscard]] std::size_t count(std::string_view call) const {
        return world.journal.count(call);
    }
    /// The section with this heading.
    [[nodiscard]] const View& section(std::string_view title) const {
        return reading::only<GroupBox>(root, title);
    }
};

} // namespace orrivane
