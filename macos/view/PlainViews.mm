#import <macos/view/PlainViews.h>

#import <macos/view/DrawingRenderer.h>
#import <macos/view/RunAction.h>

#include <utility>

@implementation ORVFlippedView

- (BOOL)isFlipped {
    return YES;
}

@end

@implementation ORVBackgroundView {
    std::optional<orrivane::Background> _background;
}

- (void)setBackground:(const std::optional<orrivane::Background>&)background {
    if (_background == background)
        return;
    _background = background;
    self.needsDisplay = YES;
}

- (void)setFrameSize:(NSSize)size {
    [super setFrameSize:size];
    self.needsDisplay = YES;
}

- (void)viewDidChangeEffectiveAppearance {
    [super viewDidChangeEffectiveAppearance];
    self.needsDisplay = YES;
}

- (void)drawRect:(NSRect)dirty {
    if (!_background)
        return;
    const auto size = self.bounds.size;
    const orrivane::Drawing drawing{
        .size = {size.width, size.height},
        .primitives = {orrivane::RoundedRectangle{.rect = {{0, 0}, {size.width, size.height}},
                                                  .cornerRadius = _background->cornerRadius,
                                                  .corners = _background->corners,
                                                  .fill = _background->fill,
                                                  .opacity = _background->opacity}}};
    orrivane::draw(drawing, NSGraphicsContext.currentContext.CGContext, self.bounds);
}

@end

@implementation ORVDrawingView {
    orrivane::Drawing _drawing;
}

- (instancetype)initWithFrame:(NSRect)frame {
    if ((self = [super initWithFrame:frame])) {
        self.wantsLayer = YES;
        // What fills beyond its place must not reach the neighbours; the system's default lets it.
        self.clipsToBounds = YES;
        self.layerContentsRedrawPolicy = NSViewLayerContentsRedrawOnSetNeedsDisplay;
    }
    return self;
}

- (void)setDrawing:(const orrivane::Drawing&)drawing {
    if (_drawing == drawing)
        return;
    _drawing = drawing;
    self.needsDisplay = YES;
}

- (const orrivane::Drawing&)drawing {
    return _drawing;
}

- (void)setFrameSize:(NSSize)size {
    const bool differs = !NSEqualSizes(size, self.frame.size);
    [super setFrameSize:size];
    if (differs)
        self.needsDisplay = YES;
}

- (void)viewDidChangeEffectiveAppearance {
    [super viewDidChangeEffectiveAppearance];
    self.needsDisplay = YES;
}

- (void)viewDidChangeBackingProperties {
    [super viewDidChangeBackingProperties];
    self.needsDisplay = YES;
}

- (void)drawRect:(NSRect)dirty {
    orrivane::draw(_drawing, NSGraphicsContext.currentContext.CGContext, self.bounds,
                   !self.leavesOutLeadingMaterial);
}

@end
