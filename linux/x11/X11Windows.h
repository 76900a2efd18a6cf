#pragma once

#include <Orrivane/platform/OwnWindows.h>
#include <Orrivane/platform/WindowList.h>

#include <linux/x11/StatusItems.h>

#include <functional>
#include <utility>

namespace orrivane::x11 {

/// The window list: tray icons, each as wide as its window and as high as the bar's band, and what
/// else lies directly on the root.
class X11WindowList : public WindowList {
  public:
    explicit X11WindowList(StatusItems& items)
        : items_(items) {}

    std::vector<WindowListEntry> allWindows() override { return items_.entries(); }
    std::vector<WindowListEntry> onscreenWindows() override {
        std::vector<WindowListEntry> result;
        for (const auto& entry : items_.entries())
            if (entry.onscreen.value_or(false))
                result.push_back(entry);
        return result;
    }

  private:
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
