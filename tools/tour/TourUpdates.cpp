#include "Tour.h"

namespace orrivane::tour {

namespace {

constexpr const char* updateButton = "Update to 9.0…";
constexpr const char* checkButton = "Check for Updates…";

} // namespace

std::string Tour::findAnUpdate() {
    const auto before = guide_->observer().imageOf(guide_->ownIcon().value().id).value();
    guide_->click("check box", "Check automatically");
    guide_->waitFor("the daily checks are on",
                    [&] { return guide_->isChecked("Check automatically"); });
    guide_->workElsewhere();
    guide_->waitFor("the icon has a badge", [&] {
        const auto icon = guide_->ownIcon();
        const auto now = icon ? guide_->observer().imageOf(icon->id) : std::optional<e2e::Image>();
        return now && now->pixels != before.pixels;
    });
    guide_->waitFor("the window tells the version", [&] { return guide_->shows("9.0"); });
    picture("badge");
    return "allowed daily checks; an update was found without a window, the icon has a badge";
}

std::string Tour::lookAtTheUpdate() {
    guide_->click("push button", updateButton);
    guide_->control("push button", "Install Update");
    guide_->waitFor("what is new shows",
                    [&] { return guide_->shows("A new version of Orrivane"); });
    picture("update");
    guide_->click("push button", "Remind Me Later");
    guide_->waitFor("the question is gone",
                    [&] { return !guide_->find("push button", "Install Update"); });
    return "asked for it; the offer says what is new, and \"Remind Me Later\" closed it";
}

std::string Tour::takeTheUpdate() {
    guide_->click("push button", checkButton);
    guide_->click("push button", "Install Update");
    guide_->control("push button", "OK");
    picture("update-verified");
    const auto path = home_.path() + "/cache/orrivane/updates/" + packageName;
    if (e2e::readFile(path) != package_)
        fail("the package is not where it should be");
    guide_->click("push button", "OK");
    return "installed it; the file was verified and handed over, nothing was run";
}

} // namespace orrivane::tour
