#pragma once

#include <Orrivane/support/Geometry.h>

#import <Foundation/Foundation.h>

#include <string>
#include <string_view>

namespace orrivane {

/// From UTF-8; bytes that are none are read one by one as Latin 1.
[[nodiscard]] NSString* _Nonnull toNSString(std::string_view text);
/// UTF-8, with "?" for what is no well-formed Unicode; empty for nil.
[[nodiscard]] std::string toString(NSString* _Nullable text);

/// The same numbers in the other notation; neither origin nor direction changes.
[[nodiscard]] inline NSRect toNSRect(const Rect& rect) {
    return NSMakeRect(rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
}
[[nodiscard]] inline Rect toRect(NSRect rect) {
    return {{rect.origin.x, rect.origin.y}, {rect.size.width, rect.size.height}};
}
[[nodiscard]] inline NSSize toNSSize(Size size) {
    return NSMakeSize(size.width, size.height);
}

} // namespace orrivane
