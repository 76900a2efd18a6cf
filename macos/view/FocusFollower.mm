#import <macos/view/FocusFollower.h>

namespace {

constexpr CGFloat margin = 12; // points around what is shown
NSString* const followedKey = @"firstResponder";
char context;

} // namespace

@implementation ORVFocusFollower {
    // Held strongly, it would hold itself through the view that owns this.
    __unsafe_unretained NSWindow* _window;
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
    if (root && [view isDescendantOf:root])
        [view scrollRectToVisible:NSInsetRect(view.bounds, -margin, -margin)];
}

@end
