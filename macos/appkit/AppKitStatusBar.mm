#import <macos/appkit/AppKitStatusBar.h>

#import <macos/appkit/Conversions.h>
#import <macos/appkit/MainThread.h>
#import <macos/view/DrawingRenderer.h>

#include <utility>

@interface ORVStatusItemTarget : NSObject
- (void)setAction:(std::function<void()>)action;
- (void)run:(nullable id)sender;
@end

@implementation ORVStatusItemTarget {
    std::function<void()> _action;
}

- (void)setAction:(std::function<void()>)action {
    _action = std::move(action);
}

- (void)run:(id)__unused sender {
    // The action may replace itself, and may remove the item.
    const auto action = _action;
    orrivane::callOut(action);
}

@end

namespace orrivane {

AppKitStatusItem::AppKitStatusItem(CGFloat length)
    : item_([NSStatusBar.systemStatusBar statusItemWithLength:length])
    , target_([[ORVStatusItemTarget alloc] init]) {
    item_.button.target = target_;
    item_.button.action = @selector(run:);
}

AppKitStatusItem::~AppKitStatusItem() {
    [NSStatusBar.systemStatusBar removeStatusItem:item_];
}

void AppKitStatusItem::setImage(const Drawing& image) {
    item_.button.image = image.isTemplate ? drawnTemplateImage(image) : drawnImage(image);
    // Said outright: beside a title the picture's description would not be read.
    const auto& name = image.accessibilityName;
    item_.button.accessibilityLabel = name.empty() ? nil : toNSString(name);
}

void AppKitStatusItem::setAction(std::function<void()> action) {
    [target_ setAction:std::move(action)];
}

void AppKitStatusItem::setImagePosition(int position) {
    item_.button.imagePosition = static_cast<NSCellImagePosition>(position);
}

void AppKitStatusItem::setTitle(const std::string& title) {
    item_.button.title = toNSString(title);
}

void AppKitStatusItem::setToolTip(const std::optional<std::string>& toolTip) {
    item_.button.toolTip = toolTip ? toNSString(*toolTip) : nil;
}

std::unique_ptr<StatusItem> AppKitStatusBar::createItem(double length) {
    return std::make_unique<AppKitStatusItem>(length);
}

} // namespace orrivane
