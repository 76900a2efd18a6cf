#pragma once

#include <Orrivane/platform/MainLoop.h>
#include <Orrivane/platform/Workspace.h>

#include <linux/x11/X11Screens.h>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>

namespace orrivane::x11 {

/// The system's notifications from X events, and from whoever hears of the machine's sleep.
class X11Workspace : public Workspace {
  public:
    /// What the toolkit does for the desktop.
    struct Toolkit {
        std::function<bool(std::string_view address)> open;
        std::function<void()> terminate;
        std::function<void()> activate;
    };

    X11Workspace(Connection& connection, MainLoop& loop, X11Screens& screens, Toolkit toolkit);

    Subscription observe(SystemNotification notification, std::function<void()> notified) override;
    bool open(std::string_view address) override { return toolkit_.open(address); }
    void setActivationPolicy(ActivationPolicy) override {} // each window says it to the desktop
    void terminate() override { toolkit_.terminate(); }
    void activate() override { toolkit_.activate(); }
    VersionStrings versionStrings() override;

    /// The window that has the focus; 0 without one or without a window manager that tells.
    [[nodiscard]] std::uint32_t activeWindow();
    /// The machine is about to sleep, or has just woken.
    void machineSleeps(bool goingToSleep);

    /// Screens change in bursts; they are announced when they have been quiet for this long.
    static constexpr double screenQuiet = 0.2; // seconds

  private:
    static constexpr std::size_t notificationCount = 6;

    void handle(const xcb_generic_event_t& event);
    void activeWindowMayHaveChanged();
    void screensMayHaveChanged();
    void announce(SystemNotification notification);
    [[nodiscard]] std::function<void()> later(void (X11Workspace::*handler)());

    Connection& connection_;
    MainLoop& loop_;
    Toolkit toolkit_;
    std::array<ObserverList<>, notificationCount> observers_;
    std::uint32_t activeWindow_ = 0;
    std::uint32_t activeClient_ = 0;
    bool activeKnown_ = false;
    bool checkPosted_ = false;
    Subscription screenTimer_;
    Subscription events_;
    Subscription screenChanges_;
    Subscription blanks_;
    std::shared_ptr<X11Workspace*> self_;
};

} // namespace orrivane::x11
