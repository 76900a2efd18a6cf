#import <macos/view/DrawingRenderer.h>

#import <macos/appkit/Conversions.h>
#import <macos/view/Roles.h>

#include <Orrivane/view/RoundedOutline.h>
#include <macos/view/ImageHandle.h>

#include <algorithm>
#include <cmath>
#include <span>

namespace orrivane {

namespace {

CGRect cgRect(const Rect& rect) {
    return CGRectMake(rect.minX(), rect.minY(), rect.width(), rect.height());
}

class Renderer {
  public:
    explicit Renderer(CGContextRef context)
        : context_(context) {}

    void draw(std::span<const Primitive> primitives) {
        for (std::size_t i = 0; i < primitives.size(); ++i) {
            if (const auto* group = std::get_if<Group>(&primitives[i])) {
                const auto count = std::min(group->count, primitives.size() - i - 1);
                drawGroup(group->opacity, primitives.subspan(i + 1, count));
                i += count;
            } else {
                std::visit([this](const auto& each) { draw(each); }, primitives[i]);
            }
        }
    }

  private:
    void drawGroup(double opacity, std::span<const Primitive> primitives);
    void draw(const Group&) {} // drawn with what it holds
    void draw(const ClipRectangle& clip);
    void draw(const RoundedRectangle& rectangle);
    void draw(const BarMaterial& material);
    void draw(const Oval& oval);
    void draw(const Path& path);
    void draw(const DrawnImage& image);
    void draw(const DrawnText& text);
    void add(const PathElement& element);
    void addOutline(CGRect rect, double radius, CornerStyle corners);

    void setColor(ColorRole role, double opacity) {
        NSColor* color = roleColor(role);
        const CGFloat alpha = CGColorGetAlpha(color.CGColor) * std::clamp(opacity, 0.0, 1.0);
        CGColorRef faded = CGColorCreateCopyWithAlpha(color.CGColor, alpha);
        CGContextSetFillColorWithColor(context_, faded);
        CGContextSetStrokeColorWithColor(context_, faded);
        CGColorRelease(faded);
    }
    [[nodiscard]] double pixel() const {
        const auto size = CGContextConvertSizeToUserSpace(context_, CGSizeMake(1, 1));
        return std::abs(size.width);
    }
    // Onto whole device pixels, so that straight edges are sharp at every scale.
    [[nodiscard]] CGRect snapped(CGRect rect) const {
        const auto device = CGContextConvertRectToDeviceSpace(context_, rect);
        const double left = std::round(CGRectGetMinX(device));
        const double bottom = std::round(CGRectGetMinY(device));
        return CGContextConvertRectToUserSpace(
            context_, CGRectMake(left, bottom, std::round(CGRectGetMaxX(device)) - left,
                                 std::round(CGRectGetMaxY(device)) - bottom));
    }
    // Moved by less than a pixel, at its own size.
    [[nodiscard]] CGRect aligned(CGRect rect) const {
        auto device = CGContextConvertRectToDeviceSpace(context_, rect);
        device.origin = {std::round(device.origin.x), std::round(device.origin.y)};
        return CGContextConvertRectToUserSpace(context_, device);
    }

