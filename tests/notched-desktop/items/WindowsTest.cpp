#include "Desktop.h"
#include "ItemsStage.h"
#include "TestWindow.h"

#include <sstream>

namespace orrivane::e2e {
namespace {

/// The two ordinary windows, under a window manager.
class Windows : public ItemsStage {
  protected:
    void SetUp() override {
        if (const std::string missing = missingPrograms({"openbox"}); !missing.empty())
            GTEST_SKIP() << missing;
        start({"openbox", "--sm-disable"});
        // It announces itself before it serves; a window of ours proves that it does.
        TestWindow probe(observer_, {{0, 0, 8, 8}});
        ASSERT_TRUE(waitFor("the window manager takes windows over", [&] {
            probe.map();
            return probe.isManaged();
        }));
    }

    ChildProcess& startWindow(const std::string& kind) { return start({ORRIVANE_WINDOW, kind}); }

    WindowState shown(const std::string& className) {
        return waitForValue<WindowState>(className + " shows", [&]() -> std::optional<WindowState> {
            for (const auto& each : observer_.tree())
                if (each.className == className && each.isViewable() &&
                    text(each.id, "_ORRIVANE_APP_MENUS"))
                    return each;
            return std::nullopt;
        });
    }

    void choose(xcb_window_t window, int menu, int entry) {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = window;
        message.type = observer_.atom("_ORRIVANE_APP_MENU_CHOICE");
        message.data.data32[0] = static_cast<std::uint32_t>(menu);
        message.data.data32[1] = static_cast<std::uint32_t>(entry);
        xcb_send_event(observer_.connection(), 0, window, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&message));
        xcb_flush(observer_.connection());
    }

    static std::vector<std::string> titles(const std::string& menus) {
        std::vector<std::string> found;
        std::istringstream stream(menus);
        for (std::string line; std::getline(stream, line);)
            found.push_back(line.substr(0, line.find('\t')));
        return found;
    }
};

TEST_F(Windows, publishMenusOfClearlyDifferentWidth) {
    startWindow("notes");
    startWindow("sketch");
    const auto widthOf = [&](const std::string& name) {
        std::size_t letters = 0;
        for (const auto& title : titles(text(shown(name).id, "_ORRIVANE_APP_MENUS").value()))
            letters += title.size();
        return letters;
    };
    const auto notes = widthOf("Notes");
    EXPECT_GT(notes, 0u);
    EXPECT_GT(widthOf("Sketch"), 3 * notes);
}

TEST_F(Windows, logWhatIsChosenAndShowIt) {
    startWindow("notes");
    const auto window = shown("Notes");
    ASSERT_TRUE(waitFor("it is drawn", [&] {
        const auto image = observer_.imageOf(window.id);
        return image && image->colours() > 20;
    }));
    const auto before = observer_.imageOf(window.id);
    choose(window.id, 1, 3);
    EXPECT_TRUE(isLogged({"notes: Edit/Copy"}));
    EXPECT_TRUE(waitFor("it says so", [&] { return observer_.imageOf(window.id) != before; }));
    choose(window.id, 0, 0);
    EXPECT_TRUE(isLogged({"notes: Edit/Copy", "notes: File/New Note"}));
}

TEST_F(Windows, choicesThatAreNoneChangeNothing) {
    startWindow("sketch");
    const auto window = shown("Sketch");
    for (const auto& [menu, entry] : {std::pair{-2, 0}, {-1, 1}, {99, 0}, {0, 99}, {0, -1}, {0, 3}})
        choose(window.id, menu, entry);
    choose(window.id, 5, 1);
    EXPECT_TRUE(isLogged({"sketch: Colours/Signal Red"}));
}

TEST_F(Windows, quitFromTheNamesMenuEndsTheProgram) {
    auto& program = startWindow("notes");
    choose(shown("Notes").id, -1, 0);
    EXPECT_EQ(program.wait(defaultBound), (ExitStatus{0, std::nullopt}));
    EXPECT_EQ(choices(), std::vector<std::string>{"notes: Notes/Quit Notes"});
}

TEST_F(Windows, theCloseButtonEndsTheProgram) {
    auto& program = startWindow("sketch");
    const auto window = shown("Sketch");
    observer_.click({window.area.x + 22, window.area.y + 20});
    EXPECT_EQ(program.wait(defaultBound), (ExitStatus{0, std::nullopt}));
}

TEST_F(Windows, areMovedByTheirTitle) {
    startWindow("notes");
    const auto window = shown("Notes");
    const PixelPoint grip{window.area.x + 300, window.area.y + 12};
    observer_.movePointer(grip);
    observer_.button(1, true);
    const auto hasMoved = [&] {
        const auto now = observer_.window(window.id);
        return now && now->area != window.area;
    };
    const auto isFarDownRight = [&] {
        const auto now = observer_.window(window.id);
        return now && now->area.x >= window.area.x + 90 && now->area.y >= window.area.y + 90;
    };
    // The window manager moves it from where the pointer is when it takes over.
    int step = 0;
    EXPECT_TRUE(waitFor("the window manager has taken over", [&] {
        step = step == 10 ? 20 : 10;
        observer_.movePointer({grip.x + step, grip.y + step});
        return hasMoved();
    }));
    observer_.movePointer({grip.x + 120, grip.y + 120});
    EXPECT_TRUE(waitFor("it follows the pointer", isFarDownRight));
    observer_.button(1, false);
    EXPECT_TRUE(isFarDownRight());
}

TEST_F(Windows, theActiveOneChangesWithAClick) {
    startWindow("notes");
    const auto notes = shown("Notes");
    startWindow("sketch");
    const auto sketch = shown("Sketch");
    // The answer of a program that was just given the focus may still be on its way.
    const auto isInFront = [&](const WindowState& window) {
        return observer_.activeWindow() == window.id && observer_.focusWindow() == window.id;
    };
    ASSERT_TRUE(waitFor("the new one is active", [&] { return isInFront(sketch); }));
    ASSERT_TRUE(staysTrue(
        "it stays so", [&] { return isInFront(sketch); }, std::chrono::milliseconds(200)));
    observer_.click({notes.area.x + 300, notes.area.y + 12});
    EXPECT_TRUE(waitFor("the one clicked is active", [&] { return isInFront(notes); }));
}

} // namespace
} // namespace orrivane::e2e
