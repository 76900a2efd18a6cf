#pragma once

#include "Desk.h"
#include "RandR.h"
#include "TrayProcess.h"

#include <Observer.h>

#include <chrono>
#include <memory>
#include <vector>

namespace orrivane::x11 {

/// What the real ports' contract suites can do to their surroundings: a display with a tray.
class ContractWorld : public DeskWorld {
  public:
    ContractWorld();

    template <typename Predicate>
    bool pumpUntil(Predicate holds) {
        return bool(e2e::waitFor("the contract's condition", [&] {
            pump();
            loop.advance(0.05);
            return holds();
        }));
    }
    double elapsed();

    // Windows
    WindowList& list() { return port().windowList; }
    std::uint32_t addStatusItem() { return openWindow({24, 22}); }
    std::uint32_t addOrdinaryWindow();
    Rect frameOf(std::uint32_t number);
    /// Under another program's window.
    bool hide(std::uint32_t number);
    void remove(std::uint32_t number) { app.destroy(number); }

    // Pictures
    ScreenCapture& capture() { return port().capture; }
    std::uint32_t openWindow(Size points);
    void closeWindow(std::uint32_t id) { app.destroy(id); }
    bool setAccess(bool) { return false; }

    // Screens
    Screens& screens() { return port().screens; }
    bool attachPlain();
    bool attachNotched();
    bool attachTwo();
    bool detachAll() { return false; }
    bool setDisplayAsleep(bool asleep);

    // Processes
    Accessibility& accessibility() { return port().accessibility; }
    std::int32_t launch(const std::string& name);
    void quit(std::int32_t pid) { process(pid).process().kill(); }
    bool hang(std::int32_t pid);
    int presses(std::int32_t pid) { return process(pid).presses(1); }
    Rect itemFrame(std::int32_t pid);
    bool makeFrontmost(std::int32_t pid);
    bool setTrusted(bool) { return false; }

    // The system
    Workspace& workspace() { return port().workspace; }
    bool cause(SystemNotification notification);
    bool open(std::string_view address) { return workspace().open(address); }
    [[nodiscard]] bool terminated() const { return terminated_; }

  private:
    TrayProcess& process(std::int32_t pid);
    void activate(xcb_window_t window);

    e2e::Observer eyes_;
    std::vector<std::unique_ptr<XClient>> others_;
    std::vector<std::unique_ptr<TrayProcess>> processes_;
    int nextX_ = 1400;
    int changes_ = 0;
    bool terminated_ = false;
};

} // namespace orrivane::x11
