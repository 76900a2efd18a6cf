#include <linux/qt/view/ControlBindings.h>

#include <linux/qt/view/FocusRing.h>
#include <linux/qt/view/PlainButton.h>
#include <linux/qt/view/RoleFonts.h>
#include <linux/qt/view/SpinnerWidget.h>
#include <linux/qt/view/SwitchWidget.h>
#include <linux/qt/view/Symbols.h>

#include <QIcon>
#include <QKeyEvent>
#include <QPushButton>
#include <QToolButton>

namespace orrivane {

namespace {

QAbstractButton* makeButton(ButtonStyle style) {
    switch (style) {
    case ButtonStyle::plain:
        return new PlainButton;
    case ButtonStyle::borderless: {
        auto* button = new WithFocusRing<QToolButton>;
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::StrongFocus);
        return button;
    }
    case ButtonStyle::bordered:
        break;
    }
    auto* button = new WithFocusRing<QPushButton>;
    button->setAutoDefault(false);
    return button;
}

class ButtonBinding : public Binding {
  public:
    explicit ButtonBinding(const View& first)
        : Binding(first, makeButton(std::get<Button>(first.node).style)) {
        button()->installEventFilter(this);
        QObject::connect(button(), &QAbstractButton::clicked, this, [this] { run(node_.action); });
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::KeyPress) {
            const auto key = static_cast<QKeyEvent*>(event)->key();
            if (key == Qt::Key_Return || key == Qt::Key_Enter) {
                button()->animateClick();
                return true;
            }
        }
        if (event->type() == QEvent::MouseButtonRelease &&
            static_cast<QMouseEvent*>(event)->button() == Qt::RightButton &&
            button()->rect().contains(static_cast<QMouseEvent*>(event)->pos()))
            run(node_.secondaryAction);
        return Binding::eventFilter(watched, event);
    }

  protected:
    std::string ownName() const override { return node_.title; }
    void apply(const View& next) override {
        const auto& node = std::get<Button>(next.node);
        const bool newSymbol = node.symbol != node_.symbol || color_ != next.color;
        node_ = node;
        color_ = next.color;
        if (auto* plain = dynamic_cast<PlainButton*>(button()))
            return plain->setDrawing(node.label);
        button()->setFont(roleFont(next.font, next.weight));
        button()->setText(label(node.title));
        if (newSymbol)
            setSymbol();
    }

  private:
    [[nodiscard]] QAbstractButton* button() const { return static_cast<QAbstractButton*>(inner()); }

    // The action may replace the node it belongs to.
    static void run(ViewAction action) {
        if (action.run)
            action.run();
    }

    void setSymbol() {
        const int side = QFontMetrics(button()->font()).height();
        QIcon icon;
        if (!node_.symbol.empty())
            for (const double scale : {1.0, 1.5, 2.0})
                icon.addPixmap(
                    symbolPixmap(node_.symbol, color_, button()->palette(), side, scale));
        button()->setIconSize({side, side});
        button()->setIcon(icon);
        if (auto* tool = qobject_cast<QToolButton*>(button()))
            tool->setToolButtonStyle(node_.title.empty() ? Qt::ToolButtonIconOnly
                                                         : Qt::ToolButtonTextBesideIcon);
    }

    Button node_;
    ColorRole color_ = ColorRole::primary;
};

class SwitchBinding : public Binding {
  public:
    explicit SwitchBinding(const View& first)
        : Binding(first, new SwitchWidget) {
        QObject::connect(button(), &QAbstractButton::toggled, this, [this](bool on) {
            if (on == isOn_)
                return;
            button()->setChecked(isOn_);
            const auto changed = changed_;
            if (changed.run)
                changed.run(on);
        });
    }

  protected:
    std::string ownName() const override { return label_; }
    void apply(const View& next) override {
        const auto& node = std::get<Switch>(next.node);
        label_ = node.label;
        changed_ = node.changed;
        isOn_ = node.isOn;
        button()->setFont(roleFont(next.font, next.weight));
        button()->setText(label(node.label));
        button()->setChecked(node.isOn);
    }

  private:
    [[nodiscard]] SwitchWidget* button() const { return static_cast<SwitchWidget*>(inner()); }

    std::string label_;
    ValueAction<bool> changed_;
    bool isOn_ = false;
};

class SpinnerBinding : public Binding {
  public:
    explicit SpinnerBinding(const View& first)
        : Binding(first, new SpinnerWidget) {}

  protected:
    void apply(const View&) override {}
};

} // namespace

std::unique_ptr<Binding> bindButton(const View& view) {
    return std::make_unique<ButtonBinding>(view);
}
std::unique_ptr<Binding> bindSwitch(const View& view) {
    return std::make_unique<SwitchBinding>(view);
}
std::unique_ptr<Binding> bindSpinner(const View& view) {
    return std::make_unique<SpinnerBinding>(view);
}

} // namespace orrivane
