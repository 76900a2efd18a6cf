#pragma once

#include <linux/x11/Connection.h>

#include <optional>
#include <string>

namespace orrivane::x11 {

/// Whether the session is one that the program can work in. Sentences say why not and what to do.
struct SessionCheck {
    /// From the environment alone; absent when there is an X display to try.
    static std::optional<std::string> problemOfEnvironment();
    /// A server that only translates for Wayland: it shows no tray and lets nobody press in it.
    static bool isXwayland(Connection& connection);
    static std::string waylandSentence();
};

} // namespace orrivane::x11
