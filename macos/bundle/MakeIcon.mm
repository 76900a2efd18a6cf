#import <Cocoa/Cocoa.h>

#include <Orrivane/MenuBarIcon.h>
#include <macos/view/DrawingRenderer.h>

#include <cstdio>

namespace {

// The usual grid of an icon: a plate of 824 on a canvas of 1024.
constexpr CGFloat canvas = 1024;
constexpr CGFloat margin = 100;
constexpr CGFloat cornerRadius = 185;

void fillRounded(CGContextRef context, CGRect rect, CGFloat radius, CGFloat gray) {
    const CGPathRef path = CGPathCreateWithRoundedRect(rect, radius, radius, nullptr);
    CGContextSetGrayFillColor(context, gray, 1);
    CGContextAddPath(context, path);
    CGContextFillPath(context);
    CGPathRelease(path);
}

// `context` has its origin at the top left, y down, and `canvas` units a side.
void drawIcon(CGContextRef context) {
    const CGRect plate = CGRectInset(CGRectMake(0, 0, canvas, canvas), margin, margin);
    fillRounded(context, plate, cornerRadius, 0.96);

    // The notch hangs from the plate's edge: what sticks out above is cut off.
    CGContextSaveGState(context);
    CGContextClipToRect(context, plate);
    fillRounded(context, CGRectMake(canvas / 2 - 160, margin - 40, 320, 140), 40, 0);
    CGContextRestoreGState(context);

    const auto figure = orrivane::MenuBarIcon::image();
    constexpr CGFloat scale = 26;
    CGContextTranslateCTM(context, (canvas - figure.size.width * scale) / 2, 330);
    CGContextScaleCTM(context, scale, scale);
    orrivane::draw(figure, context, CGRectMake(0, 0, figure.size.width, figure.size.height));
}

NSData* _Nullable pngOfSide(size_t pixels) {
    const CGColorSpaceRef space = CGColorSpaceCreateWithName(kCGColorSpaceSRGB);
    const CGContextRef context =
        CGBitmapContextCreate(nullptr, pixels, pixels, 8, 0, space,
                              static_cast<uint32_t>(kCGImageAlphaPremultipliedLast));
    CGColorSpaceRelease(space);
    if (!context)
        return nil;
    const CGFloat scale = static_cast<CGFloat>(pixels) / canvas;
    CGContextTranslateCTM(context, 0, static_cast<CGFloat>(pixels));
    CGContextScaleCTM(context, scale, -scale);
    [[NSAppearance appearanceNamed:NSAppearanceNameAqua] performAsCurrentDrawingAppearance:^{
      drawIcon(context);
    }];
    const CGImageRef image = CGBitmapContextCreateImage(context);
    CGContextRelease(context);
    if (!image)
        return nil;
    NSBitmapImageRep* const bitmap = [[NSBitmapImageRep alloc] initWithCGImage:image];
    CGImageRelease(image);
    return [bitmap representationUsingType:NSBitmapImageFileTypePNG properties:@{}];
}

bool writeIcon(NSString* folder, int points, int factor) {
    NSString* const name =
        factor == 1 ? [NSString stringWithFormat:@"icon_%dx%d.png", points, points]
                    : [NSString stringWithFormat:@"icon_%dx%d@%dx.png", points, points, factor];
    return [pngOfSide(static_cast<size_t>(points * factor))
               writeToFile:[folder stringByAppendingPathComponent:name]
                atomically:YES] != 0;
}

} // namespace

/// Writes the pictures that iconutil makes an icon of into the folder named by the argument.
int main(int argc, char** argv) {
    @autoreleasepool {
        if (argc != 2) {
            std::fputs("Usage: orrivane_make_icon FOLDER.iconset\n", stderr);
            return 2;
        }
        NSString* const folder = @(argv[1]);
        if (![NSFileManager.defaultManager createDirectoryAtPath:folder
                                     withIntermediateDirectories:YES
                                                      attributes:nil
                                                           error:nil]) {
            std::fprintf(stderr, "orrivane_make_icon: %s cannot be made\n", argv[1]);
            return 1;
        }
        for (const int points : {16, 32, 128, 256, 512})
            for (const int factor : {1, 2})
                if (!writeIcon(folder, points, factor)) {
                    std::fprintf(stderr, "orrivane_make_icon: no picture of %d points\n", points);
                    return 1;
                }
    }
    return 0;
}
