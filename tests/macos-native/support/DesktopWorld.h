#pragma once

#import "Desktop.h"
#import "Pump.h"

#include <optional>
#include <string>
#include <utility>

namespace orrivane {

/// What the worlds of bodies with something on the screen share. `Body` is made only where there is
/// a desktop.
template <typename Body>
class DesktopWorld {
  public:
    DesktopWorld() {
        if (!why_)
            body_.emplace();
    }

    [[nodiscard]] std::optional<std::string> whyUnavailable() const { return why_; }
    template <typename Condition>
    bool pumpUntil(Condition condition) {
        return orrivane::pumpUntil(condition);
    }

  protected:
    Body& body() { return body_.value(); }

  private:
    std::optional<std::string> why_ = whyNoDesktop();
    std::optional<Body> body_;
};

} // namespace orrivane
