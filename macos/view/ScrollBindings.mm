#import <macos/view/Bindings.h>

#import <macos/view/ChildList.h>
#import <macos/view/RunAction.h>

#include <algorithm>
#include <cmath>

/// A row leaves it to the page around it to scroll up and down.
@interface ORVRowScrollView : NSScrollView
@end

@implementation ORVRowScrollView {
    BOOL _leavesGesture; // to the page
}

// A gesture has one receiver from its beginning to the end of its momentum, wherever it turns: one
// that hears only a part of it stays pulled beyond its edge.
- (void)scrollWheel:(NSEvent*)event {
    const bool isWheel = event.phase == NSEventPhaseNone && event.momentumPhase == NSEventPhaseNone;
    if (isWheel || event.phase == NSEventPhaseBegan)
        _leavesGesture = std::abs(event.scrollingDeltaY) >= std::abs(event.scrollingDeltaX);
    // Fingers that only rest have no direction yet.
    const bool isUndecided =
        event.phase == NSEventPhaseMayBegin || event.phase == NSEventPhaseCancelled;
    if (isUndecided || _leavesGesture)
        [self.nextResponder scrollWheel:event];
    if (isUndecided || !_leavesGesture)
        [super scrollWheel:event];
}

@end

namespace orrivane {

namespace {

template <typename ScrollView>
ScrollView* makeScrollView(Axis axis) {
    ScrollView* scroll = [[ScrollView alloc] initWithFrame:NSZeroRect];
    scroll.drawsBackground = NO;
    scroll.borderType = NSNoBorder;
    scroll.automaticallyAdjustsContentInsets = NO;
    scroll.autohidesScrollers = YES;
    scroll.hasVerticalScroller = axis == Axis::vertical;
    scroll.hasHorizontalScroller = axis == Axis::horizontal;
    scroll.verticalScrollElasticity =
        axis == Axis::vertical ? NSScrollElasticityAutomatic : NSScrollElasticityNone;
    scroll.horizontalScrollElasticity =
        axis == Axis::horizontal ? NSScrollElasticityAutomatic : NSScrollElasticityNone;
    scroll.documentView = [[ORVFlippedView alloc] initWithFrame:NSZeroRect];
    return scroll;
}

/// What a scroller takes away that does not lie over the content, points.
CGSize scrollerRoom() {
    constexpr CGSize some{1000, 1000};
    const auto left = [NSScrollView contentSizeForFrameSize:some
                                    horizontalScrollerClass:NSScroller.class
                                      verticalScrollerClass:NSScroller.class
                                                 borderType:NSNoBorder
                                                controlSize:NSControlSizeRegular
                                              scrollerStyle:NSScroller.preferredScrollerStyle];
    return {some.width - left.width, some.height - left.height};
}

// A scroll view may hear later than this that the user's preference has changed.
void setUp(NSScrollView* scroll, CGSize content) {
    if (scroll.scrollerStyle != NSScroller.preferredScrollerStyle)
        scroll.scrollerStyle = NSScroller.preferredScrollerStyle;
    scroll.documentView.frame = {{0, 0}, content};
}

class VerticalScrollBinding : public Binding {
  public:
    explicit VerticalScrollBinding(const View& first)
        : Binding(first, makeScrollView<NSScrollView>(Axis::vertical))
        , list_(scroll().documentView, Axis::vertical, Alignment::leading) {}

    bool fillsWidth() const override { return true; }
    bool fillsHeight() const override { return true; }
    bool shrinks() const override { return true; }
    void collectKeyViews(std::vector<NSView*>& views) const override {
        list_.collectKeyViews(views);
    }

  protected:
    void apply(const View& next) override {
        forgetSizes();
        const auto& node = std::get<VerticalScroll>(next.node);
        changed_ = node.contentHeightChanged;
        list_.update(node.children, node.spacing, isEnabled());
    }

    CGSize measureContent(CGFloat width) override { return list_.measure(width); }

    void placeContent(CGSize size) override {
        const double natural = list_.measure(size.width).height;
        CGSize content{size.width, natural};
        if (natural > size.height) {
            content.width = std::max(0.0, size.width - scrollerRoom().width);
            content.height = list_.measure(content.width).height;
        }
        setUp(scroll(), content);
        list_.place(content);
        if (size.width > 0)
            report(natural);
    }

  private:
    [[nodiscard]] NSScrollView* scroll() const { return static_cast<NSScrollView*>(inner()); }

    // Later: whoever hears of it resizes the window, which lays out again. Not while the user does:
    // the two would pull at one edge, and after the last layout of that comes one more.
    void report(double height) {
        natural_ = height;
        if (natural_ == reported_)
            return;
        later([this] {
            if (!inner().inLiveResize && std::exchange(reported_, natural_) != natural_)
                runAction(changed_, natural_);
        });
    }

    ChildList list_;
    ValueAction<double> changed_;
    double natural_ = -1;
    double reported_ = -1;
};

class HorizontalScrollBinding : public Binding {
  public:
    explicit HorizontalScrollBinding(const View& first)
        : Binding(first, makeScrollView<ORVRowScrollView>(Axis::horizontal))
        , list_(scroll().documentView, Axis::horizontal, Alignment::center) {}

    bool fillsWidth() const override { return true; }
    bool shrinks() const override { return true; }
    void collectKeyViews(std::vector<NSView*>& views) const override {
        list_.collectKeyViews(views);
    }

  protected:
    void apply(const View& next) override {
        forgetSizes();
        const auto& node = std::get<HorizontalScroll>(next.node);
        list_.update(node.children, node.spacing, isEnabled());
    }

    CGSize measureContent(CGFloat width) override {
        auto size = list_.measure(unboundedWidth);
        if (size.width > width)
            size.height += scrollerRoom().height;
        return size;
    }

    void placeContent(CGSize) override {
        const auto content = list_.measure(unboundedWidth);
        setUp(scroll(), content);
        list_.place(content);
    }

  private:
    [[nodiscard]] NSScrollView* scroll() const { return static_cast<NSScrollView*>(inner()); }

    ChildList list_;
};

} // namespace

std::unique_ptr<Binding> bindVerticalScroll(const View& view) {
    return std::make_unique<VerticalScrollBinding>(view);
}
std::unique_ptr<Binding> bindHorizontalScroll(const View& view) {
    return std::make_unique<HorizontalScrollBinding>(view);
}

} // namespace orrivane
