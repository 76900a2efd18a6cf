#import <macos/view/FocusFollower.h>

namespace {

constexpr CGFloat margin = 12; // points around what is shown
NSString* const followedKey = @"firstResponder";
char context;

} // namespace

@implementation ORVFocusFollower {
    // Holds itself through the view that owns this, until that view leaves it.
    NSWindow* _window;
    __weak NSView* _root;
}

- (instancetype)initWithWindow:(NSWindow*)window root:(NSView*)root {
    if ((self = [super init])) {
        _window = window;
        _root = root;
        [window addObserver:self forKeyPath:followedKey options:0 context:&context];
    }
    return self;
}

- (void)dealloc {
    [_window removeObserver:self forKeyPath:followedKey context:&context];
    // Not here, where a view is about to leave it.
    CFAutorelease(CFBridgingRetain(_window));
}

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)observed {
    if (observed != &context) {
        [super observeValueForKeyPath:keyPath ofObject:object change:change context:observed];
        return;
    }
    NSResponder* focused = _window.firstResponder;
    if (![focused isKindOfClass:NSView.class])
        return;
    auto* view = static_cast<NSView*>(focused);
    NSView* root = _root;
    if (!root || ![view isDescendantOf:root])
        return;
    // One view scrolls only what is next around it: a row, but not the page that the row is on.
    const auto wanted = NSInsetRect(view.bounds, -margin, -margin);
    for (NSScrollView* scroll = view.enclosingScrollView; scroll;
         scroll = scroll.enclosingScrollView) {
        NSView* content = scroll.documentView;
        [content scrollRectToVisible:[view convertRect:wanted toView:content]];
    }
}

@end
