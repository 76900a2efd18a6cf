#import <macos/view/Roles.h>

#import <macos/appkit/Conversions.h>

namespace orrivane {

namespace {

NSFontTextStyle textStyle(FontRole role) {
    switch (role) {
    case FontRole::title:
        return NSFontTextStyleTitle1;
    case FontRole::headline:
        return NSFontTextStyleHeadline;
    case FontRole::body:
        return NSFontTextStyleBody;
    case FontRole::callout:
        return NSFontTextStyleCallout;
    case FontRole::footnote:
        return NSFontTextStyleFootnote;
    case FontRole::caption:
        return NSFontTextStyleCaption1;
    case FontRole::smallestCaption:
        return NSFontTextStyleCaption2;
    }
    return NSFontTextStyleBody;
}

} // namespace

NSColor* roleColor(ColorRole role) {
    switch (role) {
    case ColorRole::primary:
        return NSColor.labelColor;
    case ColorRole::secondary:
        return NSColor.secondaryLabelColor;
    case ColorRole::accent:
        return NSColor.controlAccentColor;
    case ColorRole::black:
        return NSColor.blackColor;
    case ColorRole::gray:
        return NSColor.systemGrayColor;
    case ColorRole::green:
        return NSColor.systemGreenColor;
    case ColorRole::orange:
        return NSColor.systemOrangeColor;
    case ColorRole::red:
        return NSColor.systemRedColor;
    }
    return NSColor.labelColor;
}

NSFontWeight fontWeight(FontWeight weight) {
    return weight == FontWeight::medium ? NSFontWeightMedium : NSFontWeightRegular;
}

NSFont* roleFont(FontRole role, FontWeight weight) {
    NSFont* font = [NSFont preferredFontForTextStyle:textStyle(role) options:@{}];
    // The headline is bolder than medium already.
    if (weight == FontWeight::regular || role == FontRole::headline)
        return font;
    return [NSFont systemFontOfSize:font.pointSize weight:NSFontWeightMedium];
}

NSImage* roleSymbol(const SymbolName& name, NSFont* font) {
    if (name.empty())
        return nil;
    NSImage* symbol = [NSImage imageWithSystemSymbolName:toNSString(name)
                                accessibilityDescription:nil];
    NSImageSymbolConfiguration* size =
        [NSImageSymbolConfiguration configurationWithPointSize:font.pointSize
                                                        weight:NSFontWeightRegular];
    return [symbol imageWithSymbolConfiguration:size];
}

} // namespace orrivane
