#pragma once

#include <macos/view/Binding.h>

namespace orrivane {

std::unique_ptr<Binding> bindStack(const View& view);
std::unique_ptr<Binding> bindOverlay(const View& view);
std::unique_ptr<Binding> bindSpacer(const View& view, Axis axis);
std::unique_ptr<Binding> bindGroupBox(const View& view);
std::unique_ptr<Binding> bindDisclosure(const View& view);
std::unique_ptr<Binding> bindVerticalScroll(const View& view);
std::unique_ptr<Binding> bindHorizontalScroll(const View& view);
std::unique_ptr<Binding> bindText(const View& view);
std::unique_ptr<Binding> bindLabel(const View& view);
std::unique_ptr<Binding> bindButton(const View& view);
std::unique_ptr<Binding> bindSwitch(const View& view);
std::unique_ptr<Binding> bindSlider(const View& view);
std::unique_ptr<Binding> bindSpinner(const View& view);
std::unique_ptr<Binding> bindCanvas(const View& view);
std::unique_ptr<Binding> bindTile(const View& view);
std::unique_ptr<Binding> bindDialog(const View& view);

} // namespace orrivane
