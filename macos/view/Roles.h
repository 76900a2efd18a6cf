#pragma once

#import <Cocoa/Cocoa.h>

#include <Orrivane/view/Roles.h>

NS_ASSUME_NONNULL_BEGIN

namespace orrivane {

/// The system's colour for the role; it follows light, dark and the user's accent by itself.
NSColor* roleColor(ColorRole role);
/// The system's font for the role.
NSFont* roleFont(FontRole role, FontWeight weight);
NSFontWeight fontWeight(FontWeight weight);
/// The system's symbol, as large as text of that font; nil for no name, or for one that this
/// system does not know.
NSImage* _Nullable roleSymbol(const SymbolName& name, NSFont* font);

} // namespace orrivane

NS_ASSUME_NONNULL_END
