#import <macos/view/ScreenView.h>

#import <macos/view/Binding.h>
#import <macos/view/FocusFollower.h>
#import <macos/view/RunAction.h>
#import <macos/view/TileView.h>

#include <algorithm>

namespace {

using orrivane::View;
using orrivane::ViewAction;

using ChosenAction = ViewAction View::*;

void collect(const View& view, ChosenAction which, std::vector<ViewAction>& actions) {
    if ((view.*which).run)
        actions.push_back(view.*which);
    std::visit(
        [&](const auto& node) {
            if constexpr (requires { node.children; })
                for (const auto& child : node.children)
                    collect(child, which, actions);
        },
        view.node);
}

View scrolling(const View& root) {
    if (std::holds_alternative<orrivane::VerticalScroll>(root.node))
        return root;
    return {.node = orrivane::VerticalScroll{.children = {root}}};
}

} // namespace

@implementation ORVScreenView {
    View _root;
    std::unique_ptr<orrivane::Binding> _binding; // null before it is needed
    NSArray<NSView*>* _keyViews;
    ORVFocusFollower* _focusFollower; // nil outside a window
    BOOL _hasRoot;
    BOOL _isShown;
}

- (instancetype)init {
    return [self initInWindow:YES];
}

- (instancetype)initInWindow:(BOOL)inWindow {
    if ((self = [super initWithFrame:NSZeroRect])) {
        _inWindow = inWindow;
        _keyViews = @[];
        NSNotificationCenter* center = NSNotificationCenter.defaultCenter;
        [center addObserver:self
                   selector:@selector(renderAgain:)
                       name:ORVTileDragDidEndNotification
                     object:nil];
        [center addObserver:self
                   selector:@selector(renderAgain:)
                       name:NSPreferredScrollerStyleDidChangeNotification
                     object:nil];
    }
    return self;
}

- (BOOL)isFlipped {
    return YES;
}

- (void)setRoot:(const View&)root {
    const auto next = scrolling(root);
    const bool differs = !_hasRoot || _root != next;
    _root = next;
    _hasRoot = YES;
    if (!_binding)
        [self buildIfShown];
    else
        [self renderLayingOut:differs];
}

- (void)renderAgain:(NSNotification*)notification {
    if (_binding)
        [self renderLayingOut:YES];
}

- (void)buildIfShown {
    if (self.window && !_binding)
        [self build];
}

- (void)build {
    if (!_binding && _hasRoot)
        [self renderLayingOut:YES];
}

- (void)renderLayingOut:(BOOL)laysOut {
    orrivane::callOut([&] {
        if (!_binding || !_binding->accepts(_root)) {
            _binding = orrivane::makeBinding(_root, orrivane::Axis::vertical);
            [self addSubview:_binding->view()];
        }
        _binding->update(_root, true);
    });
    if (laysOut)
        [self layOut];
}

- (void)layOut {
    const auto size = self.bounds.size;
    if (!_binding || size.width <= 0 || size.height <= 0)
        return;
    orrivane::callOut([&] { _binding->place(CGRectMake(0, 0, size.width, size.height)); });
    [self linkKeyViews];
}

- (void)setFrameSize:(NSSize)size {
    const bool differs = !NSEqualSizes(size, self.frame.size);
    [super setFrameSize:size];
    if (differs)
        [self layOut];
}

- (void)viewDidEndLiveResize {
    [super viewDidEndLiveResize];
    [self layOut]; // heights that changed meanwhile are told only now
}

- (void)viewWillMoveToWindow:(NSWindow*)window {
    _focusFollower = nil;
    [super viewWillMoveToWindow:window];
}

- (void)viewDidMoveToWindow {
    [super viewDidMoveToWindow];
    NSWindow* window = self.window;
    _focusFollower = window ? [[ORVFocusFollower alloc] initWithWindow:window root:self] : nil;
    [self buildIfShown];
    [self linkKeyViews];
}

#pragma mark Height

- (CGFloat)naturalHeightForWidth:(CGFloat)width {
    [self build];
    return _binding ? _binding->measure(width).height : 0;
}

#pragma mark Keyboard

// Without keyboard navigation no control takes the keyboard. Then this does in a popover, so that
// what is pressed there comes by its controller; a window needs nobody for that.
- (BOOL)acceptsFirstResponder {
    return !_inWindow && !NSApp.fullKeyboardAccessEnabled;
}

// The order that the system finds by itself follows places, not the reading order.
- (void)linkKeyViews {
    std::vector<NSView*> views;
    if (_binding)
        _binding->collectKeyViews(views);
    if (views.empty())
        return;
    NSArray<NSView*>* order = [NSArray arrayWithObjects:views.data() count:views.size()];
    if (![order isEqualToArray:_keyViews])
        for (std::size_t i = 0; i < views.size(); ++i)
            views[i].nextKeyView = views[(i + 1) % views.size()];
    _keyViews = order;
    self.window.autorecalculatesKeyViewLoop = NO;
    if (self.window && self.window.initialFirstResponder != views.front())
        self.window.initialFirstResponder = views.front();
}

#pragma mark Life

- (void)setShown:(BOOL)shown {
    if (std::exchange(_isShown, shown) == shown)
        return;
    std::vector<ViewAction> actions;
    collect(_root, shown ? &View::appeared : &View::disappeared, actions);
    for (const auto& action : actions)
        orrivane::runAction(action);
}

@end
