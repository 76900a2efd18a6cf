#import <macos/view/StripPanelView.h>

#import <macos/appkit/Conversions.h>
#import <macos/view/DrawnButton.h>

#include <vector>

namespace {

using orrivane::Button;
using orrivane::HorizontalStack;
using orrivane::View;

struct Cell {
    NSNumber* key;
    const View* view;
    const Button* button;
};

// What has no key is known by its place; keys are 32 bits wide, so the two never meet.
NSNumber* cellKey(const View& view, std::size_t place) {
    constexpr unsigned long long beyondKeys = 1ULL << 32;
    return view.key != 0 ? @(view.key) : @(beyondKeys + place);
}

std::vector<Cell> cells(const View& root) {
    std::vector<Cell> found;
    if (const auto* row = std::get_if<HorizontalStack>(&root.node))
        for (const auto& child : row->children)
            if (const auto* button = std::get_if<Button>(&child.node))
                found.push_back({cellKey(child, found.size()), &child, button});
    return found;
}

double spacing(const View& root) {
    const auto* row = std::get_if<HorizontalStack>(&root.node);
    return row ? row->spacing : 0;
}

} // namespace

@implementation ORVStripPanelView {
    View _root;
    NSMutableDictionary<NSNumber*, ORVDrawnButton*>* _buttons;
    NSArray<ORVDrawnButton*>* _row; // as they stand
}

- (instancetype)initWithFrame:(NSRect)frame {
    if ((self = [super initWithFrame:frame])) {
        _buttons = [NSMutableDictionary dictionary];
        _row = @[];
        self.wantsLayer = YES;
        self.accessibilityElement = YES;
        self.accessibilityLabel = @"Hidden menu bar icons";
        self.accessibilityRole = NSAccessibilityGroupRole;
    }
    return self;
}

- (BOOL)isFlipped {
    return YES;
}

- (BOOL)acceptsFirstMouse:(NSEvent*)event {
    return YES;
}

// Buttons stay: a new one would lose the click that is under way and the tooltip that is shown.
- (void)setRoot:(const View&)root {
    _root = root;
    NSMutableDictionary<NSNumber*, ORVDrawnButton*>* buttons = [NSMutableDictionary dictionary];
    NSMutableArray<ORVDrawnButton*>* row = [NSMutableArray array];
    for (const auto& cell : cells(_root)) {
        ORVDrawnButton* button = _buttons[cell.key];
        if (!button || buttons[cell.key])
            button = [[ORVDrawnButton alloc] initWithFrame:NSZeroRect];
        [self show:cell in:button];
        buttons[cell.key] = button;
        [row addObject:button];
    }
    _buttons = buttons;
    _row = row;
    if (![self.subviews isEqualToArray:row])
        self.subviews = row;
    [self layOut];
}

- (void)show:(const Cell&)cell in:(ORVDrawnButton*)button {
    const auto& view = *cell.view;
    [button setDrawing:cell.button->label];
    [button setAction:cell.button->action secondary:cell.button->secondaryAction];
    button.enabled = view.isEnabled;
    NSString* tooltip = view.tooltip.empty() ? nil : orrivane::toNSString(view.tooltip);
    if (button.toolTip != tooltip && (!tooltip || ![button.toolTip isEqualToString:tooltip]))
        button.toolTip = tooltip;
    const auto& name = view.accessibilityName.empty() ? view.tooltip : view.accessibilityName;
    button.accessibilityLabel = orrivane::toNSString(name);
}

- (void)layOut {
    const double gap = spacing(_root);
    double total = _row.count == 0 ? 0 : gap * double(_row.count - 1);
    for (ORVDrawnButton* button in _row)
        total += button.drawing.size.width;
    const auto room = self.bounds.size;
    double left = (room.width - total) / 2;
    for (ORVDrawnButton* button in _row) {
        const auto& size = button.drawing.size;
        button.frame = NSMakeRect(left, (room.height - size.height) / 2, size.width, size.height);
        left += size.width + gap;
    }
}

- (void)setFrameSize:(NSSize)size {
    [super setFrameSize:size];
    [self layOut];
}

@end
