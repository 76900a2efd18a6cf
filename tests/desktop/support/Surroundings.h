#pragma once

#include "ChildProcess.h"

#include <string>

namespace orrivane::e2e {

/// Only what every program needs: PATH, a locale, and what sanitizers and coverage read.
Environment plainEnvironment();

/// For a graphical program on `display` with the private `home` (made if missing): XDG folders
/// inside it, `runtimeDirectory` shared by the session, no accessibility bridge, settings in
/// files, and no session bus.
Environment graphicalEnvironment(const std::string& display, const std::string& home,
                                 const std::string& runtimeDirectory);

/// Makes a program find `address` as its session bus. An empty address means one that refuses,
/// which is how a tray application is kept from status-notifier hosts.
void setSessionBus(Environment& environment, const std::string& address);

} // namespace orrivane::e2e
