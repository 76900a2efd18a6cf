#pragma once

#include <Orrivane/view/View.h>

#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

/// How tests read a screen: as a user would, by what is written on it.
namespace orrivane::reading {

template <typename Node>
concept HasChildren = requires(const Node& node) { node.children; };

inline std::span<const View> children(const View& view) {
    return std::visit(
        [](const auto& node) -> std::span<const View> {
            if constexpr (HasChildren<std::decay_t<decltype(node)>>)
                return node.children;
            else
                return {};
        },
        view.node);
}

/// The view and everything below it in reading order, also what is not shown.
inline void collect(const View& view, std::vector<const View*>& found) {
    found.push_back(&view);
    for (const auto& child : children(view))
        collect(child, found);
}
inline std::vector<const View*> everything(const View& root) {
    std::vector<const View*> found;
    collect(root, found);
    return found;
}

/// As above, without what is not visible and what a closed disclosure hides.
inline void collectShown(const View& view, std::vector<const View*>& found) {
    if (!view.isVisible)
        return;
    found.push_back(&view);
    const auto* disclosure = std::get_if<Disclosure>(&view.node);
    if (disclosure && !disclosure->isExpanded)
        return;
    for (const auto& child : children(view))
        collectShown(child, found);
}
inline std::vector<const View*> shown(const View& root) {
    std::vector<const View*> found;
    collectShown(root, found);
    return found;
}

/// The words of one node, its children's left out.
inline std::string words(const View& view) {
    return std::visit(
        [](const auto& node) -> std::string {
            if constexpr (requires { node.text; })
                return node.text;
            else if constexpr (requires { node.message; })
                return {}; // a dialog is no part of the screen under it
            else if constexpr (requires { node.title; })
                return node.title;
            else if constexpr (requires { node.label.empty(); })
                return node.label;
            else
                return {};
        },
        view.node);
}

/// Every text shown, in reading order.
inline std::vector<std::string> shownWords(const View& root) {
    std::vector<std::string> result;
    for (const auto* view : shown(root))
        if (auto text = words(*view); !text.empty())
            result.push_back(std::move(text));
    return result;
}

/// The one node of this kind with these words, shown or not; throws unless there is exactly one.
template <typename Node>
const View& only(const View& root, std::string_view text) {
    const View* match = nullptr;
    for (const auto* view : everything(root)) {
        if (!std::holds_alternative<Node>(view->node) || words(*view) != text)
            continue;
        if (match)
            throw std::runtime_error("more than one \"" + std::string(text) + "\"");
        match = view;
    }
    if (!match)
        throw std::runtime_error("no \"" + std::string(text) + "\"");
    return *match;
}
template <typename Node>
const Node& onlyNode(const View& root, std::string_view text) {
    return std::get<Node>(only<Node>(root, text).node);
}

/// Every node of this kind, in reading order, shown or not.
template <typename Node>
std::vector<const View*> all(const View& root) {
    std::vector<const View*> found;
    for (const auto* view : everything(root))
        if (std::holds_alternative<Node>(view->node))
            found.push_back(view);
    return found;
}

/// Whether the node with these words is on the screen.
template <typename Node>
bool isShown(const View& root, std::string_view text) {
    const auto* wanted = &only<Node>(root, text);
    for (const auto* view : shown(root))
        if (view == wanted)
            return true;
    return false;
}

// What they find lies in the screen they were given: it has to outlive the call.
std::vector<const View*> everything(View&&) = delete;
std::vector<const View*> shown(View&&) = delete;
template <typename Node>
std::vector<const View*> all(View&&) = delete;
template <typename Node>
const View& only(View&&, std::string_view) = delete;
template <typename Node>
const Node& onlyNode(View&&, std::string_view) = delete;

// What the user does. The actions are copied first: they may replace the screen.
inline void press(const View& root, std::string_view title) {
    const auto run = onlyNode<Button>(root, title).action.run;
    run();
}
inline void flip(const View& root, std::string_view label, bool on) {
    const auto run = onlyNode<Switch>(root, label).changed.run;
    run(on);
}

} // namespace orrivane::reading
