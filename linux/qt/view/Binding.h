#pragma once

#include <Orrivane/view/View.h>

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <memory>
#include <vector>

namespace orrivane {

class BoxWidget;

enum class Axis { horizontal, vertical };

/// The controls of one node and of all below it. Built from the node's first value; every further
/// value sets only what differs, so that focus, a slider under the pointer and open dialogs stay.
/// Also the context of its signals: none arrives after its end.
class Binding : public QObject {
  public:
    ~Binding() override;

    /// Whether `next` is a newer value of the same node.
    [[nodiscard]] bool accepts(const View& next) const;
    void update(const View& next);

    /// The outermost widget; null when something else has destroyed it.
    [[nodiscard]] QWidget* widget() const { return outer_; }
    [[nodiscard]] std::uint32_t key() const { return key_; }
    /// Shows the widget, or not, as the value says; to be called when it has got its parent.
    void settleVisibility();
    /// Whether the node takes all the width that its place has.
    [[nodiscard]] virtual bool fillsWidth() const { return fillsWidth_; }
    /// Appends the focusable widgets in reading order.
    virtual void collectFocus(std::vector<QWidget*>& widgets) const;

  protected:
    /// `inner` is owned by the binding, or by the parent it is given to.
    Binding(const View& first, QWidget* inner);

    virtual void apply(const View& next) = 0;
    /// False for what stands in the tree, but not on the screen.
    [[nodiscard]] virtual bool takesRoom() const { return true; }
    [[nodiscard]] QWidget* inner() const { return inner_; }
    [[nodiscard]] static QString text(const std::string& utf8) {
        return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    }
    /// The same for controls that would take an ampersand for the mark of a shortcut.
    [[nodiscard]] static QString label(const std::string& utf8) {
        return text(utf8).replace(QLatin1Char('&'), QLatin1String("&&"));
    }
    /// What assistive technology reads when the view has no name of its own.
    [[nodiscard]] virtual std::string ownName() const { return {}; }

  private:
    void applyModifiers(const View& next);
    void applyFrame(const Frame& frame);

    QPointer<QWidget> inner_;
    QPointer<QWidget> outer_;
    QPointer<BoxWidget> box_;
    std::size_t kind_;
    std::uint32_t key_;
    Frame frame_;
    double opacity_ = 1;
    bool fillsWidth_ = false;
    bool isVisible_ = true;
};

/// `axis` is the direction of the stack that the node stands in.
std::unique_ptr<Binding> makeBinding(const View& view, Axis axis);

} // namespace orrivane
