#pragma once

#include "ClientWindow.h"

#include "ChildProcess.h"
#include "Observer.h"
#include "PrivateBus.h"
#include "PrivateXServer.h"
#include "TempDirectory.h"

#include <list>
#include <optional>
#include <string>
#include <vector>

namespace orrivane::e2e {

/// A screen of its own with nothing on it but the menu bar.
class BarStage {
  public:
    struct Options {
        int width = 1512; ///< pixels
        int height = 982;
        double scale = 1;
        bool dark = false;
        bool windowManager = false;
        bool accessible = false; ///< with a session bus, and telling assistive programs
        std::vector<PixelRect> cutouts{{663, 0, 185, 37}};
        std::string preferences; ///< text of the preference file
    };

    /// Returns when the bar is a tray.
    explicit BarStage(const Options& options);
    BarStage()
        : BarStage(Options{}) {}
    /// After a failed test prints the bar's log.
    ~BarStage();
    BarStage(const BarStage&) = delete;
    BarStage& operator=(const BarStage&) = delete;

    Observer& observer() { return *observer_; }
    const std::string& display() const { return server_->display(); }
    std::string log(const std::string& name) const { return folder_.path() + '/' + name + ".log"; }
    Environment environment(const std::string& name) const;
    /// Needs `accessible`.
    const std::string& busAddress() const { return bus_->address(); }

    ChildProcess& bar() { return *bar_; }
    /// With these preferences from now on. Returns when it is a tray.
    void startBar(const std::string& preferences = {});
    /// Returns when the server has noticed.
    void killBar();
    /// Makes and starts one without waiting for it.
    ChildProcess barProcess(const std::string& name, const std::vector<std::string>& arguments);

    /// The dock window.
    WindowState dock();
    /// The window inside it that the icons are in.
    WindowState tray();
    /// Windows in the tray that show, left to right, those left of the screen too.
    std::vector<WindowState> icons();
    std::vector<xcb_window_t> order();
    /// The places of the icons, left to right, once they are these many.
    std::vector<PixelRect> placesOf(std::size_t count);
    /// The notch's window; absent without one.
    std::optional<WindowState> notch();
    /// The window of the menus' titles.
    WindowState titles();

    /// An icon that has found its place in the tray.
    ClientWindow& addIcon(const std::string& name, int width);
    ClientWindow& addIcon(const ClientWindow::Options& options);
    std::list<ClientWindow>& windows() { return windows_; }

  private:
    Options options_;
    TempDirectory folder_;
    std::optional<PrivateXServer> server_;
    std::optional<Observer> observer_;
    std::optional<PrivateBus> bus_;
    std::optional<ChildProcess> windowManager_;
    std::optional<ChildProcess> bar_;
    std::list<ClientWindow> windows_;
};

} // namespace orrivane::e2e
