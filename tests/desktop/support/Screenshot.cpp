#include "Screenshot.h"

namespace orrivane::e2e {

void saveScreenshot(Observer& observer, const std::string& path) {
    saveScreenshot(observer, path, observer.rootArea());
}

void saveScreenshot(Observer& observer, const std::string& path, const PixelRect& area) {
    writePng(path, observer.imageOfRoot(area));
}

} // namespace orrivane::e2e
