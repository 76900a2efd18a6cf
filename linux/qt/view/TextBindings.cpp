#include <linux/qt/view/ControlBindings.h>

#include <linux/qt/RoleColors.h>
#include <linux/qt/view/RoleFonts.h>
#include <linux/qt/view/Symbols.h>
#include <linux/qt/view/TextLabel.h>

#include <QEvent>
#include <QHBoxLayout>

namespace orrivane {

namespace {

void paintIn(QWidget& widget, ColorRole role) {
    auto palette = widget.palette();
    // From the window's palette, not from the label's own, which holds what was set before.
    const auto base = widget.parentWidget() ? widget.parentWidget()->palette() : palette;
    const auto color = roleColor(role, base);
    if (palette.color(QPalette::Active, QPalette::WindowText) == color)
        return;
    for (const auto group : {QPalette::Active, QPalette::Inactive})
        palette.setColor(group, QPalette::WindowText, color);
    auto faint = color;
    faint.setAlphaF(color.alphaF() * 0.45F);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, faint);
    widget.setPalette(palette);
}

/// Text in a role's font and colour, also after the user has changed either.
class RoleLabel : public TextLabel {
  public:
    void set(const QString& value, bool wraps, const View& view) {
        role_ = view.color;
        setWraps(wraps);
        const auto font = roleFont(view.font, view.weight);
        if (this->font() != font)
            setFont(font);
        paintIn(*this, role_);
        if (text() != value)
            setText(value);
    }

  protected:
    void changeEvent(QEvent* event) override {
        TextLabel::changeEvent(event);
        if (event->type() == QEvent::ParentChange ||
            event->type() == QEvent::ApplicationPaletteChange)
            paintIn(*this, role_);
    }

  private:
    ColorRole role_ = ColorRole::primary;
};

class TextBinding : public Binding {
  public:
    explicit TextBinding(const View& first)
        : Binding(first, new RoleLabel) {}

  protected:
    std::string ownName() const override { return text_; }
    void apply(const View& next) override {
        const auto& node = std::get<Text>(next.node);
        text_ = node.text;
        static_cast<RoleLabel*>(inner())->set(text(node.text), node.wraps, next);
    }

  private:
    std::string text_;
};

class LabelBinding : public Binding {
  public:
    explicit LabelBinding(const View& first)
        : Binding(first, new QWidget)
        , symbol_(new SymbolWidget)
        , label_(new RoleLabel) {
        auto* layout = new QHBoxLayout(inner());
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(6);
        layout->addWidget(symbol_, 0, Qt::AlignTop);
        layout->addWidget(label_, 1);
        inner()->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    }

  protected:
    void apply(const View& next) override {
        const auto& node = std::get<Label>(next.node);
        symbol_->set(node.symbol, next.color, roleFont(next.font, next.weight));
        symbol_->setVisible(!node.symbol.empty());
        label_->set(text(node.text), true, next);
        label_->setVisible(!node.text.empty());
        const auto policy = node.text.empty() ? QSizePolicy::Fixed : QSizePolicy::Preferred;
        if (inner()->sizePolicy().horizontalPolicy() != policy)
            inner()->setSizePolicy(policy, QSizePolicy::Minimum);
        label_->setAccessibleName(text(node.text));
    }

  private:
    SymbolWidget* symbol_;
    RoleLabel* label_;
};

} // namespace

std::unique_ptr<Binding> bindText(const View& view) {
    return std::make_unique<TextBinding>(view);
}
std::unique_ptr<Binding> bindLabel(const View& view) {
    return std::make_unique<LabelBinding>(view);
}

} // namespace orrivane
