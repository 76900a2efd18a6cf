#pragma once

#include "ChildProcess.h"
#include "Observer.h"
#include "PrivateBus.h"
#include "PrivateXServer.h"
#include "TempDirectory.h"
#include "TrayClient.h"
#include "TrayHost.h"

#include <list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orrivane::e2e {

/// A tray application that has docked.
struct DockedClient {
    const TrayClient* kind = nullptr;
    ChildProcess process;
    xcb_window_t icon = 0;
};

/// Which session bus a tray application sees; without one it stays with XEmbed everywhere.
enum class BusAccess { session, none, asTheHostNeeds };

/// A whole desktop of its own: server, bus, window manager, tray, applications and the program.
/// What fails on the way up throws std::runtime_error with the logs.
class Desktop {
  public:
    struct Options {
        std::string host = "trayer"; ///< a name of trayHosts(); empty: no tray
        PrivateXServer::Options server;
        bool windowManager = true;
        std::string windowManagerConfig; ///< text of an rc.xml; empty: the installed one
        int trayRight = 0;               ///< pixels; 0: somewhat right of the middle
        int barHeight = 37;
    };

    explicit Desktop(const Options& options);
    /// After a failed test prints the logs, and saves the screen below ORRIVANE_E2E_ARTIFACTS.
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    Observer& observer() { return *observer_; }
    PrivateXServer& server() { return *server_; }
    PrivateBus& bus() { return *bus_; }
    ChildProcess& windowManager() { return *windowManager_; }
    ChildProcess& host() { return *host_; }
    const TrayHost& hostKind() const { return *hostKind_; }
    const Options& options() const { return options_; }
    const std::string& directory() const { return directory_.path(); }

    /// Stores a switch of the program's, at once also for a running one. Its own icon is switched
    /// off from the start: in most trays one icon more moves all the others.
    void setDefault(const std::string& key, bool value);

    /// For a program called `name`: a home folder of that name, this display, the session bus.
    Environment environment(const std::string& name) const;
    /// Starts any program; ended with the desktop.
    ChildProcess& start(const std::vector<std::string>& arguments, Environment environment);

    void startHost(const std::string& name);
    void stopHost();

    /// Returns when its icon is viewable and has come to rest.
    DockedClient& startClient(const std::string& name,
                              BusAccess access = BusAccess::asTheHostNeeds);
    std::list<DockedClient>& clients() { return clients_; }
    /// Icons of everybody but the program, left to right.
    std::vector<WindowState> foreignIcons();
    /// The same, once nothing in the tray has moved for a tenth of a second.
    std::vector<WindowState> settledIcons();

    /// Clicks the icon and returns the menu; button 0 is the one the application opens it with.
    WindowState openMenu(const DockedClient& client, std::uint8_t button = 0);
    void closeMenu(const WindowState& menu);
    /// The popups of the client that owns `window`.
    std::vector<WindowState> popupsOf(xcb_window_t window);

    /// Lays one cutout of the bar's height over the columns from `left` to `right`.
    PixelRect setCutout(int left, int right);
    /// A cutout that covers exactly these icons (indices into settledIcons()).
    PixelRect cutOutIcons(std::size_t first, std::size_t last);

    // The program
    /// ORRIVANE_PROGRAM of the environment, else of the build; throws when there is neither.
    static std::string programPath();
    std::string programHome() const { return directory_.path() + "/orrivane"; }
    ChildProcess& startProgram(const std::vector<std::string>& arguments = {},
                               const Environment& extra = {});
    ChildProcess& program() { return *program_; }
    /// Another launch beside it, with its output in a file; absent when that does not end.
    std::optional<ExitStatus> launchAgain(const std::vector<std::string>& arguments = {},
                                          const std::string& output = {});
    /// All top levels of the program's processes.
    std::vector<WindowState> programWindows();
    /// Its override-redirect window shown inside the cutout's band.
    std::optional<WindowState> strip();
    /// Waits until the strip shows; throws with the program's log when it does not.
    WindowState waitForStrip();

  private:
    void bringUp();
    void startWindowManager();
    void report();
    std::string logFor(const std::string& name);

    void writeDefaults();

    Options options_;
    TempDirectory directory_;
    std::optional<PrivateXServer> server_;
    std::optional<Observer> observer_;
    std::optional<PrivateBus> bus_;
    std::optional<ChildProcess> windowManager_;
    const TrayHost* hostKind_ = nullptr;
    std::optional<ChildProcess> host_;
    std::list<DockedClient> clients_;
    std::list<ChildProcess> others_;
    std::optional<ChildProcess> program_;
    std::map<std::string, bool> defaults_{{"OrrivaneShowStatusItem", false}};
    int logCount_ = 0;
};

/// The sentence to skip with when a program is not installed, else empty. Where
/// ORRIVANE_REQUIRE_DESKTOP is set a missing program is a failure (throws).
std::string missingPrograms(const std::vector<std::string>& programs);

} // namespace orrivane::e2e
