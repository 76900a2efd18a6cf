#include <linux/qt/view/ContainerBindings.h>

#include <linux/qt/view/ChildList.h>
#include <linux/qt/view/FocusRing.h>
#include <linux/qt/view/GroupBoxWidget.h>

#include <QGridLayout>
#include <QHBoxLayout>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

#include <optional>

namespace orrivane {

namespace {

QBoxLayout* bareLayout(QWidget* widget, Axis axis) {
    auto* layout = new QBoxLayout(
        axis == Axis::horizontal ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom, widget);
    layout->setContentsMargins(0, 0, 0, 0);
    return layout;
}

void setSpacing(QBoxLayout& layout, double points) {
    const int spacing = qRound(points);
    if (layout.spacing() != spacing)
        layout.setSpacing(spacing);
}

class StackBinding : public Binding {
  public:
    explicit StackBinding(const View& first)
        : Binding(first, new QWidget) {
        const auto* row = std::get_if<HorizontalStack>(&first.node);
        const auto axis = row ? Axis::horizontal : Axis::vertical;
        layout_ = bareLayout(inner(), axis);
        list_.emplace(*layout_, axis,
                      row ? row->alignment : std::get<VerticalStack>(first.node).alignment);
    }

    bool fillsWidth() const override { return Binding::fillsWidth() || list_->fillsWidth(); }
    void collectFocus(std::vector<QWidget*>& widgets) const override {
        list_->collectFocus(widgets);
    }

  protected:
    void apply(const View& next) override {
        const auto set = [this](const auto& stack) {
            setSpacing(*layout_, stack.spacing);
            list_->update(stack.children);
        };
        if (const auto* row = std::get_if<HorizontalStack>(&next.node))
            set(*row);
        else
            set(std::get<VerticalStack>(next.node));
        const auto policy = fillsWidth() ? QSizePolicy::Expanding : QSizePolicy::Preferred;
        if (inner()->sizePolicy().horizontalPolicy() != policy)
            inner()->setSizePolicy(policy, QSizePolicy::Minimum);
    }

  private:
    QBoxLayout* layout_;
    std::optional<ChildList> list_;
};

class OverlayBinding : public Binding {
  public:
    explicit OverlayBinding(const View& first)
        : Binding(first, new QWidget)
        , layout_(new QGridLayout(inner())) {
        layout_->setContentsMargins(0, 0, 0, 0);
    }

    bool fillsWidth() const override {
        return Binding::fillsWidth() || (!children_.empty() && children_.front()->fillsWidth());
    }
    void collectFocus(std::vector<QWidget*>& widgets) const override {
        for (const auto& child : children_)
            child->collectFocus(widgets);
    }

  protected:
    void apply(const View& next) override {
        const auto& overlay = std::get<Overlay>(next.node);
        children_.resize(overlay.children.size());
        for (std::size_t i = 0; i < children_.size(); ++i) {
            auto& child = children_[i];
            if (child && child->accepts(overlay.children[i])) {
                child->update(overlay.children[i]);
                continue;
            }
            child = makeBinding(overlay.children[i], Axis::vertical);
            child->update(overlay.children[i]);
            layout_->addWidget(child->widget(), 0, 0,
                               i == 0 ? Qt::Alignment() : place(overlay.alignment));
            child->settleVisibility();
            child->widget()->raise();
        }
    }

  private:
    static Qt::Alignment place(Alignment alignment) {
        switch (alignment) {
        case Alignment::leading:
            return Qt::AlignLeft | Qt::AlignVCenter;
        case Alignment::trailing:
            return Qt::AlignRight | Qt::AlignVCenter;
        case Alignment::top:
            return Qt::AlignTop | Qt::AlignHCenter;
        case Alignment::bottom:
            return Qt::AlignBottom | Qt::AlignHCenter;
        case Alignment::center:
            break;
        }
        return Qt::AlignCenter;
    }

