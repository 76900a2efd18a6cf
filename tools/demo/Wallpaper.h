#pragma once

#include "Observer.h"

namespace orrivane::demo {

/// A background for the root window: a bar of `barHeight` pixels over a colour that fades
/// downwards, and where `cutout` has a width, a bracket below it that shows the covered columns.
/// It stays for as long as the observer lives.
void paintWallpaper(e2e::Observer& observer, int barHeight, const e2e::PixelRect& cutout);

} // namespace orrivane::demo
