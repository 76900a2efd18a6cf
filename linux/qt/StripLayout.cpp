#include <linux/qt/StripLayout.h>

#include <algorithm>

namespace orrivane {

namespace {

Size naturalSize(const View& view) {
    if (const auto* button = std::get_if<Button>(&view.node))
        return button->label.size;
    const auto& stack = std::get<HorizontalStack>(view.node);
    Size size;
    for (const auto& child : stack.children) {
        const auto inner = naturalSize(child);
        if (&child != &stack.children.front())
            size.width += stack.spacing;
        size.width += inner.width;
        size.height = std::max(size.height, inner.height);
    }
    return size;
}

class Placer {
  public:
    explicit Placer(std::vector<LaidOutButton>& buttons)
        : buttons_(buttons) {}

    // Gives the right edge of what it placed.
    double place(const View& view, double left, double top, double height) {
        const auto size = naturalSize(view);
        const double ownTop = top + (height - size.height) / 2;
        if (const auto* button = std::get_if<Button>(&view.node)) {
            const CellId id{view.key, view.key == 0 ? buttons_.size() + 1 : 0};
            buttons_.push_back(
                {id, &view, button, left, ownTop, left + size.width, ownTop + size.height});
            return left + size.width;
        }
        const auto& stack = std::get<HorizontalStack>(view.node);
        double edge = left;
        for (const auto& child : stack.children) {
            if (&child != &stack.children.front())
                edge += stack.spacing;
            edge = place(child, edge, ownTop, size.height);
        }
        return edge;
    }

  private:
    std::vector<LaidOutButton>& buttons_;
};

} // namespace

std::vector<LaidOutButton> layOut(const View& root, const Size& size) {
    std::vector<LaidOutButton> buttons;
    const auto natural = naturalSize(root);
    Placer(buttons).place(root, (size.width - natural.width) / 2, 0, size.height);
    return buttons;
}

} // namespace orrivane