    CGContextRef context_;
};

void Renderer::drawGroup(double opacity, std::span<const Primitive> primitives) {
    CGContextSaveGState(context_);
    CGContextSetAlpha(context_, std::clamp(opacity, 0.0, 1.0));
    CGContextBeginTransparencyLayer(context_, nullptr);
    draw(primitives);
    CGContextEndTransparencyLayer(context_);
    CGContextRestoreGState(context_);
}

void Renderer::draw(const ClipRectangle& clip) {
    CGContextClipToRect(context_,
                        clip.antialiased ? cgRect(clip.rect) : snapped(cgRect(clip.rect)));
}

void Renderer::draw(const RoundedRectangle& rectangle) {
    const auto outside = snapped(cgRect(rectangle.rect));
    if (CGRectIsEmpty(outside))
        return;
    setColor(rectangle.fill, rectangle.opacity);
    CGContextBeginPath(context_);
    addOutline(outside, rectangle.cornerRadius, rectangle.corners);
    if (rectangle.borderWidth > 0) {
        const double width = std::max(rectangle.borderWidth, pixel());
        const auto inside = CGRectInset(outside, width, width);
        if (!CGRectIsEmpty(inside))
            addOutline(inside, rectangle.cornerRadius - width, rectangle.corners);
    }
    CGContextEOFillPath(context_);
}

void Renderer::draw(const BarMaterial& material) {
    draw(RoundedRectangle{.rect = material.rect,
                          .cornerRadius = material.cornerRadius,
                          .corners = material.corners,
                          .fill = ColorRole::primary,
                          .opacity = barMaterialOpacity});
}

void Renderer::draw(const Oval& oval) {
    setColor(oval.fill, oval.opacity);
    CGContextFillEllipseInRect(context_, cgRect(oval.rect));
}

void Renderer::addOutline(CGRect rect, double radius, CornerStyle corners) {
    const Rect place{{rect.origin.x, rect.origin.y}, {rect.size.width, rect.size.height}};
    for (const auto& element : roundedOutline(place, radius, corners))
        add(element);
}

void Renderer::add(const PathElement& element) {
    if (const auto* move = std::get_if<MoveTo>(&element)) {
        CGContextMoveToPoint(context_, move->to.x, move->to.y);
        return;
    }
    if (CGContextIsPathEmpty(context_))
        return; // nothing to go on from
    if (const auto* line = std::get_if<LineTo>(&element))
        CGContextAddLineToPoint(context_, line->to.x, line->to.y);
    else if (const auto* curve = std::get_if<CurveTo>(&element))
        CGContextAddCurveToPoint(context_, curve->control1.x, curve->control1.y, curve->control2.x,
                                 curve->control2.y, curve->to.x, curve->to.y);
    else
        CGContextClosePath(context_);
}

void Renderer::draw(const Path& path) {
    setColor(path.color, path.opacity);
    CGContextBeginPath(context_);
    for (const auto& element : path.elements)
        add(element);
    if (path.strokeWidth <= 0) {
        CGContextFillPath(context_);
        return;
    }
    CGContextSetLineWidth(context_, path.strokeWidth);
    CGContextSetLineCap(context_, kCGLineCapRound);
    CGContextSetLineJoin(context_, kCGLineJoinRound);
    CGContextStrokePath(context_);
}

void Renderer::draw(const DrawnImage& image) {
    CGImageRef bitmap = bitmapOf(image.image);
    auto target = cgRect(image.rect);
    const double width = image.image.pixelWidth();
    const double height = image.image.pixelHeight();
    if (!bitmap || CGRectIsEmpty(target) || width <= 0 || height <= 0)
        return;
    if (image.mode == ContentMode::stretch) {
        target = snapped(target);
    } else {
        const double x = target.size.width / width;
        const double y = target.size.height / height;
        const double factor = image.mode == ContentMode::fill ? std::max(x, y) : std::min(x, y);
        target = aligned(CGRectInset(target, (target.size.width - width * factor) / 2,
                                     (target.size.height - height * factor) / 2));
    }
    CGContextSaveGState(context_);
    CGContextSetInterpolationQuality(context_, kCGInterpolationHigh);
    // An image's own y goes up.
    CGContextTranslateCTM(context_, target.origin.x, CGRectGetMaxY(target));
    CGContextScaleCTM(context_, 1, -1);
    CGContextDrawImage(context_, CGRectMake(0, 0, target.size.width, target.size.height), bitmap);
    CGContextRestoreGState(context_);
}

void Renderer::draw(const DrawnText& text) {
    const auto place = cgRect(text.rect);
    NSString* line = toNSString(text.text);
    NSMutableParagraphStyle* centered = [[NSMutableParagraphStyle alloc] init];
    centered.alignment = NSTextAlignmentCenter;
    centered.lineBreakMode = NSLineBreakByTruncatingTail;
    const auto attributes = [&](double size) {
        return @{
            NSFontAttributeName : [NSFont systemFontOfSize:size weight:fontWeight(text.weight)],
            NSForegroundColorAttributeName : roleColor(text.color),
            NSParagraphStyleAttributeName : centered
        };
    };
    NSDictionary* used = attributes(text.size);
    auto size = [line sizeWithAttributes:used];
    if (size.width > place.size.width && size.width > 0) {
        const double fitting = std::max(text.minimumScale, place.size.width / size.width);
        used = attributes(text.size * std::min(1.0, fitting));
        size = [line sizeWithAttributes:used];
    }
    // A little more: what fits exactly must not be shortened, or left out, for the sake of
    // rounding.
    const auto lineRect = CGRectMake(place.origin.x - 0.25, CGRectGetMidY(place) - size.height / 2,
                                     place.size.width + 0.5, size.height + 0.5);
    [NSGraphicsContext saveGraphicsState];
    NSGraphicsContext.currentContext = [NSGraphicsContext graphicsContextWithCGContext:context_
                                                                               flipped:YES];
    [line
        drawWithRect:lineRect
             options:NSStringDrawingUsesLineFragmentOrigin | NSStringDrawingTruncatesLastVisibleLine
          attributes:used
             context:nil];
    [NSGraphicsContext restoreGraphicsState];
}

} // namespace

void draw(const Drawing& drawing, CGContextRef context, CGRect place, bool leadingMaterial) {
    if (!context || CGRectIsEmpty(place) || drawing.size.width <= 0 || drawing.size.height <= 0)
        return;
    std::span<const Primitive> primitives = drawing.primitives;
    while (!leadingMaterial && !primitives.empty() &&
           std::holds_alternative<BarMaterial>(primitives.front()))
        primitives = primitives.subspan(1);
    CGContextSaveGState(context);
    CGContextTranslateCTM(context, place.origin.x, place.origin.y);
    CGContextScaleCTM(context, place.size.width / drawing.size.width,
                      place.size.height / drawing.size.height);
    Renderer(context).draw(primitives);
    CGContextRestoreGState(context);
}

NSImage* drawnImage(const Drawing& drawing) {
    // The system may ask on any thread, and long after this.
    const Drawing copy = drawing;
    const auto size = NSMakeSize(drawing.size.width, drawing.size.height);
    NSImage* image = [NSImage imageWithSize:size
                                    flipped:YES
                             drawingHandler:^BOOL(NSRect place) {
                               draw(copy, NSGraphicsContext.currentContext.CGContext, place);
                               return YES;
                             }];
    [image setTemplate:drawing.isTemplate];
    if (!drawing.accessibilityName.empty())
        image.accessibilityDescription = toNSString(drawing.accessibilityName);
    return image;
}

NSImage* drawnTemplateImage(const Drawing& drawing) {
    NSImage* image = drawnImage(drawing);
    [image setTemplate:YES];
    return image;
}

NSImage* drawnImage(const Drawing& drawing, CGFloat scale) {
    const auto size = NSMakeSize(drawing.size.width, drawing.size.height);
    const auto pixels = [scale](double points) {
        return static_cast<size_t>(std::max(1.0, std::ceil(points * scale)));
    };
    CGColorSpaceRef colors = CGColorSpaceCreateWithName(kCGColorSpaceSRGB);
    CGContextRef context = CGBitmapContextCreate(nullptr, pixels(size.width), pixels(size.height),
                                                 8, 0, colors, kCGImageAlphaPremultipliedLast);
    CGColorSpaceRelease(colors);
    NSImage* image = [[NSImage alloc] initWithSize:size];
    if (!context)
        return image;
    CGContextScaleCTM(context, scale, -scale);
    CGContextTranslateCTM(context, 0, -double(pixels(size.height)) / scale);
    draw(drawing, context, CGRectMake(0, 0, size.width, size.height));
    CGImageRef bitmap = CGBitmapContextCreateImage(context);
    CGContextRelease(context);
    if (bitmap)
        image = [[NSImage alloc] initWithCGImage:bitmap size:size];
    CGImageRelease(bitmap);
    return image;
}

} // namespace orrivane
