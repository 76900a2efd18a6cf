#include <Orrivane/MainView.h>

#include <Orrivane/CaptureService.h>
#include <Orrivane/MainViewParts.h>
#include <Orrivane/MenuBarPreview.h>
#include <Orrivane/NotificationName.h>
#include <Orrivane/StripController.h>
#include <Orrivane/support/NotificationCenter.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>

namespace orrivane {

using namespace parts;

View MainView::body() {
    VerticalStack column{.spacing = 12};
    column.children = {header(),       permissionBanner(), nowSection(),     previewSection(),
                       stripSection(), arrangeSection(),   squeezeSection(), updatesRow(),
                       footer(),       applyDialog(),      resetDialog()};
    VerticalScroll scroll;
    scroll.children.push_back(
        {.node = std::move(column), .frame = {.fillsWidth = true}, .padding = {16, 16, 16, 16}});
    scroll.contentHeightChanged = {
        action([](MainView& self, double height) { self.contentHeightChanged(height); })};
    return {.node = std::move(scroll),
            .appeared = {action([](MainView& self) { self.appear(); })},
            .disappeared = {action([](MainView& self) { self.disappear(); })}};
}

View MainView::header() {
    constexpr std::size_t mostRows = 2;
    const auto mirrored = std::clamp<std::int64_t>(services_.strip.mirroredCount(), 0,
                                                   std::numeric_limits<int>::max());
    auto rows = diagnosticLine(state_->census(), static_cast<int>(mirrored)).rows;
    const auto shownRows = rows.size();
    rows.resize(mostRows);
    VerticalStack titles{.spacing = 4};
    titles.children.push_back({.node = Text{"Orrivane"}, .font = FontRole::title});
    for (std::size_t i = 0; i < mostRows; ++i)
        titles.children.push_back({.node = Label{rows[i].text, rows[i].symbol},
                                   .font = FontRole::callout,
                                   .color = rows[i].color,
                                   .isVisible = i < shownRows});
    auto open = button("Open Window", action([](MainView& self) {
                           self.services_.notifications.post(NotificationName::orrivaneShowWindow);
                       }));
    std::get<Button>(open.node).symbol = "macwindow";
    open.tooltip = "Open Orrivane in its own resizable window";
    open.isVisible = !inWindow_;
    return row({{.node = std::move(titles)}, {.node = Spacer{}}, std::move(open)}, Alignment::top);
}

View MainView::permissionBanner() {
    VerticalStack column{.spacing = 6};
    column.children = {
        {.node = Text{"Screen Recording permission needed"}, .font = FontRole::headline},
        {.node = Text{"Without Screen Recording access, the preview shows placeholder tiles "
                      "instead of real menu bar icons."},
         .font = FontRole::callout},
        row({button("Grant…", action([](MainView& self) { self.grantScreenRecording(); })),
             button("Open System Settings", action([](MainView& self) {
                        self.services_.captures.openScreenRecordingSettings();
                    }))})};
    auto banner =
        row({symbol("eye.slash", ColorRole::orange), {.node = std::move(column)}}, Alignment::top);
    banner.isVisible = !state_->screenGranted();
    banner.padding = {10, 10, 10, 10};
    banner.background = Background{ColorRole::orange, 0.12, 8, CornerStyle::continuous};
    return banner;
}

View MainView::nowSection() const {
    return section("Now", {caption("Current"),
                           MenuBarPreview{notch(), state_->previewIcons(), std::nullopt}.body()});
}

View MainView::previewSection() const {
    const MenuBarPreview preview{notch(), state_->previewIcons(), simulatedSpacing()};
    const int eaten =
        MenuBarPreview::projectedEatenCount(preview.notch, preview.icons, preview.simulatedSpacing);
    auto verdict = caption(projectedVerdict(eaten));
    verdict.weight = FontWeight::medium;
    if (eaten == 0)
        verdict.color = ColorRole::green;
    return section("Preview", {caption("At spacing " + std::to_string(shownSpacing())),
                               preview.body(), std::move(verdict)});
}

View MainView::stripSection() {
    auto warning =
        row({symbol("exclamationmark.triangle", ColorRole::orange),
             {.node = Text{"Accessibility permission is required to click mirrored icons."},
              .font = FontRole::callout},
             {.node = Spacer{}},
             button("Open System Settings", action([](MainView& self) {
                        self.services_.captures.openAccessibilitySettings();
                    }))});
    warning.isVisible = !accessibilityTrusted_;
    return section(
        "Orrivane Notch",
        {toggle("Show hidden icons beside the notch", stripEnabled_,
                action([](MainView& self, bool on) { self.setStripEnabled(on); })),
         caption("Hidden icons appear in a small tray left of the notch. Click a mirrored icon to "
                 "open the real one."),
         toggle("Keep mirroring on the notched screen while external displays are connected",
                storedDefault(StripController::externalKey), action([](MainView& self, bool on) {
                    self.setDefault(StripController::externalKey, on);
                })),
         std::move(warning)});
}

View MainView::arrangeSection() {
    const bool isExpanded = storedDefault(arrangeExpandedKey);
    Disclosure disclosure{.label = isExpanded ? "Hide icon list" : "Show icon list",
                          .isExpanded = isExpanded,
                          .changed = {action([](MainView& self, bool expanded) {
                              self.setDefault(arrangeExpandedKey, expanded);
                          })}};
    disclosure.children.push_back(arrange_->body());
    return section("Arrange", {{.node = std::move(disclosure), .frame = {.fillsWidth = true}}});
}

} // namespace orrivane
