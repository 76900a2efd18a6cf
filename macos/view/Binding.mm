#import <macos/view/Binding.h>

#import <macos/view/RunAction.h>

#include <algorithm>
#include <cmath>

namespace orrivane {

namespace {

constexpr double disabledOpacity = 0.4;
constexpr std::size_t mostSizes = 8; // a window that is being resized asks at every width

bool needsBox(const View& view) {
    return view.background || view.padding != Insets();
}

} // namespace

Binding::Binding(const View& first, NSView* inner)
    : inner_(inner)
    , outer_(inner)
    , box_(nil)
    , kind_(first.node.index())
    , key_(first.key) {
    if (!needsBox(first))
        return;
    box_ = [[ORVBackgroundView alloc] initWithFrame:NSZeroRect];
    [box_ addSubview:inner];
    outer_ = box_;
}

Binding::~Binding() {
    // The view may be the one whose action leads here.
    CFAutorelease(CFBridgingRetain(outer_));
    [outer_ removeFromSuperview];
}

bool Binding::accepts(const View& next) const {
    return next.node.index() == kind_ && next.key == key_ && needsBox(next) == (box_ != nil);
}

void Binding::update(const View& next, bool enabled) {
    enabled_ = enabled && next.isEnabled;
    apply(next);
    applyModifiers(next);
}

void Binding::applyModifiers(const View& next) {
    NSView* named = namedView();
    if (named_ && named_ != named) {
        named_.toolTip = nil;
        named_.accessibilityLabel = nil;
        spokenName_.clear();
    }
    named_ = named;
    NSString* tooltip = next.tooltip.empty() ? nil : toNSString(next.tooltip);
    if (named.toolTip != tooltip && (!tooltip || ![named.toolTip isEqualToString:tooltip]))
        named.toolTip = tooltip;
    const auto name = next.accessibilityName.empty() ? ownName() : next.accessibilityName;
    if (std::exchange(spokenName_, name) != name)
        named.accessibilityLabel = name.empty() ? nil : toNSString(name);
    isVisible_ = next.isVisible;
    const bool hidden = !takesRoom();
    if (outer_.hidden != hidden)
        outer_.hidden = hidden;
    const double opacity = next.opacity * (dimsWhenDisabled() && !enabled_ ? disabledOpacity : 1);
    if (outer_.alphaValue != opacity)
        outer_.alphaValue = opacity;
    frame_ = next.frame;
    padding_ = next.padding;
    [box_ setBackground:next.background];
}

CGSize Binding::measure(CGFloat width) {
    const double across = padding_.leading + padding_.trailing;
    const double inside = std::max(0.0, frame_.width ? *frame_.width : width - across);
    auto known = std::ranges::find(sizes_, inside, &std::pair<CGFloat, CGSize>::first);
    if (known == sizes_.end()) {
        if (sizes_.size() >= mostSizes)
            sizes_.clear();
        sizes_.emplace_back(inside, measureContent(inside));
        known = sizes_.end() - 1;
    }
    auto size = known->second;
    if (frame_.width || (fillsWidth() && !isUnbounded(width)))
        size.width = inside;
    if (frame_.height)
        size.height = *frame_.height;
    return {size.width + across, size.height + padding_.top + padding_.bottom};
}

void Binding::place(CGRect rect) {
    if (box_) {
        box_.frame = rect;
        rect = CGRectMake(padding_.leading, padding_.top,
                          std::max(0.0, rect.size.width - padding_.leading - padding_.trailing),
                          std::max(0.0, rect.size.height - padding_.top - padding_.bottom));
    }
    setAlignmentFrame(inner_, rect);
    placeContent(rect.size);
}

void Binding::collectKeyViews(std::vector<NSView*>& views) const {
    if ([inner_ isKindOfClass:NSControl.class] && ![inner_ isKindOfClass:NSTextField.class])
        views.push_back(inner_);
}

void Binding::later(std::function<void()> work) {
    const std::weak_ptr<int> alive = alive_;
    onMainThread([alive, work = std::move(work)] {
        if (!alive.expired())
            work();
    });
}

void Binding::unlessValueComes(std::function<void()> putBack) {
    constexpr NSTimeInterval patience = 0.2; // seconds
    const std::weak_ptr<int> alive = alive_;
    const auto change = ++changes_;
    NSTimer* timer = [NSTimer timerWithTimeInterval:patience
                                            repeats:NO
                                              block:^(NSTimer*) {
                                                if (!alive.expired() && changes_ == change)
                                                    callOut(putBack);
                                              }];
    [NSRunLoop.mainRunLoop addTimer:timer forMode:NSRunLoopCommonModes];
}

void hideFromAccessibility(NSControl* control) {
    control.accessibilityElement = NO;
    control.cell.accessibilityElement = NO; // with some controls it is what is found
}

CGSize intrinsicSize(NSView* view) {
    const auto size = view.intrinsicContentSize;
    return {std::ceil(std::max(0.0, size.width)), std::ceil(std::max(0.0, size.height))};
}

void setAlignmentFrame(NSView* view, CGRect rect) {
    view.frame = [view frameForAlignmentRect:rect];
}

} // namespace orrivane
