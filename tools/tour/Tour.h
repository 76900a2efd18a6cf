#pragma once

#include "FeedServer.h"
#include "Guide.h"

#include <atomic>
#include <optional>
#include <string>

namespace orrivane::tour {

/// Everything the program shows, the way a user comes to it: first start, popover, an update, the
/// window and its tools. Every step is one line on standard output.
class Tour {
  public:
    struct Options {
        std::string program;  ///< path of the build that takes its feed from the environment
        std::string pictures; ///< folder, made if missing
        bool dark = false;
    };

    explicit Tour(Options options);

    /// Step by step; ends at the first that does not hold, or once `interrupted` is true. Returns
    /// true when all steps held.
    bool go(const std::atomic<bool>& interrupted);

    /// The programs it needs.
    static std::vector<std::string> programs();

  private:
    // Each returns what it did and saw, and throws where that is not what it should be.
    std::string startForTheFirstTime();
    std::string openAndCloseThePopover();
    std::string openTheWindow();
    std::string findAnUpdate();
    std::string lookAtTheUpdate();
    std::string takeTheUpdate();
    std::string hideTheOwnIcon();
    std::string turnEverySwitch();
    std::string moveATile();
    std::string squeeze();
    std::string resetBothWays();
    std::string quit();

    [[noreturn]] static void fail(const std::string& sentence);
    void arrive(const std::vector<std::string>& desktop);
    void turn(const std::string& name, const std::function<bool()>& took);
    void answer(const std::string& button);
    void picture(const std::string& name);

    static constexpr const char* packageName = "orrivane_9.0_amd64.deb";

    Options options_;
    e2e::TempDirectory home_;
    FeedServer feed_;
    std::string package_;
    std::optional<Guide> guide_;
    std::map<std::string, int> widths_; ///< before the squeeze
    std::size_t hidden_ = 0;
    int pictures_ = 0;
};

} // namespace orrivane::tour
