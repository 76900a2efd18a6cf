#pragma once

#include <Orrivane/platform/OwnWindows.h>
#include <Orrivane/platform/WindowList.h>

#include <linux/x11/Owners.h>
#include <linux/x11/StatusItems.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace orrivane::x11 {

/// The window list: tray icons, each as wide as its window and as high as the bar's band, and what
/// else lies directly on the root.
class X11WindowList : public WindowList {
  public:
    X11WindowList(Connection& connection, StatusItems& items)
        : connection_(connection)
        , items_(items) {}

    std::vector<WindowListEntry> allWindows() override { return items_.entries(); }
    std::vector<WindowListEntry> onscreenWindows() override {
        std::vector<WindowListEntry> result;
        for (const auto& entry : items_.entries())
            if (entry.onscreen.value_or(false))
                result.push_back(entry);
        return result;
    }
    std::vector<OwnedWindow> ownedWindows() override {
        const auto entries = items_.entries();
        std::vector<std::uint32_t> windows;
        for (const auto& entry : entries)
            windows.push_back(entry.number.value_or(0));
        const auto owners = Owners(connection_).ofStrangers(windows);
        std::vector<OwnedWindow> result;
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const auto& [process, name] = owners[i];
            result.push_back(
                {entries[i], process > 0 ? std::optional(process) : std::nullopt, name});
        }
        return result;
    }

  private:
    Connection& connection_;
    StatusItems& items_;
};

/// Windows of the port's and of the toolkit's connection, as far as they are docked or stand
/// directly below the root.
class X11OwnWindows : public OwnWindows {
  public:
    X11OwnWindows(StatusItems& items, WindowTree& tree)
        : items_(items)
        , tree_(tree) {}

    std::vector<std::int64_t> windowNumbers() override {
        items_.current();
        std::vector<std::int64_t> numbers;
        for (const auto& [id, window] : tree_.windows())
            if (items_.isOwn(id))
                numbers.push_back(id);
        return numbers;
    }
    bool mainViewWindowIsVisible() override {
        return isMainWindowVisible_ && isMainWindowVisible_();
    }
    /// The toolkit knows.
    void setMainWindow(std::function<bool()> isVisible) {
        isMainWindowVisible_ = std::move(isVisible);
    }

  private:
    StatusItems& items_;
    WindowTree& tree_;
    std::function<bool()> isMainWindowVisible_;
};

} // namespace orrivane::x11
