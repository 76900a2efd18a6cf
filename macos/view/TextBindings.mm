#import <macos/view/Bindings.h>

#import <macos/view/TextField.h>

#include <algorithm>
#include <cmath>

namespace orrivane {

namespace {

constexpr double symbolGap = 5;

void setColor(NSTextField* field, ColorRole role) {
    NSColor* color = roleColor(role);
    if (![field.textColor isEqual:color])
        field.textColor = color;
}

class TextBinding : public Binding {
  public:
    explicit TextBinding(const View& first)
        : Binding(first, [[ORVTextField alloc] initWrapping:std::get<Text>(first.node).wraps]) {}

    bool shrinks() const override { return true; }

  protected:
    void apply(const View& next) override {
        setColor(field(), next.color);
        const bool newFont = [field() showFont:roleFont(next.font, next.weight)];
        if ([field() showText:toNSString(std::get<Text>(next.node).text)] || newFont)
            forgetSizes();
    }
    CGSize measureContent(CGFloat width) override { return [field() sizeAtWidth:width]; }

  private:
    [[nodiscard]] ORVTextField* field() const { return static_cast<ORVTextField*>(inner()); }
};

class LabelBinding : public Binding {
  public:
    explicit LabelBinding(const View& first)
        : Binding(first, [[ORVFlippedView alloc] initWithFrame:NSZeroRect])
        , symbol_([[NSImageView alloc] initWithFrame:NSZeroRect])
        , field_([[ORVTextField alloc] initWrapping:YES]) {
        [inner() addSubview:symbol_];
        [inner() addSubview:field_];
    }

    bool shrinks() const override { return field_.stringValue.length > 0; }

  protected:
    NSView* namedView() const override { return field_.hidden ? symbol_ : field_; }
    void apply(const View& next) override {
        const auto& node = std::get<Label>(next.node);
        setColor(field_, next.color);
        const bool newFont = [field_ showFont:roleFont(next.font, next.weight)];
        const bool newSymbol = name_ != node.symbol || newFont;
        if (newSymbol) {
            name_ = node.symbol;
            symbol_.image = roleSymbol(name_, field_.font);
        }
        symbol_.contentTintColor = roleColor(next.color);
        symbol_.hidden = symbol_.image == nil;
        if ([field_ showText:toNSString(node.text)] || newSymbol)
            forgetSizes();
        field_.hidden = node.text.empty();
        const bool speaks = node.text.empty() && !next.accessibilityName.empty();
        symbol_.accessibilityElement = symbol_.cell.accessibilityElement = speaks;
        inner().toolTip = next.tooltip.empty() ? nil : toNSString(next.tooltip);
    }

    CGSize measureContent(CGFloat width) override {
        const auto symbol = symbolSize();
        const auto text = [field_ sizeAtWidth:std::max(0.0, width - textLeft())];
        const double below = std::max(symbol.height, textTop() + text.height);
        return {text.width > 0 ? textLeft() + text.width : symbol.width, below};
    }

    void placeContent(CGSize size) override {
        const auto symbol = symbolSize();
        const double top = std::max(0.0, std::floor((lineHeight() - symbol.height) / 2));
        setAlignmentFrame(symbol_, {{0, top}, symbol});
        const double left = textLeft();
        setAlignmentFrame(field_, CGRectMake(left, textTop(), std::max(0.0, size.width - left),
                                             std::max(0.0, size.height - textTop())));
    }

  private:
    [[nodiscard]] CGSize symbolSize() const {
        return symbol_.image ? intrinsicSize(symbol_) : CGSizeZero;
    }
    [[nodiscard]] double lineHeight() const {
        NSFont* font = field_.font;
        return std::ceil(font.ascender - font.descender + font.leading);
    }
    [[nodiscard]] double textLeft() const {
        return symbol_.image ? symbolSize().width + symbolGap : 0;
    }
    // The first line stands beside the symbol's middle, whichever of them is higher.
    [[nodiscard]] double textTop() const {
        if (field_.stringValue.length == 0)
            return 0;
        return std::max(0.0, std::floor((symbolSize().height - lineHeight()) / 2));
    }

    SymbolName name_;
    NSImageView* symbol_;
    ORVTextField* field_;
};

} // namespace

std::unique_ptr<Binding> bindText(const View& view) {
    return std::make_unique<TextBinding>(view);
}
std::unique_ptr<Binding> bindLabel(const View& view) {
    return std::make_unique<LabelBinding>(view);
}

} // namespace orrivane
