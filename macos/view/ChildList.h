#pragma once

#include <macos/view/Binding.h>

#include <memory>
#include <vector>

NS_ASSUME_NONNULL_BEGIN

namespace orrivane {

/// The children of a stack: those without a key keep their places, those with one are found again
/// by it wherever they are now. While a tile is dragged no keyed child comes, goes or moves.
class ChildList {
  public:
    /// The children become subviews of `parent`, which is flipped.
    ChildList(NSView* parent, Axis axis, Alignment alignment);

    void update(const std::vector<View>& next, double spacing, bool enabled);
    [[nodiscard]] bool fillsWidth() const;
    [[nodiscard]] bool fillsHeight() const;
    [[nodiscard]] bool shrinks() const;
    [[nodiscard]] CGSize measure(CGFloat width) const;
    /// `size` of the parent.
    void place(CGSize size) const;
    void collectKeyViews(std::vector<NSView*>& views) const;

  private:
    [[nodiscard]] bool isHeldByDrag(const std::vector<View>& next) const;
    void orderSubviews() const;
    [[nodiscard]] std::vector<Binding*> laidOut() const;
    [[nodiscard]] std::vector<double> widths(const std::vector<Binding*>& row, CGFloat width) const;
    void placeRow(CGSize size) const;
    void placeColumn(CGSize size) const;

    NSView* parent_;
    Axis axis_;
    Alignment alignment_;
    double spacing_ = 0;
    std::vector<std::unique_ptr<Binding>> children_;
};

/// How far from the beginning something lies that takes `length` of `room`: nothing, half of what
/// is left, or all of it.
[[nodiscard]] double alignedOffset(Alignment alignment, Alignment first, Alignment last,
                                   double room, double length);

} // namespace orrivane

NS_ASSUME_NONNULL_END
