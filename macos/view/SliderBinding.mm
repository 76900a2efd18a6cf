#import <macos/view/Bindings.h>

#import <macos/view/ActionTarget.h>
#import <macos/view/ChildList.h>
#import <macos/view/RunAction.h>
#import <macos/view/TextField.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace orrivane {

namespace {

constexpr double gap = 8;
constexpr double leastTrack = 120;
constexpr double mostMarks = 50; // more could not be told apart

double steps(const Slider& slider) {
    const double count = std::round((slider.maximum - slider.minimum) / slider.step);
    return std::isfinite(count) && count >= 1 ? count : 1;
}

// A value that is no number stands at the low end.
double snapped(const Slider& slider, double value) {
    const double step = std::round((value - slider.minimum) / slider.step);
    return slider.minimum +
           (std::isfinite(step) ? std::clamp(step, 0.0, steps(slider)) : 0) * slider.step;
}

/// The system's slider between the labels of its ends, which it has no room for itself.
class SliderBinding : public Binding {
  public:
    explicit SliderBinding(const View& first)
        : Binding(first, [[ORVFlippedView alloc] initWithFrame:NSZeroRect])
        , label_([[ORVTextField alloc] initWrapping:NO])
        , low_([[ORVTextField alloc] initWrapping:NO])
        , slider_([NSSlider sliderWithValue:0 minValue:0 maxValue:1 target:nil action:nil])
        , high_([[ORVTextField alloc] initWrapping:NO]) {
        hideFromAccessibility(label_); // the slider's name already
        slider_.continuous = YES;
        for (NSView* each in @[ label_, low_, slider_, high_ ])
            [inner() addSubview:each];
        target_ = [ORVActionTarget targetOf:slider_
                                        run:^{
                                          moved();
                                        }];
    }

    bool fillsWidth() const override { return true; }
    void collectKeyViews(std::vector<NSView*>& views) const override { views.push_back(slider_); }

  protected:
    NSView* namedView() const override { return slider_; }
    std::string ownName() const override { return node_.label; }
    void apply(const View& next) override {
        forgetSizes();
        node_ = std::get<Slider>(next.node);
        [label_ showFont:roleFont(next.font, next.weight)];
        for (ORVTextField* end : {low_, high_})
            [end showFont:roleFont(FontRole::caption, FontWeight::regular)];
        [label_ showText:toNSString(node_.label)];
        [low_ showText:toNSString(node_.minimumLabel)];
        [high_ showText:toNSString(node_.maximumLabel)];
        slider_.enabled = isEnabled();
        showRange();
        showValue();
    }

    CGSize measureContent(CGFloat width) override {
        CGSize size{leastTrack, intrinsicSize(slider_).height};
        for (ORVTextField* field : labels()) {
            const auto own = [field sizeAtWidth:unboundedWidth];
            size.width += own.width > 0 ? own.width + gap : 0;
            size.height = std::max(size.height, own.height);
        }
        return {isUnbounded(width) ? size.width : std::max(size.width, width), size.height};
    }

    void placeContent(CGSize size) override {
        const double last = [high_ sizeAtWidth:unboundedWidth].width;
        double left = place(label_, 0, size.height);
        left = place(low_, left, size.height);
        const double right = last > 0 ? size.width - last : size.width;
        place(high_, right, size.height);
        const CGSize track{std::max(0.0, right - (last > 0 ? gap : 0) - left),
                           intrinsicSize(slider_).height};
        setAlignmentFrame(slider_, {{left, middle(size.height, track.height)}, track});
    }

  private:
    [[nodiscard]] std::array<ORVTextField*, 3> labels() const { return {label_, low_, high_}; }
    static double middle(double room, double length) {
        return alignedOffset(Alignment::center, Alignment::top, Alignment::bottom, room, length);
    }
    // Gives where what comes after it begins.
    static double place(ORVTextField* field, double left, double height) {
        const auto own = [field sizeAtWidth:unboundedWidth];
        setAlignmentFrame(field, {{left, middle(height, own.height)}, own});
        return own.width > 0 ? left + own.width + gap : left;
    }

    void showRange() {
        const double marks = steps(node_) + 1;
        slider_.minValue = node_.minimum;
        slider_.maxValue = node_.minimum + steps(node_) * node_.step;
        slider_.altIncrementValue = node_.step;
        const auto shown = marks <= mostMarks ? static_cast<NSInteger>(marks) : 0;
        if (slider_.numberOfTickMarks != shown)
            slider_.numberOfTickMarks = shown;
        slider_.allowsTickMarkValuesOnly = slider_.numberOfTickMarks > 0;
    }

    void showValue() {
        known_ = snapped(node_, node_.value);
        if (slider_.doubleValue != known_)
            slider_.doubleValue = known_;
    }

    void moved() {
        const double value = snapped(node_, slider_.doubleValue);
        unlessValueComes([this] { showValue(); });
        if (std::exchange(known_, value) != value)
            runAction(node_.changed, value); // comes last: it may replace this
    }

    Slider node_;
    double known_ = 0; // what was last shown or reported
    ORVTextField* label_;
    ORVTextField* low_;
    NSSlider* slider_;
    ORVTextField* high_;
    ORVActionTarget* target_;
};

} // namespace

std::unique_ptr<Binding> bindSlider(const View& view) {
    return std::make_unique<SliderBinding>(view);
}

} // namespace orrivane
