#import <macos/view/Bindings.h>

#import <macos/view/ActionTarget.h>
#import <macos/view/ChildList.h>
#import <macos/view/RunAction.h>
#import <macos/view/TextField.h>

#include <algorithm>

namespace orrivane {

namespace {

constexpr double labelGap = 8;

/// The system's switch with its label after it, which it has no room for itself.
class SwitchBinding : public Binding {
  public:
    explicit SwitchBinding(const View& first)
        : Binding(first, [[ORVFlippedView alloc] initWithFrame:NSZeroRect])
        , switch_([[NSSwitch alloc] initWithFrame:NSZeroRect])
        , label_([[ORVTextField alloc] initWrapping:YES]) {
        switch_.controlSize = NSControlSizeSmall;
        hideFromAccessibility(label_); // the switch's name already
        [inner() addSubview:switch_];
        [inner() addSubview:label_];
        target_ = [ORVActionTarget targetOf:switch_
                                        run:^{
                                          toggled();
                                        }];
    }

    bool shrinks() const override { return true; }
    void collectKeyViews(std::vector<NSView*>& views) const override { views.push_back(switch_); }

  protected:
    NSView* namedView() const override { return switch_; }
    std::string ownName() const override { return text_; }
    void apply(const View& next) override {
        const auto& node = std::get<Switch>(next.node);
        text_ = node.label;
        changed_ = node.changed;
        isOn_ = node.isOn;
        showState();
        switch_.enabled = isEnabled();
        const bool newFont = [label_ showFont:roleFont(next.font, next.weight)];
        if ([label_ showText:toNSString(text_)] || newFont)
            forgetSizes();
        label_.textColor = isEnabled() ? roleColor(next.color) : NSColor.disabledControlTextColor;
        label_.toolTip = next.tooltip.empty() ? nil : toNSString(next.tooltip);
    }

    CGSize measureContent(CGFloat width) override {
        const auto own = intrinsicSize(switch_);
        const auto label = labelSize(width);
        const double gap = label.width > 0 ? labelGap : 0;
        return {own.width + gap + label.width, std::max(own.height, label.height)};
    }

    void placeContent(CGSize size) override {
        const auto own = intrinsicSize(switch_);
        const auto label = labelSize(size.width);
        const auto place = [&](NSView* view, double left, CGSize part) {
            const double top = alignedOffset(Alignment::center, Alignment::top, Alignment::bottom,
                                             size.height, part.height);
            setAlignmentFrame(view, {{left, top}, part});
        };
        place(switch_, 0, own);
        place(label_, own.width + labelGap, label);
    }

  private:
    [[nodiscard]] CGSize labelSize(CGFloat width) const {
        const double before = intrinsicSize(switch_).width + labelGap;
        return [label_ sizeAtWidth:std::max(0.0, width - before)];
    }

    void showState() {
        const auto state = isOn_ ? NSControlStateValueOn : NSControlStateValueOff;
        if (switch_.state != state)
            switch_.state = state;
    }

    void toggled() {
        unlessValueComes([this] { showState(); });
        runAction(changed_,
                  switch_.state != NSControlStateValueOff); // comes last: may replace this
    }

    std::string text_;
    bool isOn_ = false;
    ValueAction<bool> changed_;
    NSSwitch* switch_;
    ORVTextField* label_;
    ORVActionTarget* target_;
};

class SpinnerBinding : public Binding {
  public:
    explicit SpinnerBinding(const View& first)
        : Binding(first, [[NSProgressIndicator alloc] initWithFrame:NSZeroRect]) {
        spinner().style = NSProgressIndicatorStyleSpinning;
        spinner().controlSize = NSControlSizeSmall;
        spinner().indeterminate = YES;
        spinner().displayedWhenStopped = NO;
    }

  protected:
    void apply(const View& next) override {
        if (next.isVisible)
            [spinner() startAnimation:nil];
        else
            [spinner() stopAnimation:nil];
    }
    CGSize measureContent(CGFloat) override { return intrinsicSize(spinner()); }

  private:
    [[nodiscard]] NSProgressIndicator* spinner() const {
        return static_cast<NSProgressIndicator*>(inner());
    }
};

class CanvasBinding : public Binding {
  public:
    explicit CanvasBinding(const View& first)
        : Binding(first, [[ORVCanvasView alloc] initWithFrame:NSZeroRect]) {}

    bool fillsWidth() const override { return Binding::fillsWidth() || !width_; }
    bool shrinks() const override { return !width_; }
    void collectKeyViews(std::vector<NSView*>&) const override {}

  protected:
    void apply(const View& next) override {
        const auto& canvas = std::get<Canvas>(next.node);
        forgetSizes();
        width_ = canvas.width;
        height_ = canvas.height;
        [static_cast<ORVCanvasView*>(inner()) setContent:canvas.content];
        const bool named = !next.accessibilityName.empty();
        inner().accessibilityElement = named;
        inner().accessibilityRole = named ? NSAccessibilityImageRole : NSAccessibilityUnknownRole;
    }
    CGSize measureContent(CGFloat width) override {
        constexpr CGFloat leastUsefulWidth = 200;
        return {width_ ? *width_ : std::min(leastUsefulWidth, width), height_};
    }

  private:
    std::optional<double> width_;
    double height_ = 0;
};

} // namespace

std::unique_ptr<Binding> bindSwitch(const View& view) {
    return std::make_unique<SwitchBinding>(view);
}
std::unique_ptr<Binding> bindSpinner(const View& view) {
    return std::make_unique<SpinnerBinding>(view);
}
std::unique_ptr<Binding> bindCanvas(const View& view) {
    return std::make_unique<CanvasBinding>(view);
}

} // namespace orrivane
