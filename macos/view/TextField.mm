#import <macos/view/TextField.h>

#include <algorithm>
#include <cmath>

@implementation ORVTextField

- (instancetype)initWrapping:(BOOL)wraps {
    if ((self = [super initWithFrame:NSZeroRect])) {
        self.editable = NO;
        self.selectable = NO;
        self.bezeled = NO;
        self.drawsBackground = NO;
        self.textColor = NSColor.labelColor;
        self.maximumNumberOfLines = wraps ? 0 : 1;
        self.cell.wraps = wraps;
        self.cell.scrollable = NO;
        self.lineBreakMode = wraps ? NSLineBreakByWordWrapping : NSLineBreakByTruncatingTail;
    }
    return self;
}

- (BOOL)showFont:(NSFont*)font {
    if ([self.font isEqual:font])
        return NO;
    self.font = font;
    return YES;
}

- (BOOL)showText:(NSString*)text {
    if ([self.stringValue isEqualToString:text])
        return NO;
    self.stringValue = text;
    return YES;
}

- (CGSize)sizeAtWidth:(CGFloat)width {
    if (self.stringValue.length == 0 || width <= 0)
        return CGSizeZero;
    const auto frame = [self frameForAlignmentRect:CGRectMake(0, 0, width, 100)];
    constexpr CGFloat anyHeight = 1e6;
    const auto cell =
        [self.cell cellSizeForBounds:CGRectMake(0, 0, std::max(1.0, frame.size.width), anyHeight)];
    const auto rect = [self
        alignmentRectForFrame:CGRectMake(0, 0, std::ceil(cell.width), std::ceil(cell.height))];
    return {std::min(std::ceil(rect.size.width), width), std::ceil(rect.size.height)};
}

@end
