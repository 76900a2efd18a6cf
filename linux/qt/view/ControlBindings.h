#pragma once

#include <linux/qt/view/Binding.h>

namespace orrivane {

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
