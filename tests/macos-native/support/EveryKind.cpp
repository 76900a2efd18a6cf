#include "EveryKind.h"

#include <utility>

namespace orrivane {

namespace {

struct Plate {
    [[nodiscard]] Drawing drawing(Size size) const {
        return {size, {RoundedRectangle{.rect = {{0, 0}, size}, .cornerRadius = 4}}};
    }
    friend bool operator==(const Plate&, const Plate&) = default;
};

std::vector<View> twoTexts() {
    return {{.key = 1, .node = Text{.text = "one"}}, {.key = 2, .node = Text{.text = "two"}}};
}

View of(ViewNode node) {
    View view;
    view.node = std::move(node);
    return view;
}

std::vector<NodeExample> containers() {
    return {
        {of(HorizontalStack{.spacing = 4, .children = twoTexts()}), 8},
        {of(VerticalStack{.spacing = 4, .children = twoTexts()}), 16},
        {of(Overlay{.alignment = Alignment::trailing, .children = twoTexts()}), 8},
        {of(GroupBox{.title = "Group", .spacing = 4, .children = twoTexts()}), 24},
        {of(Disclosure{.label = "More", .isExpanded = true, .children = twoTexts()}), 24},
        {of(Disclosure{.label = "More", .isExpanded = false, .children = twoTexts()}), 8},
        {of(VerticalScroll{.spacing = 4, .children = twoTexts()}), 16},
        {of(HorizontalScroll{.spacing = 4, .children = twoTexts()}), 8},
        {of(Spacer{.minimumLength = 8}), 0},
    };
}

std::vector<NodeExample> controls() {
    const auto drawing = Plate{}.drawing({30, 22});
    return {
        {of(Text{.text = "Some text"}), 8},
        {of(Label{.text = "Label", .symbol = "checkmark.circle"}), 8},
        {of(Button{.style = ButtonStyle::plain, .label = drawing}), 22},
        {of(Button{.style = ButtonStyle::borderless, .title = "Borderless", .symbol = "gear"}), 8},
        {of(Button{.style = ButtonStyle::bordered, .title = "Bordered"}), 12},
        {of(Switch{.label = "Switch", .isOn = true}), 12},
        {of(Slider{.label = "Slider",
                   .minimumLabel = "less",
                   .maximumLabel = "more",
                   .value = 4,
                   .minimum = 0,
                   .maximum = 16}),
         12},
        {of(Spinner{}), 8},
        {of(Canvas{.content = CanvasContent(Plate{}), .width = {}, .height = 40}), 40},
        {of(Tile{.content = drawing, .source = {.payload = "1"}}), 22},
        {of(ConfirmationDialog{
             .title = "Sure?", .message = "Really", .buttons = {{.title = "Yes"}}}),
         0},
    };
}

} // namespace

std::vector<NodeExample> everyKind() {
    auto all = containers();
    for (auto& example : controls())
        all.push_back(std::move(example));
    return all;
}

} // namespace orrivane
