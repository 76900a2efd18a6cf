#import <macos/view/Bindings.h>

#import <macos/view/ChildList.h>

#include <algorithm>

namespace orrivane {

namespace {

class StackBinding : public Binding {
  public:
    explicit StackBinding(const View& first)
        : Binding(first, [[ORVFlippedView alloc] initWithFrame:NSZeroRect])
        , list_(inner(), axisOf(first), alignmentOf(first)) {}

    bool fillsWidth() const override { return Binding::fillsWidth() || list_.fillsWidth(); }
    bool fillsHeight() const override { return list_.fillsHeight(); }
    bool shrinks() const override { return list_.shrinks(); }
    void collectKeyViews(std::vector<NSView*>& views) const override {
        list_.collectKeyViews(views);
    }

  protected:
    void apply(const View& next) override {
        forgetSizes();
        if (const auto* row = std::get_if<HorizontalStack>(&next.node))
            return list_.update(row->children, row->spacing, isEnabled());
        const auto& column = std::get<VerticalStack>(next.node);
        list_.update(column.children, column.spacing, isEnabled());
    }
    CGSize measureContent(CGFloat width) override { return list_.measure(width); }
    void placeContent(CGSize size) override { list_.place(size); }

  private:
    static Axis axisOf(const View& view) {
        return std::holds_alternative<HorizontalStack>(view.node) ? Axis::horizontal
                                                                  : Axis::vertical;
    }
    static Alignment alignmentOf(const View& view) {
        const auto* row = std::get_if<HorizontalStack>(&view.node);
        return row ? row->alignment : std::get<VerticalStack>(view.node).alignment;
    }

    ChildList list_;
};

class OverlayBinding : public Binding {
  public:
    explicit OverlayBinding(const View& first)
        : Binding(first, [[ORVFlippedView alloc] initWithFrame:NSZeroRect]) {}

    bool fillsWidth() const override {
        return Binding::fillsWidth() || (!children_.empty() && children_.front()->fillsWidth());
    }
    bool shrinks() const override { return !children_.empty() && children_.front()->shrinks(); }
    void collectKeyViews(std::vector<NSView*>& views) const override {
        for (const auto& child : children_)
            if (child->takesRoom())
                child->collectKeyViews(views);
    }

  protected:
    void apply(const View& next) override {
        forgetSizes();
        const auto& overlay = std::get<Overlay>(next.node);
        alignment_ = overlay.alignment;
        children_.resize(overlay.children.size());
        for (std::size_t i = 0; i < children_.size(); ++i) {
            auto& child = children_[i];
            if (!child || !child->accepts(overlay.children[i])) {
                child = makeBinding(overlay.children[i], Axis::vertical);
                NSView* below = i == 0 ? nil : children_[i - 1]->view();
                [inner() addSubview:child->view()
                         positioned:below ? NSWindowAbove : NSWindowBelow
                         relativeTo:below];
            }
            child->update(overlay.children[i], isEnabled());
        }
    }

    CGSize measureContent(CGFloat width) override {
        return children_.empty() ? CGSizeZero : children_.front()->measure(width);
    }

    void placeContent(CGSize size) override {
        for (std::size_t i = 0; i < children_.size(); ++i) {
            const auto natural = children_[i]->measure(size.width);
            const CGSize own{std::min(natural.width, size.width), natural.height};
            if (i == 0)
                children_[i]->place({{0, 0}, size});
            else
                children_[i]->place({{alignedOffset(alignment_, Alignment::leading,
                                                    Alignment::trailing, size.width, own.width),
                                      alignedOffset(alignment_, Alignment::top, Alignment::bottom,
                                                    size.height, own.height)},
                                     own});
        }
    }

  private:
    Alignment alignment_ = Alignment::center;
    std::vector<std::unique_ptr<Binding>> children_;
};

class SpacerBinding : public Binding {
  public:
    SpacerBinding(const View& first, Axis axis)
        : Binding(first, [[ORVFlippedView alloc] initWithFrame:NSZeroRect])
        , axis_(axis) {}

    bool fillsWidth() const override { return axis_ == Axis::horizontal; }
    bool fillsHeight() const override { return axis_ == Axis::vertical; }

  protected:
    void apply(const View& next) override {
        forgetSizes();
        least_ = std::get<Spacer>(next.node).minimumLength;
    }
    CGSize measureContent(CGFloat) override {
        return axis_ == Axis::horizontal ? CGSizeMake(least_, 0) : CGSizeMake(0, least_);
    }

  private:
    Axis axis_;
    double least_ = 0;
};

} // namespace

std::unique_ptr<Binding> bindStack(const View& view) {
    return std::make_unique<StackBinding>(view);
}
std::unique_ptr<Binding> bindOverlay(const View& view) {
    return std::make_unique<OverlayBinding>(view);
}
std::unique_ptr<Binding> bindSpacer(const View& view, Axis axis) {
    return std::make_unique<SpacerBinding>(view, axis);
}

} // namespace orrivane
