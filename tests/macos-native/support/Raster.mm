#import "Raster.h"

#include <stdexcept>

namespace orrivane {

CGContextRef Raster::makeContext() {
    CGColorSpaceRef colors = CGColorSpaceCreateWithName(kCGColorSpaceSRGB);
    CGContextRef context =
        CGBitmapContextCreate(pixels_.data(), width_, height_, 8, width_ * sizeof(Pixel), colors,
                              kCGImageAlphaPremultipliedLast);
    CGColorSpaceRelease(colors);
    if (!context)
        throw std::runtime_error("the system gives no bitmap to draw on");
    return context;
}

Raster::Raster(NSImage* image, int scale)
    : width_(static_cast<std::size_t>(image.size.width * scale))
    , height_(static_cast<std::size_t>(image.size.height * scale))
    , pixels_(width_ * height_) {
    CGContextRef context = makeContext();
    CGContextScaleCTM(context, scale, scale);
    [NSGraphicsContext saveGraphicsState];
    NSGraphicsContext.currentContext = [NSGraphicsContext graphicsContextWithCGContext:context
                                                                               flipped:NO];
    [image drawInRect:NSMakeRect(0, 0, image.size.width, image.size.height)];
    [NSGraphicsContext restoreGraphicsState];
    CGContextRelease(context);
}

Raster::Raster(CGImageRef bitmap)
    : width_(CGImageGetWidth(bitmap))
    , height_(CGImageGetHeight(bitmap))
    , pixels_(width_ * height_) {
    CGContextRef context = makeContext();
    CGContextDrawImage(
        context, CGRectMake(0, 0, static_cast<CGFloat>(width_), static_cast<CGFloat>(height_)),
        bitmap);
    CGContextRelease(context);
}

double Raster::totalCoverage() const {
    double total = 0;
    for (const auto& pixel : pixels_)
        total += pixel[3] / 255.0;
    return total;
}

} // namespace orrivane
