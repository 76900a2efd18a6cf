#pragma once

#include <Orrivane/view/View.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

/// What several sections of the main view are put together from.
namespace orrivane::parts {

inline View caption(std::string text) {
    return {
        .node = Text{std::move(text)}, .font = FontRole::caption, .color = ColorRole::secondary};
}

/// A symbol without words, for the eye only.
inline View symbol(SymbolName name, ColorRole color) {
    return {.node = Label{"", std::move(name)}, .color = color};
}

inline View button(std::string title, std::function<void()> action) {
    return {.node = Button{.style = ButtonStyle::bordered,
                           .action = {std::move(action)},
                           .title = std::move(title)}};
}

inline View toggle(std::string label, bool isOn, std::function<void(bool)> changed) {
    return {.node = Switch{std::move(label), isOn, {std::move(changed)}}};
}

/// As wide as the place.
inline View row(std::vector<View> children, Alignment alignment = Alignment::center) {
    return {.node = HorizontalStack{8, alignment, std::move(children)},
            .frame = {.fillsWidth = true}};
}

inline View column(std::vector<View> children) {
    return {.node = VerticalStack{8, Alignment::leading, std::move(children)},
            .frame = {.fillsWidth = true}};
}

inline View section(std::string title, std::vector<View> children) {
    return {.node = GroupBox{std::move(title), 8, std::move(children)},
            .frame = {.fillsWidth = true}};
}

} // namespace orrivane::parts
