#pragma once

#include "ChildProcess.h"
#include "Observer.h"
#include "TempDirectory.h"

#include <optional>
#include <string>
#include <vector>

namespace orrivane::e2e {

/// A headless notched desktop of our own, up and complete when made, ended with this.
class NotchedDesktop {
  public:
    /// `arguments` of orrivane-desktop beside --headless, --config and --log. Throws
    /// std::runtime_error with its output when it does not say that it is ready.
    explicit NotchedDesktop(const std::vector<std::string>& arguments = {});
    ~NotchedDesktop();
    NotchedDesktop(const NotchedDesktop&) = delete;
    NotchedDesktop& operator=(const NotchedDesktop&) = delete;

    /// ORRIVANE_DESKTOP_SESSION of the build.
    static std::string sessionPath();

    Observer& observer() { return *observer_; }
    ChildProcess& session() { return *session_; }
    const std::string& display() const { return display_; }
    /// The folder that the desktop's user keeps preferences in.
    std::string configFolder() const { return folder_.path() + "/config"; }
    /// What was chosen in menus so far, a line each.
    std::string choices() const { return readFile(folder_.path() + "/choices"); }

    /// Processes below the session whose program file has this name, oldest first.
    std::vector<pid_t> processesOf(const std::string& program);
    /// The environment of the desktop's programs.
    Environment environment();

    /// Icons in the tray, left to right.
    std::vector<WindowState> icons() { return observer_->trayIcons(); }
    std::optional<WindowState> icon(const std::string& instanceName);

  private:
    TempDirectory folder_;
    std::optional<ChildProcess> session_;
    std::string display_;
    std::optional<Observer> observer_;
};

/// Every process that descends from `ancestor`.
std::vector<pid_t> descendants(pid_t ancestor);

} // namespace orrivane::e2e
