#pragma once

#include <Orrivane/IconIdentity.h>
#include <Orrivane/WindowCensus.h>

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace orrivane {

class GlobalPreferences;
struct Platform;

/// What a tick would see and do now, and why: for users who ask for help and for those who give it.
struct Diagnosis {
    struct Item {
        StatusItemWindow window;
        std::string application; ///< empty: nobody owns up to it
        std::int32_t process = 0;
        std::string reason; ///< why it is not mirrored; empty: it is

        friend bool operator==(const Item&, const Item&) = default;
    };

    std::string version;
    std::vector<ScreenDescription> screens;
    bool displayAsleep = false;
    std::optional<NotchInfo> notch;
    std::vector<Item> items;         ///< in menu-bar order
    std::optional<double> menuWidth; ///< points
    bool screenCaptureGranted = false;
    bool accessibilityTrusted = false;
    bool stripEnabled = false;
    bool mirrorOnExternal = false;
    std::optional<std::int64_t> spacing; ///< stored; preference units
    std::optional<std::int64_t> padding; ///< stored; preference units
    /// The running program, if that is another process; 0: unknown which.
    std::optional<std::int32_t> runningProcess;

    /// Asks the ports once. Captures nothing and presses nothing.
    /// Items of `runningProcess` count as the program's own.
    static Diagnosis take(const Platform& platform, GlobalPreferences& preferences,
                          std::optional<std::int32_t> runningProcess = std::nullopt);

    /// For people: one fact a line.
    [[nodiscard]] std::string text() const;
    /// For machines: one object, UTF-8, with the names of the fields.
    [[nodiscard]] std::string json() const;

    /// Why no icon at all is mirrored now; empty when nothing stands in the way.
    [[nodiscard]] std::string obstacle() const;

  private:
    void giveReasons(const std::set<std::int64_t>& ownNumbers);
};

} // namespace orrivane
