#pragma once

#include "Witness.h"

#include <atomic>
#include <string>

namespace orrivane::demo {

/// A desktop on which a notch hides icons, and what becomes of it once Orrivane runs. Every step
/// is one line on standard output, that says what was done and what a second connection saw.
class Story {
  public:
    struct Options {
        std::string nestedIn;  ///< the display that shows it in a window; empty: nobody watches
        std::string pictures;  ///< folder, made if missing, for a picture of every step
        bool sabotage = false; ///< the desktop does not tell where its notch is
    };

    explicit Story(Options options);

    /// Step by step; ends at the first that does not hold, or once `interrupted` is true. Returns
    /// true when all steps held. Leaves no process behind in either case.
    bool tell(const std::atomic<bool>& interrupted);

    /// The programs it is told with.
    static std::vector<std::string> programs(const Options& options);

  private:
    // Each returns what it did and saw, and throws where that is not what it should be.
    std::string openTheDesktop();
    std::string layTheNotch();
    std::string startOrrivane();
    std::string clickACell();
    std::string lookAtTheMenu();
    std::string closeTheMenu();
    std::string killAnApplication();
    std::string endEverything();

    void end();
    void waitForRightStrip(const std::string& deed);
    void glideTo(const e2e::PixelPoint& place);
    void pause(int milliseconds) const;
    void takePicture(const std::string& name);
    void takeLastPicture();
    std::string programLog() const;

    Options options_;
    std::optional<e2e::Desktop> desktop_;
    std::optional<Witness> witness_;
    e2e::ChildProcess* program_ = nullptr;
    e2e::DockedClient* clicked_ = nullptr;
    e2e::WindowState menu_;
};

} // namespace orrivane::demo
