#include <linux/x11/Owners.h>

#include <algorithm>
#include <fstream>
#include <string_view>

namespace orrivane::x11 {

namespace {

constexpr std::uint32_t longestClass = 64; // 32-bit units
constexpr std::size_t mostOthers = 64;     // those that are gone stay until then

// WM_CLASS is two NUL-ended strings, the class second.
std::optional<std::string> classIn(const xcb_get_property_reply_t* reply) {
    if (!reply || reply->type == XCB_ATOM_NONE || reply->format != 8)
        return std::nullopt;
    const auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply));
    const std::string_view text(static_cast<const char*>(xcb_get_property_value(reply)), length);
    const auto instanceEnd = text.find('\0');
    if (instanceEnd == std::string_view::npos)
        return std::nullopt;
    const auto rest = text.substr(instanceEnd + 1);
    const auto name = rest.substr(0, rest.find('\0'));
    return name.empty() ? std::nullopt : std::optional(std::string(name));
}

std::int32_t cardinalIn(const xcb_get_property_reply_t* reply) {
    if (!reply || reply->format != 32 || xcb_get_property_value_length(reply) < 4)
        return 0;
    return *static_cast<const std::int32_t*>(xcb_get_property_value(reply));
}

std::optional<std::string> processName(std::int32_t process) {
    if (process < 1)
        return std::nullopt;
    std::ifstream file("/proc/" + std::to_string(process) + "/comm");
    std::string name;
    if (!std::getline(file, name) || name.empty())
        return std::nullopt;
    return name;
}

} // namespace

std::vector<WindowOwner> Owners::of(std::span<const StatusItem> items) {
    std::vector<std::uint32_t> unknown;
    std::unordered_map<std::uint32_t, Known> kept;
    for (const auto& item : items) {
        const auto found = known_.find(item.window);
        if (found != known_.end() && found->second.serial == item.serial)
            kept.insert(*found);
        else
            unknown.push_back(item.window);
    }
    known_ = std::move(kept);
    const auto answers = ask(unknown);
    std::vector<WindowOwner> owners;
    for (const auto& item : items) {
        const auto asked = std::ranges::find(unknown, item.window);
        if (asked == unknown.end()) {
            owners.push_back(known_.at(item.window).owner);
            continue;
        }
        owners.push_back(answers[static_cast<std::size_t>(asked - unknown.begin())]);
        // An owner that could not be read is asked for again.
        if (owners.back().process != 0)
            known_[item.window] = {item.serial, owners.back()};
    }
    return owners;
}

WindowOwner Owners::ofWindow(const TreeWindow& window) {
    const auto id = window.id;
    const auto serial = window.serial;
    if (const auto found = others_.find(id);
        found != others_.end() && found->second.serial == serial)
        return found->second.owner;
    auto owner = ask({id}).front();
    if (others_.size() >= mostOthers)
        others_.clear();
    if (owner.process != 0)
        others_.insert_or_assign(id, Known{serial, owner});
    return owner;
}

std::vector<WindowOwner> Owners::ask(const std::vector<std::uint32_t>& windows) {
    struct Asked {
        xcb_get_property_cookie_t windowClass;
        xcb_get_property_cookie_t process;
    };
    auto* raw = connection_.raw();
    std::vector<WindowOwner> owners(windows.size());
    if (windows.empty())
        return owners;
    std::vector<xcb_res_client_id_spec_t> specs;
    std::vector<Asked> asked;
    for (const auto window : windows) {
        specs.push_back({window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID});
        asked.push_back(
            {xcb_get_property(raw, 0, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, longestClass),
             xcb_get_property(raw, 0, window, connection_.atom(Atom::windowPid), XCB_ATOM_CARDINAL,
                              0, 1)});
    }
    const auto until = Connection::deadline();
    const auto ids =
        xcb_res_query_client_ids(raw, static_cast<std::uint32_t>(specs.size()), specs.data());
    std::vector<std::int32_t> claimed;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const auto windowClass =
            connection_.wait<xcb_get_property_reply_t>(asked[i].windowClass, until);
        const auto process = connection_.wait<xcb_get_property_reply_t>(asked[i].process, until);
        owners[i].name = classIn(windowClass.get());
        claimed.push_back(cardinalIn(process.get()));
    }
    const auto served = processes(ids, until);
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const auto found = served.find(connection_.clientOf(windows[i]));
        owners[i].process = found != served.end() ? found->second : claimed[i];
        if (!owners[i].name)
            owners[i].name = processName(owners[i].process);
    }
    return owners;
}

std::unordered_map<std::uint32_t, std::int32_t>
Owners::processes(xcb_res_query_client_ids_cookie_t cookie, Deadline until) {
    std::unordered_map<std::uint32_t, std::int32_t> result;
    const auto reply = connection_.wait<xcb_res_query_client_ids_reply_t>(cookie, until);
    if (!reply)
        return result;
    for (auto entry = xcb_res_query_client_ids_ids_iterator(reply.get()); entry.rem > 0;
         xcb_res_client_id_value_next(&entry))
        if ((entry.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0 &&
            xcb_res_client_id_value_value_length(entry.data) > 0)
            result[connection_.clientOf(entry.data->spec.client)] =
                static_cast<std::int32_t>(*xcb_res_client_id_value_value(entry.data));
    return result;
}

} // namespace orrivane::x11
