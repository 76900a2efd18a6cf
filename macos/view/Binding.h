#pragma once

#import <Cocoa/Cocoa.h>

#import <macos/appkit/Conversions.h>
#import <macos/view/PlainViews.h>
#import <macos/view/Roles.h>

#include <Orrivane/view/View.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

NS_ASSUME_NONNULL_BEGIN

namespace orrivane {

enum class Axis { horizontal, vertical };

/// More than any place has: what is asked for its size at it answers with its natural one.
constexpr CGFloat unboundedWidth = 1e6;

/// Also after paddings were taken off.
constexpr bool isUnbounded(CGFloat width) {
    return width > unboundedWidth / 2;
}

/// The controls of one node and of all below it. Built from the node's first value; every further
/// value sets only what differs, so that focus, a slider under the pointer and open dialogs stay.
/// Sizes and places are points, those of the views' alignment rectangles. Main thread only.
class Binding {
  public:
    Binding(const Binding&) = delete;
    Binding& operator=(const Binding&) = delete;
    virtual ~Binding();

    /// Whether `next` is a newer value of the same node.
    [[nodiscard]] bool accepts(const View& next) const;
    /// `enabled`: whether what the node stands in is.
    void update(const View& next, bool enabled);

    /// The outermost view.
    [[nodiscard]] NSView* view() const { return outer_; }
    [[nodiscard]] std::uint32_t key() const { return key_; }
    [[nodiscard]] bool takesRoom() const { return isVisible_ && isLaidOut(); }
    /// Whether the node takes all the width, or height, that its place has.
    [[nodiscard]] virtual bool fillsWidth() const { return frame_.fillsWidth; }
    [[nodiscard]] virtual bool fillsHeight() const { return false; }
    /// Whether the node makes do with less than its natural width.
    [[nodiscard]] virtual bool shrinks() const { return false; }

    /// The size at a place that is `width` wide.
    [[nodiscard]] CGSize measure(CGFloat width);
    /// `rect` in the flipped coordinates of the superview.
    void place(CGRect rect);
    /// Appends the views that the keyboard can reach in reading order.
    virtual void collectKeyViews(std::vector<NSView*>& views) const;

  protected:
    Binding(const View& first, NSView* inner);

    virtual void apply(const View& next) = 0;
    [[nodiscard]] virtual CGSize measureContent(CGFloat width) = 0;
    virtual void placeContent(CGSize) {}
    /// False for what stands in the tree, but not on the screen.
    [[nodiscard]] virtual bool isLaidOut() const { return true; }
    /// True for what no control of the system draws.
    [[nodiscard]] virtual bool dimsWhenDisabled() const { return false; }
    /// What carries the tooltip and the name for assistive technology.
    [[nodiscard]] virtual NSView* namedView() const { return inner_; }
    /// The name where the value gives none; empty: the system's own.
    [[nodiscard]] virtual std::string ownName() const { return {}; }

    [[nodiscard]] NSView* inner() const { return inner_; }
    [[nodiscard]] bool isEnabled() const { return enabled_; }
    /// To be called by what has changed its size.
    void forgetSizes() { sizes_.clear(); }
    /// Runs `work` on a later turn of the loop if the binding still exists by then.
    void later(std::function<void()> work);
    /// For a control that shows already what the user has just done to it: if no value has followed
    /// soon, nor anything else that the user does, `putBack` shows the last one again.
    void unlessValueComes(std::function<void()> putBack);

  private:
    void applyModifiers(const View& next);

    NSView* inner_;
    NSView* outer_;
    ORVBackgroundView* _Nullable box_;
    std::size_t kind_;
    std::uint32_t key_;
    Frame frame_;
    Insets padding_;
    NSView* _Nullable named_ = nil; // what carries the name now
    std::string spokenName_;
    std::uint32_t changes_ = 0; // by the user
    bool isVisible_ = true;
    bool enabled_ = true;
    std::vector<std::pair<CGFloat, CGSize>> sizes_; // of the content, by width
    std::shared_ptr<int> alive_ = std::make_shared<int>();
};

/// `axis` is the direction of the stack that the node stands in.
std::unique_ptr<Binding> makeBinding(const View& view, Axis axis);

/// For what says only what another element says already.
void hideFromAccessibility(NSControl* control);
/// The size that a control asks for itself.
CGSize intrinsicSize(NSView* view);
void setAlignmentFrame(NSView* view, CGRect rect);

} // namespace orrivane

NS_ASSUME_NONNULL_END
