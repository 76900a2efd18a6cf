#import <macos/view/Bindings.h>

#import <macos/view/ActionTarget.h>
#import <macos/view/ChildList.h>
#import <macos/view/RunAction.h>
#import <macos/view/TextField.h>

#include <algorithm>

namespace orrivane {

namespace {

constexpr double headingGap = 6;
constexpr double cardPadding = 12;
constexpr double disclosureGap = 8;
constexpr double triangleGap = 2;

ORVFlippedView* makePlace() {
    return [[ORVFlippedView alloc] initWithFrame:NSZeroRect];
}

/// The system's box below a heading, with the children over it: the box's own title and margins
/// could not be measured before it is shown.
class GroupBoxBinding : public Binding {
  public:
    explicit GroupBoxBinding(const View& first)
        : Binding(first, makePlace())
        , heading_([[ORVTextField alloc] initWrapping:NO])
        , card_([[NSBox alloc] initWithFrame:NSZeroRect])
        , content_(makePlace())
        , list_(content_, Axis::vertical, Alignment::leading) {
        card_.boxType = NSBoxPrimary;
        card_.titlePosition = NSNoTitle;
        card_.accessibilityElement = NO;
        heading_.font = roleFont(FontRole::headline, FontWeight::regular);
        hideFromAccessibility(heading_); // the group's name already
        for (NSView* each in @[ heading_, card_, content_ ])
            [inner() addSubview:each];
        inner().accessibilityElement = YES;
        inner().accessibilityRole = NSAccessibilityGroupRole;
    }

    bool fillsWidth() const override { return true; }
    bool shrinks() const override { return true; }
    void collectKeyViews(std::vector<NSView*>& views) const override {
        list_.collectKeyViews(views);
    }

  protected:
    std::string ownName() const override { return title_; }
    void apply(const View& next) override {
        forgetSizes();
        const auto& box = std::get<GroupBox>(next.node);
        title_ = box.title;
        [heading_ showText:toNSString(title_)];
        heading_.hidden = title_.empty();
        list_.update(box.children, box.spacing, isEnabled());
    }

    CGSize measureContent(CGFloat width) override {
        const auto content = list_.measure(std::max(0.0, width - 2 * cardPadding));
        return {content.width + 2 * cardPadding, cardTop() + content.height + 2 * cardPadding};
    }

    void placeContent(CGSize size) override {
        const double top = cardTop();
        setAlignmentFrame(heading_, CGRectMake(0, 0, size.width, std::max(0.0, top - headingGap)));
        const auto card = CGRectMake(0, top, size.width, std::max(0.0, size.height - top));
        setAlignmentFrame(card_, card);
        content_.frame = CGRectInset(card, cardPadding, cardPadding);
        list_.place(content_.frame.size);
    }

  private:
    [[nodiscard]] double cardTop() const {
        return title_.empty() ? 0 : [heading_ sizeAtWidth:unboundedWidth].height + headingGap;
    }

    std::string title_;
    ORVTextField* heading_;
    NSBox* card_;
    ORVFlippedView* content_;
    ChildList list_;
};

/// The system's triangle with its label beside it, which it has no room for itself.
class DisclosureBinding : public Binding {
  public:
    explicit DisclosureBinding(const View& first)
        : Binding(first, makePlace())
        , triangle_([NSButton buttonWithTitle:@"" target:nil action:nil])
        , label_([NSButton buttonWithTitle:@"" target:nil action:nil])
        , content_(makePlace())
        , list_(content_, Axis::vertical, Alignment::leading) {
        triangle_.bezelStyle = NSBezelStyleDisclosure;
        [triangle_ setButtonType:NSButtonTypePushOnPushOff];
        label_.bordered = NO;
        [label_ setButtonType:NSButtonTypeMomentaryChange];
        label_.refusesFirstResponder = YES;
        hideFromAccessibility(label_); // the triangle's name already
        for (NSView* each in @[ triangle_, label_, content_ ])
            [inner() addSubview:each];
        const auto toggle = ^{
          toggled();
        };
        triangleTarget_ = [ORVActionTarget targetOf:triangle_ run:toggle];
        labelTarget_ = [ORVActionTarget targetOf:label_ run:toggle];
    }

    bool fillsWidth() const override { return true; }
    bool shrinks() const override { return true; }
    void collectKeyViews(std::vector<NSView*>& views) const override {
        views.push_back(triangle_);
        if (isExpanded_)
            list_.collectKeyViews(views);
    }

  protected:
    NSView* namedView() const override { return triangle_; }
    std::string ownName() const override { return text_; }
    void apply(const View& next) override {
        forgetSizes();
        const auto& node = std::get<Disclosure>(next.node);
        changed_ = node.changed;
        text_ = node.label;
        isExpanded_ = node.isExpanded;
        label_.title = toNSString(text_);
        label_.font = roleFont(next.font, next.weight);
        triangle_.enabled = label_.enabled = isEnabled();
        showState();
        list_.update(node.children, 0, isEnabled());
        content_.hidden = !isExpanded_;
    }

    CGSize measureContent(CGFloat width) override {
        const auto heading = headingSize();
        if (!isExpanded_)
            return heading;
        const auto content = list_.measure(width);
        return {std::max(heading.width, content.width),
                heading.height + disclosureGap + content.height};
    }

    void placeContent(CGSize size) override {
        const auto heading = headingSize();
        const auto triangle = intrinsicSize(triangle_);
        const auto label = intrinsicSize(label_);
        const auto centered = [&](double height) {
            return alignedOffset(Alignment::center, Alignment::top, Alignment::bottom,
                                 heading.height, height);
        };
        setAlignmentFrame(triangle_, {{0, centered(triangle.height)}, triangle});
        setAlignmentFrame(label_, {{triangle.width + triangleGap, centered(label.height)}, label});
        const double top = heading.height + disclosureGap;
        content_.frame = CGRectMake(0, top, size.width, std::max(0.0, size.height - top));
        list_.place(content_.frame.size);
    }

  private:
    [[nodiscard]] CGSize headingSize() const {
        const auto triangle = intrinsicSize(triangle_);
        const auto label = intrinsicSize(label_);
        return {triangle.width + triangleGap + label.width,
                std::max(triangle.height, label.height)};
    }

    void showState() {
        triangle_.state = isExpanded_ ? NSControlStateValueOn : NSControlStateValueOff;
    }

    void toggled() {
        // Only the next value moves it; one that did not come leaves it where it was.
        unlessValueComes([this] { showState(); });
        runAction(changed_, !isExpanded_); // comes last: it may replace this
    }

    std::string text_;
    bool isExpanded_ = false;
    ValueAction<bool> changed_;
    NSButton* triangle_;
    NSButton* label_;
    ORVFlippedView* content_;
    ChildList list_;
    ORVActionTarget* triangleTarget_;
    ORVActionTarget* labelTarget_;
};

} // namespace

std::unique_ptr<Binding> bindGroupBox(const View& view) {
    return std::make_unique<GroupBoxBinding>(view);
}
std::unique_ptr<Binding> bindDisclosure(const View& view) {
    return std::make_unique<DisclosureBinding>(view);
}

} // namespace orrivane
