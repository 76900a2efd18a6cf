#pragma once

#include <linux/updater/ReleaseChoice.h>
#include <linux/updater/UpdatePage.h>

#include <string>

namespace orrivane::updatePages {

UpdatePage checking();
UpdatePage newest(const std::string& running);
UpdatePage failed(const std::string& problem);
UpdatePage offer(const ReleaseOffer& offer, const std::string& running);
UpdatePage downloading(const ReleaseOffer& offer);
/// `opened`: an installer was asked to open the package at `path`.
UpdatePage handedOver(const ReleaseOffer& offer, const std::string& path, bool opened);

} // namespace orrivane::updatePages
