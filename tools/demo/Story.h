#pragma once

#include "Witness.h"

#include <atomic>
#include <optional>
#include <string>

namespace orrivane::demo {

/// A notched desktop, and what becomes of its hidden icons once Orrivane runs. Every step is one
/// line on standard output that says what was done and what a second connection saw.
class Story {
  public:
    struct Options {
        std::string pictures;  ///< folder, made if missing, for a picture of every step
        bool sabotage = false; ///< the desktop does not tell where its notch is
    };

    explicit Story(Options options);

    /// Step by step; ends at the first that does not hold, or once `interrupted` is true. Returns
    /// true when all steps held. Leaves no process behind in either case.
    bool tell(const std::atomic<bool>& interrupted);

    /// The programs it is told with.
    static std::vector<std::string> programs();

  private:
    // Each returns what it did and saw, and throws where that is not what it should be.
    std::string openTheDesktop();
    std::string startOrrivane();
    std::string clickACell();
    std::string lookAtTheMenu();
    std::string chooseAnEntry();
    std::string bringALongMenu();
    std::string killAnApplication();
    std::string killTheBar();
    std::string sleepAndWake();
    std::string addAScreen();
    std::string endEverything();

    void open(const std::vector<std::string>& arguments);
    void run();
    void end();
    std::vector<e2e::WindowState> waitForStrip(const std::string& deed);
    void bringToFront(const std::string& className);
    void blank(bool blanked);
    void takePicture(const std::string& name);
    void takeLastPicture();

    Options options_;
    e2e::TempDirectory folder_;
    std::optional<e2e::NotchedDesktop> desktop_;
    std::optional<e2e::ChildProcess> program_;
    std::optional<Witness> witness_;
    std::vector<e2e::WindowState> mirrored_;
    e2e::WindowState menu_;
};

} // namespace orrivane::demo
