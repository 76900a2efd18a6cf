#import <macos/view/PlainViews.h>

#import <macos/view/RunAction.h>

#import <QuartzCore/QuartzCore.h>

#include <vector>

namespace {

using Materials = std::vector<orrivane::BarMaterial>;

Materials leadingMaterials(const orrivane::Drawing& drawing) {
    Materials materials;
    for (const auto& primitive : drawing.primitives) {
        const auto* material = std::get_if<orrivane::BarMaterial>(&primitive);
        if (!material)
            break;
        materials.push_back(*material);
    }
    return materials;
}

NSVisualEffectView* makeMaterialView() {
    NSVisualEffectView* view = [[NSVisualEffectView alloc] initWithFrame:NSZeroRect];
    view.material = NSVisualEffectMaterialHeaderView;
    view.blendingMode = NSVisualEffectBlendingModeWithinWindow;
    view.state = NSVisualEffectStateActive;
    view.wantsLayer = YES;
    view.clipsToBounds = YES; // the layer's own flag follows it
    return view;
}

void show(const orrivane::BarMaterial& material, NSView* view) {
    const auto& rect = material.rect;
    view.frame = NSMakeRect(rect.minX(), rect.minY(), rect.width(), rect.height());
    view.layer.cornerRadius = material.cornerRadius;
    view.layer.cornerCurve = material.corners == orrivane::CornerStyle::continuous
                                 ? kCACornerCurveContinuous
                                 : kCACornerCurveCircular;
}

} // namespace

@implementation ORVCanvasView {
    std::optional<orrivane::CanvasContent> _content;
    ORVDrawingView* _drawn;
    NSMutableArray<NSView*>* _materialViews;
}

- (instancetype)initWithFrame:(NSRect)frame {
    if ((self = [super initWithFrame:frame])) {
        _materialViews = [NSMutableArray array];
        _drawn = [[ORVDrawingView alloc] initWithFrame:self.bounds];
        _drawn.leavesOutLeadingMaterial = YES;
        [self addSubview:_drawn];
    }
    return self;
}

- (void)setContent:(const orrivane::CanvasContent&)content {
    if (_content == content)
        return;
    _content = content;
    [self showDrawing];
}

- (void)setFrameSize:(NSSize)size {
    const bool differs = !NSEqualSizes(size, self.frame.size);
    [super setFrameSize:size];
    if (!differs)
        return;
    _drawn.frame = self.bounds;
    [self showDrawing];
}

- (void)showDrawing {
    const auto size = self.bounds.size;
    if (!_content || size.width <= 0 || size.height <= 0)
        return;
    orrivane::callOut([&] {
        const auto drawing = _content->drawing({size.width, size.height});
        [self showMaterials:leadingMaterials(drawing)];
        [_drawn setDrawing:drawing];
    });
}

- (void)showMaterials:(const Materials&)materials {
    while (_materialViews.count > materials.size()) {
        [_materialViews.lastObject removeFromSuperview];
        [_materialViews removeLastObject];
    }
    while (_materialViews.count < materials.size()) {
        NSView* view = makeMaterialView();
        [self addSubview:view positioned:NSWindowBelow relativeTo:_drawn];
        [_materialViews addObject:view];
    }
    for (std::size_t i = 0; i < materials.size(); ++i)
        show(materials[i], _materialViews[i]);
}

- (NSView*)hitTest:(NSPoint)point {
    return nil; // takes part in no interaction
}

@end
