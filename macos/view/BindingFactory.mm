#import <macos/view/Bindings.h>

#include <Orrivane/support/Overloaded.h>

namespace orrivane {

std::unique_ptr<Binding> makeBinding(const View& view, Axis axis) {
    return std::visit(
        Overloaded{[&](const HorizontalStack&) { return bindStack(view); },
                   [&](const VerticalStack&) { return bindStack(view); },
                   [&](const Overlay&) { return bindOverlay(view); },
                   [&](const GroupBox&) { return bindGroupBox(view); },
                   [&](const Disclosure&) { return bindDisclosure(view); },
                   [&](const VerticalScroll&) { return bindVerticalScroll(view); },
                   [&](const HorizontalScroll&) { return bindHorizontalScroll(view); },
                   [&](const Spacer&) { return bindSpacer(view, axis); },
                   [&](const Text&) { return bindText(view); },
                   [&](const Label&) { return bindLabel(view); },
                   [&](const Button&) { return bindButton(view); },
                   [&](const Switch&) { return bindSwitch(view); },
                   [&](const Slider&) { return bindSlider(view); },
                   [&](const Spinner&) { return bindSpinner(view); },
                   [&](const Canvas&) { return bindCanvas(view); },
                   [&](const Tile&) { return bindTile(view); },
                   [&](const ConfirmationDialog&) { return bindDialog(view); }},
        view.node);
}

} // namespace orrivane
