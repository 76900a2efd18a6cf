#pragma once

#include <desktop/items/IconPen.h>
#include <desktop/items/ItemState.h>

#include <string>
#include <string_view>
#include <vector>

namespace orrivane::desktop {

struct MenuEntry {
    enum class Type {
        action,
        check,
        radio, ///< neighbours exclude each other
        section,
        separator,
        label, ///< says something, cannot be chosen
        restart,
        hang,
    };
    Type type = Type::action;
    std::string text;
    bool on = false;
};

using Menu = std::vector<MenuEntry>;

/// A status application.
struct StatusKind {
    enum class Rhythm { still, everySecond, everyMinute };
    using Drawing = void (*)(IconPen&, const ItemState&);

    std::string id;
    std::string name; ///< empty: the application has none
    double width = 0; ///< natural, points
    Rhythm rhythm = Rhythm::still;
    std::string pausedBy; ///< the check that stops its clock

    /// One icon each.
    struct Part {
        Drawing drawing = nullptr;
        Menu menu;
    };
    std::vector<Part> parts;
};

const std::vector<StatusKind>& statusKinds();
/// Null for an unknown id.
const StatusKind* statusKind(std::string_view id);

} // namespace orrivane::desktop
