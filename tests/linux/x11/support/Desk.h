#pragma once

#include "FakeTray.h"
#include "XClient.h"

#include <linux/x11/X11Platform.h>
#include <tests/support/VirtualLoop.h>

#include <PrivateXServer.h>
#include <TempDirectory.h>
#include <WaitFor.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orrivane::x11 {

/// A display nobody else uses, an application on it, and the port as the program builds it, on a
/// virtual clock. Nothing of the port exists before `port()` or `open()` is called.
class DeskWorld {
  public:
    using Windows = std::vector<std::uint32_t>;

    explicit DeskWorld(std::vector<std::string> serverArguments = {})
        : DeskWorld(1512, 982, std::move(serverArguments)) {}
    DeskWorld(int width, int height, std::vector<std::string> serverArguments = {})
        : server({width, height, std::move(serverArguments)}, directory.path())
        , app(server.display()) {}

    Connection& open();
    X11Platform& port();
    WindowTree& tree() { return port().tree; }
    FakeTray& startTray(const PixelRect& dock = FakeTray::topBar) {
        return tray.emplace(server.display(), dock);
    }
    /// An icon of `app` in a socket of the tray's.
    std::uint32_t addIcon(const PixelRect& inside, const NewWindow& like = {}) {
        return tray->add(app, inside, like);
    }
    void setCutout(const std::vector<std::uint32_t>& numbers) {
        app.setNumbers(app.root(), "_ORRIVANE_DISPLAY_CUTOUT", numbers);
    }

    /// Everything the other clients did has reached the port's end of the wire.
    void settle();
    /// Lets the port take in what happened, and its loop run.
    void pump();
    /// The icons after everything that happened so far.
    Windows icons();
    /// Pumps until `holds`; false after a bound.
    [[nodiscard]] bool eventually(const std::function<bool()>& holds);

    [[nodiscard]] CutoutFile cutoutFile() const { return CutoutFile(directory.path() + "/notch"); }
    /// How many requests the port's connection has sent, `this` one included.
    unsigned requestsSent();

    e2e::TempDirectory directory;
    e2e::PrivateXServer server;
    XClient app;
    std::optional<FakeTray> tray;
    VirtualLoop loop;
    double scale = 1;
    std::string deviceTree = directory.path(); ///< in place of the kernel's
    X11Accessibility::GlobalMenu globalMenu;
    X11Workspace::Toolkit toolkit;

  private:
    std::unique_ptr<Connection> connection_;
    std::unique_ptr<X11Platform> port_;
};

/// The same as a test's fixture.
class Desk : public ::testing::Test, protected DeskWorld {
  protected:
    using DeskWorld::DeskWorld;
};

} // namespace orrivane::x11
