#pragma once

#include <linux/qt/view/Binding.h>

namespace orrivane {

std::unique_ptr<Binding> bindStack(const View& view);
std::unique_ptr<Binding> bindOverlay(const View& view);
std::unique_ptr<Binding> bindGroupBox(const View& view);
std::unique_ptr<Binding> bindDisclosure(const View& view);
std::unique_ptr<Binding> bindVerticalScroll(const View& view);
std::unique_ptr<Binding> bindHorizontalScroll(const View& view);
std::unique_ptr<Binding> bindSpacer(const View& view, Axis axis);

} // namespace orrivane
