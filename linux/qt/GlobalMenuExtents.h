#pragma once

#include <linux/qt/AccessibilityBus.h>
#include <linux/support/PixelRect.h>

#include <sys/types.h>

#include <functional>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace orrivane {

/// Where the menus of a global menu bar end, as the process that draws them tells assistive
/// programs.
class GlobalMenuExtents {
  public:
    /// `session` is the session bus; absent: the user's, connected to with the first question.
    /// `clock` gives monotonic seconds; empty: the system's.
    explicit GlobalMenuExtents(std::optional<QDBusConnection> session = std::nullopt,
                               std::function<double()> clock = {});

    /// The right edge, in root pixels, of the last menu that `process` shows in a menu bar inside
    /// `band`. Absent: there is none, or nobody told in 0.3 s; then nobody is asked for 5 s.
    std::optional<int> rightEdge(pid_t process, PixelRect band);

  private:
    struct Node {
        QString service;
        QString path;
    };
    struct MenuBar {
        Node node;
        std::vector<Node> children;
    };

    std::optional<int> search(pid_t process, const PixelRect& band);
    [[nodiscard]] std::vector<Node> applications(pid_t process);
    /// The menu bars among `level`, which becomes the level below the others.
    [[nodiscard]] std::vector<MenuBar> takeMenuBars(std::vector<Node>& level);
    [[nodiscard]] std::optional<int> lastMenu(const MenuBar& bar, const PixelRect& band);
    std::vector<QDBusMessage> ask(const std::vector<QDBusMessage>& calls);

    static QDBusMessage message(const Node& node, const char* interface, const char* method);
    static std::vector<Node> nodes(const QDBusMessage& reply);

    AccessibilityBus bus_;
    std::function<double()> clock_;
    QDeadlineTimer deadline_;
    double silentUntil_ = 0; // the clock's seconds
    std::map<QString, uint> processes_;
};

} // namespace orrivane
