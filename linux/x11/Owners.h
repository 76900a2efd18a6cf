#pragma once

#include <linux/x11/StatusItems.h>
#include <linux/x11/TreeWindow.h>

#include <xcb/res.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace orrivane::x11 {

/// Which process a window belongs to, and what it calls itself.
struct WindowOwner {
    std::int32_t process = 0;        ///< 0 when the server does not know it
    std::optional<std::string> name; ///< WM_CLASS's class, else the process's name
};

/// Owners of windows, asked of the server once for each window: XRes, with _NET_WM_PID for clients
/// that the server does not know a process of.
class Owners {
  public:
    explicit Owners(Connection& connection)
        : connection_(connection) {}

    /// In the order of `windows`. All requests go out before the first reply is read.
    std::vector<WindowOwner> of(std::span<const StatusItem> items);
    /// Of a window that is no item, such as the dock.
    WindowOwner ofWindow(const TreeWindow& window);
    /// Of a window that the tree does not hold; asked anew each time.
    WindowOwner ofStranger(std::uint32_t window) { return ask({window}).front(); }
    /// The same of many, in their order; all requests go out first.
    std::vector<WindowOwner> ofStrangers(const std::vector<std::uint32_t>& windows) {
        return ask(windows);
    }

  private:
    struct Known {
        std::uint64_t serial;
        WindowOwner owner;
    };
    std::vector<WindowOwner> ask(const std::vector<std::uint32_t>& windows);
    [[nodiscard]] std::unordered_map<std::uint32_t, std::int32_t>
    processes(xcb_res_query_client_ids_cookie_t cookie, Deadline until);

    Connection& connection_;
    std::unordered_map<std::uint32_t, Known> known_;
    std::unordered_map<std::uint32_t, Known> others_; // no items
};

} // namespace orrivane::x11
