#pragma once

#include <linux/x11/X11Platform.h>

#include <tests/support/VirtualLoop.h>

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>

namespace orrivane::bench {

/// The program's own reading of the window list, as a tick does it, on a connection of its own.
struct OwnRead {
    explicit OwnRead(const char* display)
        : connection(open(display)) {}

    /// How many entries the two lists have.
    std::size_t read() {
        return platform.windowList.allWindows().size() +
               platform.windowList.onscreenWindows().size();
    }

    VirtualLoop loop;
    std::unique_ptr<x11::Connection> connection;
    x11::X11Platform platform{*connection,
                              loop,
                              {.scale = 1,
                               .userCutout = x11::CutoutFile("/nonexistent"),
                               .toolkit = {},
                               .globalMenu = {}}};

  private:
    static std::unique_ptr<x11::Connection> open(const char* display) {
        std::string problem;
        auto connection = x11::Connection::open(display, problem);
        if (!connection)
            throw std::runtime_error(problem);
        return connection;
    }
};

} // namespace orrivane::bench