    QGridLayout* layout_;
    std::vector<std::unique_ptr<Binding>> children_;
};

class GroupBoxBinding : public Binding {
  public:
    explicit GroupBoxBinding(const View& first)
        : Binding(first, new GroupBoxWidget)
        , layout_(static_cast<QBoxLayout*>(inner()->layout()))
        , list_(*layout_, Axis::vertical, Alignment::leading) {}

    bool fillsWidth() const override { return true; }
    void collectFocus(std::vector<QWidget*>& widgets) const override {
        list_.collectFocus(widgets);
    }

  protected:
    void apply(const View& next) override {
        const auto& box = std::get<GroupBox>(next.node);
        static_cast<GroupBoxWidget*>(inner())->setHeading(text(box.title));
        setSpacing(*layout_, box.spacing);
        list_.update(box.children);
    }

  private:
    QBoxLayout* layout_;
    ChildList list_;
};

class DisclosureBinding : public Binding {
  public:
    explicit DisclosureBinding(const View& first)
        : Binding(first, new QWidget)
        , heading_(new WithFocusRing<QToolButton>)
        , content_(new QWidget)
        , list_(*bareLayout(content_, Axis::vertical), Axis::vertical, Alignment::leading) {
        auto* layout = bareLayout(inner(), Axis::vertical);
        layout->setSpacing(8);
        layout->addWidget(heading_, 0, Qt::AlignLeft);
        layout->addWidget(content_);
        inner()->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
        heading_->setAutoRaise(true);
        heading_->setFocusPolicy(Qt::StrongFocus);
        heading_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        QObject::connect(heading_, &QToolButton::clicked, this, [this] {
            const auto changed = node_.changed;
            if (changed.run)
                changed.run(!node_.isExpanded);
        });
    }

    bool fillsWidth() const override { return true; }
    void collectFocus(std::vector<QWidget*>& widgets) const override {
        widgets.push_back(heading_);
        list_.collectFocus(widgets);
    }

  protected:
    void apply(const View& next) override {
        const auto& node = std::get<Disclosure>(next.node);
        node_.isExpanded = node.isExpanded;
        node_.changed = node.changed;
        heading_->setText(label(node.label));
        heading_->setAccessibleName(text(node.label));
        heading_->setArrowType(node.isExpanded ? Qt::DownArrow : Qt::RightArrow);
        list_.update(node.children);
        if (content_->isHidden() == node.isExpanded)
            content_->setVisible(node.isExpanded);
    }

  private:
    Disclosure node_; // without children
    QToolButton* heading_;
    QWidget* content_;
    ChildList list_;
};

class SpacerBinding : public Binding {
  public:
    SpacerBinding(const View& first, Axis axis)
        : Binding(first, new QWidget)
        , axis_(axis) {
        inner()->setAttribute(Qt::WA_TransparentForMouseEvents);
        if (axis == Axis::horizontal)
            inner()->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
        else
            inner()->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Expanding);
    }

    bool fillsWidth() const override { return axis_ == Axis::horizontal; }

  protected:
    void apply(const View& next) override {
        const int least = qRound(std::get<Spacer>(next.node).minimumLength);
        if (axis_ == Axis::horizontal)
            inner()->setMinimumWidth(least);
        else
            inner()->setMinimumHeight(least);
    }

  private:
    Axis axis_;
};

} // namespace

std::unique_ptr<Binding> bindStack(const View& view) {
    return std::make_unique<StackBinding>(view);
}
std::unique_ptr<Binding> bindOverlay(const View& view) {
    return std::make_unique<OverlayBinding>(view);
}
std::unique_ptr<Binding> bindGroupBox(const View& view) {
    return std::make_unique<GroupBoxBinding>(view);
}
std::unique_ptr<Binding> bindDisclosure(const View& view) {
    return std::make_unique<DisclosureBinding>(view);
}
std::unique_ptr<Binding> bindSpacer(const View& view, Axis axis) {
    return std::make_unique<SpacerBinding>(view, axis);
}

} // namespace orrivane
