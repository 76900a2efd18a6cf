#pragma once

#include <linux/qt/view/Binding.h>

#include <memory>
#include <vector>

class QBoxLayout;

namespace orrivane {

/// The children of a stack: those without a key keep their places, those with one are found again
/// by it wherever they are now.
class ChildList {
  public:
    /// The layout lives longer than the list.
    ChildList(QBoxLayout& layout, Axis axis, Alignment alignment);

    void update(const std::vector<View>& next);
    [[nodiscard]] bool fillsWidth() const;
    void collectFocus(std::vector<QWidget*>& widgets) const;

  private:
    void fillLayout();

    QBoxLayout& layout_;
    Axis axis_;
    Alignment alignment_;
    std::vector<std::unique_ptr<Binding>> children_;
    std::vector<QWidget*> order_; // what the layout holds
};

} // namespace orrivane
