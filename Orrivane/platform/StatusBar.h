#pragma once

#include <Orrivane/view/Drawing.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace orrivane {

/// One item of the system's status bar; destroying it removes it from the bar.
class StatusItem {
  public:
    virtual ~StatusItem() = default;

    /// Some systems give an item no button; what needs one is then left out.
    [[nodiscard]] virtual bool hasButton() const = 0;
    virtual void setImage(const Drawing& image) = 0;
    virtual void setAction(std::function<void()> action) = 0;
    /// The numbers are the toolkit's own: 7 is the image leading, the title after it.
    virtual void setImagePosition(int position) = 0;
    virtual void setTitle(const std::string& title) = 0;
    virtual void setToolTip(const std::optional<std::string>& toolTip) = 0;
};

/// The system's status bar.
class StatusBar {
  public:
    virtual ~StatusBar() = default;

    /// `length` in points, -1 for as wide as the content. Never null.
    [[nodiscard]] virtual std::unique_ptr<StatusItem> createItem(double length) = 0;
};

} // namespace orrivane
