#pragma once

#include <linux/hosts/HostRecord.h>
#include <linux/hosts/XfceTray.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrivane {

/// xfce4-panel: its tray plugin takes up changes of its settings at once. They are read and written
/// with xfconf-query, each call bounded. The user's settings are kept in a record; one that the
/// user has changed since is the user's and stays. Blocks: never on the main thread, and one
/// operation at a time.
class XfcePanelHost {
  public:
    /// Runs the tool with these words and gives its output; absent when it failed.
    using Query = std::function<std::optional<std::string>(const std::vector<std::string>&)>;

    explicit XfcePanelHost(HostRecord record, Query query = runQuery)
        : record_(std::move(record))
        , query_(std::move(query)) {}

    /// One sentence where the tool is missing; empty where it is not. Any thread, does not wait.
    static std::string limitation();

    /// Makes the icons of the plugin take `reduction` pixels less room than the user's settings.
    [[nodiscard]] Outcome apply(int plugin, int reduction,
                                const XfceTray::Measures& measures) const;
    /// Gives the user's settings back. After a failure the record stays.
    [[nodiscard]] Outcome reset() const;

    /// Puts the icon `moved` of `icons` where `toX` is. False when nothing was changed.
    [[nodiscard]] bool reorder(int plugin, const std::vector<XfceTray::Icon>& icons,
                               std::size_t moved, double toX) const;

    static std::optional<std::string> runQuery(const std::vector<std::string>& words);
    /// What the tool says of `plugin` when asked to list it; absent when it has no such tray.
    static std::optional<XfceTraySettings> parseSettings(std::string_view listing, int plugin);
    /// The values of an array as the tool prints them; absent when that is no array of lines.
    static std::optional<std::vector<std::string>> parseArray(std::string_view output);

  private:
    [[nodiscard]] std::optional<XfceTraySettings> settings(int plugin) const;
    [[nodiscard]] Outcome write(int plugin, const XfceTraySettings& from,
                                const XfceTraySettings& to) const;
    [[nodiscard]] Outcome giveBack(const HostRecord::Fields& fields) const;

    HostRecord record_;
    Query query_;
};

} // namespace orrivane
