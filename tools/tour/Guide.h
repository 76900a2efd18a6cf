#pragma once

#include "AccessibleProgram.h"
#include "NotchedDesktop.h"
#include "ProgramWindows.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace orrivane::tour {

/// Does what a user does on the desktop, with pointer and keyboard, and sees what a second
/// connection and a screen reader see. Everything that does not come to pass within a bound throws
/// std::runtime_error with a sentence.
class Guide {
  public:
    struct Options {
        std::vector<std::string> desktop; ///< of orrivane-desktop
        std::string pictures;             ///< folder
        std::string program;              ///< path
        e2e::Environment environment;     ///< beside the desktop's
    };

    explicit Guide(Options options);

    void start();
    /// Another launch; its exit status.
    int launchAgain(const std::vector<std::string>& arguments = {});
    /// Waits for the program's own end.
    e2e::ExitStatus waitForEnd();

    e2e::NotchedDesktop& desktop() { return desktop_; }
    e2e::Observer& observer() { return desktop_.observer(); }
    e2e::ChildProcess& program() { return *program_; }

    /// The program's own icon in the bar.
    std::optional<e2e::WindowState> ownIcon();
    /// The program's tray beside the notch.
    std::optional<e2e::WindowState> strip();
    /// The large window or popover of the program that shows.
    std::optional<e2e::WindowState> window();
    /// Icons that the notch overlaps.
    std::size_t hidden();
    /// Classes of the icons, left to right.
    std::vector<std::string> order();
    /// Width of every icon but the program's own, by class.
    std::map<std::string, int> widths();

    /// The control with this role and name that shows, waited for.
    e2e::AccessibleNode control(const std::string& role, const std::string& name);
    std::optional<e2e::AccessibleNode> find(const std::string& role, const std::string& name);
    /// The first text that shows and contains `part`; empty if there is none.
    std::string text(const std::string& part);
    bool shows(const std::string& part) { return !text(part).empty(); }
    /// Places of the tiles that stand for the icons, left to right.
    std::vector<e2e::PixelRect> tiles();
    bool isChecked(const std::string& name);
    /// Moves the pointer there and clicks; scrolls the window until it can be seen.
    void click(const std::string& role, const std::string& name);
    /// The same, and waits until keys go there.
    void clickInto(const std::string& role, const std::string& name);
    void clickAt(const e2e::PixelPoint& place);
    /// Gives the keyboard to another application.
    void workElsewhere();
    void drag(const e2e::PixelPoint& from, const e2e::PixelPoint& to);

    void waitFor(const std::string& what, const std::function<bool()>& holds);
    /// Waits until the windows of the program rest, then takes a picture of the screen.
    void picture(const std::string& name);

  private:
    e2e::ProgramWindows windows() { return {observer(), program_->pid()}; }
    e2e::PixelRect place(const e2e::AccessibleNode& node) { return tree().extents(node); }
    /// Where the control is once the window has stopped changing around it.
    e2e::PixelRect placeAtRest(const e2e::AccessibleNode& node);
    /// Scrolls the window until the control can be seen; its place then.
    e2e::PixelRect bringIntoView(const e2e::AccessibleNode& node);
    /// Whether a click in the middle of `before` was on the control: false if it has moved since
    /// and has not taken the click.
    bool tookClick(const e2e::AccessibleNode& node, const e2e::PixelRect& before);
    e2e::AccessibleTree& tree() { return reading_->tree(); }

    Options options_;
    e2e::TempDirectory folder_;
    e2e::NotchedDesktop desktop_;
    std::optional<e2e::ChildProcess> program_;
    std::optional<e2e::AccessibleProgram> reading_;
    int launches_ = 0;
};

} // namespace orrivane::tour
