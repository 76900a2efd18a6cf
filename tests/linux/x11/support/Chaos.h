#pragma once

#include "FakeTray.h"

#include <tests/unit/Random.h>

#include <memory>
#include <vector>

namespace orrivane::x11 {

/// Several programs that change the window tree at random: applications, a tray, a window manager.
class Chaos {
  public:
    Chaos(const std::string& display, Random& random);

    /// One change; what the server refuses is no change.
    void step();

  private:
    struct Known {
        XClient* owner;
        xcb_window_t window;
    };
    [[nodiscard]] XClient& anyone();
    [[nodiscard]] Known* any();
    [[nodiscard]] xcb_window_t anyParent();
    [[nodiscard]] PixelRect area();
    void create();
    void destroy();
    void restructure(Known& known);
    void describe(Known& known);
    void change(Known& known);
    void moveTray();

    std::string display_;
    Random& random_;
    std::vector<std::unique_ptr<XClient>> clients_; // the window manager, the tray, the rest
    std::vector<Known> windows_;
};

/// The mirror in words, a line a window from the bottom up, for comparing two of them.
std::vector<std::string> inWords(const class WindowTree& tree, std::uint32_t root);

} // namespace orrivane::x11
