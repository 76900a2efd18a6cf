#import <macos/view/Bindings.h>

#import <macos/view/ActionTarget.h>
#import <macos/view/DrawnButton.h>
#import <macos/view/RunAction.h>

namespace orrivane {

namespace {

class PlainButtonBinding : public Binding {
  public:
    explicit PlainButtonBinding(const View& first)
        : Binding(first, [[ORVDrawnButton alloc] initWithFrame:NSZeroRect]) {
        button().takesKeyboard = YES;
    }

    void collectKeyViews(std::vector<NSView*>& views) const override { views.push_back(inner()); }

  protected:
    bool dimsWhenDisabled() const override { return true; }
    std::string ownName() const override { return name_; }
    void apply(const View& next) override {
        forgetSizes();
        const auto& node = std::get<Button>(next.node);
        name_ = node.title.empty() ? node.label.accessibilityName : node.title;
        [button() setDrawing:node.label];
        [button() setAction:node.action secondary:node.secondaryAction];
        button().enabled = isEnabled();
    }
    CGSize measureContent(CGFloat) override {
        const auto& size = [button() drawing].size;
        return {size.width, size.height};
    }

  private:
    [[nodiscard]] ORVDrawnButton* button() const { return static_cast<ORVDrawnButton*>(inner()); }

    std::string name_;
};

NSButton* makeButton(ButtonStyle style) {
    NSButton* button = [NSButton buttonWithTitle:@"" target:nil action:nil];
    if (style == ButtonStyle::borderless) {
        button.bordered = NO;
        [button setButtonType:NSButtonTypeMomentaryChange];
    }
    return button;
}

class ButtonBinding : public Binding {
  public:
    explicit ButtonBinding(const View& first)
        : Binding(first, makeButton(std::get<Button>(first.node).style)) {
        target_ = [ORVActionTarget targetOf:button()
                                        run:^{
                                          runAction(action_);
                                        }];
    }

  protected:
    std::string ownName() const override { return title_; }
    void apply(const View& next) override {
        const auto& node = std::get<Button>(next.node);
        action_ = node.action;
        button().enabled = isEnabled();
        NSFont* font = roleFont(next.font, next.weight);
        const bool newFont = ![button().font isEqual:font];
        if (newFont)
            button().font = font;
        button().contentTintColor = next.color == ColorRole::primary ? nil : roleColor(next.color);
        if (node.symbol != symbol_ || newFont) {
            symbol_ = node.symbol;
            button().image = roleSymbol(symbol_, font);
            forgetSizes();
        }
        title_ = node.title;
        showTitle(title_.empty() ? next.accessibilityName : title_);
    }
    CGSize measureContent(CGFloat) override { return intrinsicSize(button()); }

  private:
    [[nodiscard]] NSButton* button() const { return static_cast<NSButton*>(inner()); }

    // A symbol that this system does not know must not leave a button without anything on it.
    void showTitle(const std::string& fallback) {
        const bool hasSymbol = button().image != nil;
        NSString* title = toNSString(hasSymbol ? title_ : fallback);
        button().imagePosition = !hasSymbol       ? NSNoImage
                                 : title_.empty() ? NSImageOnly
                                                  : NSImageLeading;
        if ([button().title isEqualToString:title])
            return;
        button().title = title;
        forgetSizes();
    }

    ViewAction action_;
    SymbolName symbol_;
    std::string title_;
    ORVActionTarget* target_;
};

} // namespace

std::unique_ptr<Binding> bindButton(const View& view) {
    if (std::get<Button>(view.node).style == ButtonStyle::plain)
        return std::make_unique<PlainButtonBinding>(view);
    return std::make_unique<ButtonBinding>(view);
}

} // namespace orrivane
