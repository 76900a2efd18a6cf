#pragma once

#include "ChildProcess.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace orrivane::e2e {

/// Where a host shall draw its bar: along the top edge, over the whole width where it can.
struct HostPlace {
    int screenWidth = 0; ///< pixels
    int barHeight = 37;
    int trayRight = 0; ///< where the tray ends, if the host can be told
};

/// An installed program that is a system tray.
struct TrayHost {
    std::string name;                  ///< also its program
    std::string package;               ///< Debian's name
    bool takesStatusNotifiers = false; ///< runs a StatusNotifierWatcher
    bool growsRightwards = false;      ///< a new icon stands right of the older ones
    bool obeysTrayRight = true;
    std::vector<std::string> arguments; ///< "$HOME" is replaced
    /// Files below the home folder, written before the start.
    std::function<std::map<std::string, std::string>(const HostPlace&)> files;
    std::function<std::vector<std::string>(const HostPlace&)> placeArguments;

    /// Writes its files below environment["HOME"] and starts it.
    ChildProcess start(const HostPlace& place, const Environment& environment,
                       const std::string& logFile) const;
};

const std::vector<TrayHost>& trayHosts();

/// Throws std::out_of_range for an unknown name.
const TrayHost& trayHost(const std::string& name);

/// Replaces every "$HOME" in `text`.
std::string withHome(std::string text, const std::string& home);

} // namespace orrivane::e2e
