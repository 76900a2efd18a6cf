#pragma once

#include <Orrivane/WindowCensus.h>
#include <Orrivane/support/Task.h>

#include <linux/hosts/BackgroundQueue.h>
#include <linux/hosts/TrayHostKind.h>
#include <linux/hosts/XfceTray.h>
#include <linux/support/Outcome.h>

#include <functional>
#include <optional>
#include <string>

namespace orrivane {

class MainLoop;
class SystemLog;
struct MenuBarPreferences;
namespace x11 {
class Connection;
class StatusItems;
class X11Screens;
} // namespace x11

/// The trays of other programs that have a spacing, or an order, of their own. Main thread only;
/// files, signals and other programs are left to a thread of its own.
class ForeignHosts {
  public:
    struct Parts {
        x11::Connection& connection;
        MainLoop& loop;
        x11::StatusItems& items;
        x11::X11Screens& screens;
        SystemLog& log;
        std::function<std::string(const std::string&)> lowered; ///< of UTF-8 text
    };

    /// The parts outlive it. `preferenceFile` is read at every restart; records are kept beside it.
    ForeignHosts(Parts parts, std::string preferenceFile);

    /// One sentence where the tray cannot be respaced, empty where it can; absent when the tray
    /// that is here now is none of these. Likewise for its order.
    [[nodiscard]] std::optional<std::string> squeezeLimitation();
    [[nodiscard]] std::optional<std::string> arrangeLimitation();

    /// Makes the present tray follow the stored preferences; where nothing is stored, every tray
    /// gets the user's own settings back, also one that does not run. Returns at once, a failure is
    /// logged.
    void restart();

    /// Moves the item to `toX` (global points) by the tray's own list; true when the tray was told
    /// of a new order. Absent when the tray that is here now has no such list.
    [[nodiscard]] std::optional<Task<bool>> move(const StatusItemWindow& item, double toX);

  private:
    struct Present {
        std::optional<HostProcess> process;
        TrayHostChoice choice;
    };
    [[nodiscard]] Present present();
    [[nodiscard]] XfceTray::Measures measures();
    void act(const MenuBarPreferences& preferences, const Present& host, double scale,
             const XfceTray::Measures& measures);
    void logFailure(const std::string& host, const Outcome& outcome);
    [[nodiscard]] std::string recordFile(const std::string& host) const;

    Parts parts_;
    std::string preferenceFile_;
    BackgroundQueue queue_; // last: its thread uses the others
};

} // namespace orrivane
