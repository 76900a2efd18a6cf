#include <linux/updater/UpdatePages.h>

#include <cstdint>

namespace orrivane::updatePages {

namespace {

ReleaseNotes notesOf(const ReleaseEntry& entry) {
    const auto format = entry.notesFormat == "plain-text" ? ReleaseNotes::Format::plain
                        : entry.notesFormat == "markdown" ? ReleaseNotes::Format::markdown
                                                          : ReleaseNotes::Format::html;
    return {entry.notes, format, entry.notesLink};
}

std::string sizeOf(std::int64_t bytes) {
    constexpr std::int64_t kilo = 1000;
    constexpr std::int64_t mega = kilo * kilo;
    if (bytes < mega)
        return std::to_string((bytes + kilo - 1) / kilo) + " kB";
    constexpr std::int64_t tenth = mega / 10;
    const auto tenths = (bytes + tenth - 1) / tenth;
    return std::to_string(tenths / 10) + '.' + std::to_string(tenths % 10) + " MB";
}

UpdatePage message(std::string headline, std::string text) {
    UpdatePage page;
    page.headline = std::move(headline);
    page.text = std::move(text);
    page.buttons = {{"OK", UpdateChoice::close}};
    return page;
}

} // namespace

UpdatePage checking() {
    UpdatePage page;
    page.headline = "Checking for updates…";
    page.isBusy = true;
    page.buttons = {{"Cancel", UpdateChoice::cancel}};
    page.onClose = UpdateChoice::cancel;
    return page;
}

UpdatePage newest(const std::string& running) {
    return message("You're up to date!",
                   "Orrivane " + running + " is currently the newest version available.");
}

UpdatePage failed(const std::string& problem) {
    return message("The update did not work", problem);
}

UpdatePage offer(const ReleaseOffer& offer, const std::string& running) {
    UpdatePage page;
    page.headline = "A new version of Orrivane is available!";
    page.text = "Orrivane " + offer.entry.displayVersion() + " is available; you have " + running +
                ". Would you like to download it now (" + sizeOf(offer.length) + ")?";
    page.notes = notesOf(offer.entry);
    page.buttons = {{"Skip This Version", UpdateChoice::skip},
                    {"Remind Me Later", UpdateChoice::later},
                    {"Install Update", UpdateChoice::install}};
    page.onClose = UpdateChoice::later;
    return page;
}

UpdatePage downloading(const ReleaseOffer& offer) {
    UpdatePage page;
    page.headline = "Downloading Orrivane " + offer.entry.displayVersion() + "…";
    page.text = offer.fileName + ", " + sizeOf(offer.length);
    page.isBusy = true;
    page.progress = 0;
    page.buttons = {{"Cancel", UpdateChoice::cancel}};
    page.onClose = UpdateChoice::cancel;
    return page;
}

UpdatePage handedOver(const ReleaseOffer& offer, const std::string& path, bool opened) {
    const auto byHand = "sudo apt install " + path;
    auto text =
        opened ? "The desktop's installer was asked to open it. If none appears, install it "
                 "in a terminal with\n" +
                     byHand
               : "This desktop has no installer for it. Install it in a terminal with\n" + byHand;
    return message("Orrivane " + offer.entry.displayVersion() + " is downloaded and verified",
                   std::move(text));
}

} // namespace orrivane::updatePages
