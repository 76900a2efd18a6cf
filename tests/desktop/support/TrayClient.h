#pragma once

#include "ChildProcess.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace orrivane::e2e {

enum class Toolkit { gtk2, gtk3, qt5, qt6 };

/// An installed application with a tray icon; none needs hardware or a network.
struct TrayClient {
    std::string name;    ///< also its program
    std::string package; ///< Debian's name
    Toolkit toolkit = Toolkit::gtk3;
    std::string className;         ///< second half of the icon's WM_CLASS
    std::uint8_t menuButton = 1;   ///< opens a menu that Escape closes
    bool otherButtonOpens = false; ///< the other of 1 and 3 opens something as well
    /// Leaves XEmbed where the session bus has a StatusNotifierWatcher.
    bool prefersStatusNotifier = false;
    bool needsSessionBus = false;
    bool menuAtPointer = false;               ///< else the menu hangs at the icon
    std::map<std::string, std::string> files; ///< below the home folder

    /// Writes its files below environment["HOME"] and starts it.
    ChildProcess start(const Environment& environment, const std::string& logFile) const;
};

const std::vector<TrayClient>& trayClients();

/// Throws std::out_of_range for an unknown name.
const TrayClient& trayClient(const std::string& name);

} // namespace orrivane::e2e
