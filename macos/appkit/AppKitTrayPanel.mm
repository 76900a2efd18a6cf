#import <macos/appkit/AppKitTrayPanel.h>

#import <macos/appkit/Conversions.h>
#import <macos/view/StripPanelView.h>

#import <AppKit/AppKit.h>

@interface ORVTrayPanel : NSPanel
@end

@implementation ORVTrayPanel

// The system pushes windows out of the menu bar's band, which is this one's place.
- (NSRect)constrainFrameRect:(NSRect)frame toScreen:(NSScreen*)__unused screen {
    return frame;
}

@end

namespace orrivane {

namespace {

NSPanel* makePanel(const TrayPanelConfiguration& configuration) {
    NSPanel* panel = [[ORVTrayPanel alloc]
        initWithContentRect:NSZeroRect
                  styleMask:static_cast<NSWindowStyleMask>(configuration.styleMask)
                    backing:NSBackingStoreBuffered
                      defer:configuration.deferred];
    panel.releasedWhenClosed = NO;
    panel.floatingPanel = configuration.floating;
    panel.becomesKeyOnlyIfNeeded = configuration.becomesKeyOnlyIfNeeded;
    panel.level = configuration.level; // a floating panel has just been given a level of its own
    panel.collectionBehavior =
        static_cast<NSWindowCollectionBehavior>(configuration.collectionBehavior);
    if (configuration.clearBackground)
        panel.backgroundColor = NSColor.clearColor;
    panel.opaque = configuration.opaque;
    panel.hasShadow = configuration.hasShadow;
    panel.movable = configuration.movable;
    panel.hidesOnDeactivate = configuration.hidesOnDeactivate;
    return panel;
}

// What a tray of a program that is never active needs besides.
void prepareForInactiveProgram(NSPanel* panel) {
    panel.allowsToolTipsWhenApplicationIsInactive = YES;
    panel.animationBehavior = NSWindowAnimationBehaviorNone;
    panel.worksWhenModal = YES;
    panel.canHide = NO; // "Hide Others" is not meant for it
    panel.restorable = NO;
}

} // namespace

AppKitTrayPanel::~AppKitTrayPanel() {
    [panel_ close];
}

int AppKitTrayPanel::windowLevelForKey(int key) {
    return CGWindowLevelForKey(static_cast<CGWindowLevelKey>(key));
}

void AppKitTrayPanel::create(const TrayPanelConfiguration& configuration) {
    panel_ = makePanel(configuration);
    prepareForInactiveProgram(panel_);
    strip_ = [[ORVStripPanelView alloc] initWithFrame:NSZeroRect];
    strip_.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
    panel_.contentView = strip_;
}

void AppKitTrayPanel::setRoot(const View& root) {
    [strip_ setRoot:root];
}

void AppKitTrayPanel::setFrame(const Rect& frame) {
    [panel_ setFrame:toNSRect(frame) display:YES];
}

void AppKitTrayPanel::orderFrontRegardless() {
    [panel_ orderFrontRegardless];
    // Said outright it ends that clicks fall through clear pixels; only now is the panel sure to be
    // known to the window server, which is to hear of it.
    panel_.ignoresMouseEvents = NO;
}

void AppKitTrayPanel::orderOut() {
    [panel_ orderOut:nil];
}

} // namespace orrivane
