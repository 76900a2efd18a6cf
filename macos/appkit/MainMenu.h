#pragma once

@class NSMenu;

namespace orrivane {

/// An accessory program's menu bar is never seen, but its key equivalents work: quit, close and
/// what one does with text.
[[nodiscard]] NSMenu* _Nonnull makeMainMenu();

} // namespace orrivane
