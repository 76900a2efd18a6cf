#include <Orrivane/ArrangeView.h>

#include <algorithm>
#include <utility>

namespace orrivane {

namespace {

// Points.
constexpr double rowSpacing = 6;
constexpr double tileSpacing = 8;
constexpr double sectionSpacing = 8;
constexpr double stripRadius = 8;
constexpr Insets stripInsets{.top = 4, .bottom = 12};
constexpr double placeholderInset = 4;
constexpr double placeholderRadius = 5;
constexpr double dotDiameter = 4;
constexpr double lineWidth = 2;
constexpr double lineRadius = 1;

constexpr double capturedScale = 2;
constexpr double placeholderOpacity = 0.25;
constexpr double draggedOpacity = 0.4;
constexpr double stripOpacity = 0.25;

View caption(std::string text, FontRole font) {
    return {.node = Text{std::move(text)}, .font = font, .color = ColorRole::secondary};
}

RoundedRectangle insertionLine(double x) {
    return {{{x, 0}, {lineWidth, ArrangeView::tileHeight}},
            lineRadius,
            CornerStyle::circular,
            ColorRole::accent};
}

} // namespace

View ArrangeView::body() {
    auto note = caption(limitation_.get(), FontRole::footnote);
    note.isVisible = !limitation_.get().empty();
    VerticalStack column{.spacing = sectionSpacing};
    column.children = {header(), strip(), footer(), std::move(note)};
    return {.node = std::move(column), .frame = {.fillsWidth = true}};
}

View ArrangeView::header() const {
    HorizontalStack row{.spacing = rowSpacing};
    row.children = {caption("Same order as your menu bar. Drag an icon — the line shows exactly "
                            "where it will land.",
                            FontRole::smallestCaption),
                    {.node = Spacer{}},
                    {.node = Spinner{}, .isVisible = isWorking()}};
    return {.node = std::move(row), .frame = {.fillsWidth = true}};
}

View ArrangeView::strip() {
    HorizontalStack row{.spacing = tileSpacing};
    row.children.reserve(items().size());
    int index = 0;
    for (const auto& item : items())
        row.children.push_back(tile(item, index++));
    HorizontalScroll scroll;
    scroll.children.push_back({.node = std::move(row), .padding = stripInsets});
    return {.node = std::move(scroll),
            .isEnabled = limitation_.get().empty(),
            .frame = {.fillsWidth = true},
            .background =
                Background{ColorRole::black, stripOpacity, stripRadius, CornerStyle::continuous}};
}

View ArrangeView::footer() {
    constexpr auto tip = "Refresh the icon list";
    HorizontalStack row{.spacing = rowSpacing, .alignment = Alignment::top};
    row.children = {
        caption("Moves use a simulated ⌘-drag on the real menu bar. Icons hidden under the notch "
                "(orange dot) may not respond — drag a visible icon left of them instead.",
                FontRole::footnote),
        {.tooltip = tip,
         .accessibilityName = tip,
         .node = Button{.style = ButtonStyle::borderless,
                        .action = {weakly(weak_from_this(),
                                          [](ArrangeView& self) { self.begin(self.refresh()); })},
                        .symbol = "arrow.clockwise"},
         .isEnabled = !isWorking()}};
    return {.node = std::move(row), .frame = {.fillsWidth = true}};
}

View ArrangeView::tile(const StatusItemWindow& item, int index) {
    const auto tip = tooltip(item);
    const auto weak = weak_from_this();
    const TileDropDelegate drop{
        .index = index,
        .tileWidth = item.frame.width(),
        .setInsertion = weakly(weak, [](ArrangeView& self, int gap) { self.setInsertion(gap); }),
        .clearInsertion = weakly(weak, [](ArrangeView& self, int at) { self.clearInsertion(at); }),
        .perform = [weak] {
            const auto self = weak.lock();
            return self && self->performDrop();
        }};
    const auto beginDrag = [id = item.id](ArrangeView& self) { self.beginDrag(id); };
    const auto endDrag = [](ArrangeView& self) { self.endDrag(); };
    const auto step = [id = item.id](ArrangeView& self, int direction) {
        self.step(id, direction);
    };
    return {.key = item.id,
            .tooltip = tip,
            .accessibilityName = tip,
            .node = Tile{.content = tileDrawing(item, index),
                         .source = {.payload = std::to_string(item.id),
                                    .began = {weakly(weak, beginDrag)},
                                    .ended = {weakly(weak, endDrag)}},
                         .target = {.updated = {[drop](double x) { drop.dropUpdated(x); }},
                                    .exited = {[drop] { drop.dropExited(); }},
                                    .performed = {[drop] { return drop.performDrop(); }}},
                         .stepped = {weakly(weak, step)}}};
}

Drawing ArrangeView::tileDrawing(const StatusItemWindow& item, int index) const {
    const Size size{item.frame.width(), tileHeight};
    Drawing drawing{size, {}};
    auto& primitives = drawing.primitives;
    if (draggingID() == item.id)
        primitives.emplace_back(Group{draggedOpacity, 1});
    if (const auto image = images().find(item.id); image != images().end())
        primitives.emplace_back(
            DrawnImage{{{}, size}, image->second, capturedScale, ContentMode::fit});
    else
        primitives.emplace_back(RoundedRectangle{{{placeholderInset, placeholderInset},
                                                  {std::max(0.0, size.width - 2 * placeholderInset),
                                                   size.height - 2 * placeholderInset}},
                                                 placeholderRadius,
                                                 CornerStyle::continuous,
                                                 ColorRole::gray,
                                                 placeholderOpacity});
    if (item.isEaten)
        primitives.emplace_back(Oval{{{(size.width - dotDiameter) / 2, size.height - dotDiameter},
                                      {dotDiameter, dotDiameter}},
                                     ColorRole::orange});
    if (insertionIndex() == index)
        primitives.emplace_back(insertionLine(0));
    const auto count = static_cast<int>(items().size());
    if (index == count - 1 && insertionIndex() == count)
        primitives.emplace_back(insertionLine(size.width - lineWidth));
    return drawing;
}

std::string ArrangeView::tooltip(const StatusItemWindow& item) const {
    const auto name = names().find(item.id);
    return (name == names().end() ? "Unknown" : name->second) +
           (item.isEaten ? " (hidden under the notch)" : "");
}

} // namespace orrivane
