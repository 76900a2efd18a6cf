#include <linux/qt/view/ControlBindings.h>

#include <linux/qt/view/FocusRing.h>
#include <linux/qt/view/RoleFonts.h>
#include <linux/qt/view/TextLabel.h>

#include <QHBoxLayout>
#include <QSlider>

#include <algorithm>
#include <cmath>

namespace orrivane {

namespace {

int steps(const Slider& slider) {
    const double count = (slider.maximum - slider.minimum) / slider.step;
    return std::isfinite(count) && count >= 1 ? static_cast<int>(std::lround(std::min(count, 1e6)))
                                              : 1;
}

// A value that is no number stands at the low end.
int stepOf(const Slider& slider, double value) {
    const double step = std::round((value - slider.minimum) / slider.step);
    return std::isfinite(step) ? static_cast<int>(std::clamp(step, 0.0, double(steps(slider)))) : 0;
}

// Where the control's own count begins. Where it can, it counts in the values themselves, because
// assistive programs read it.
int lowest(const Slider& slider) {
    constexpr double most = 1e6;
    const bool counts = slider.step == 1 && std::abs(slider.minimum) <= most &&
                        slider.minimum == std::round(slider.minimum);
    return counts ? static_cast<int>(slider.minimum) : 0;
}

class SliderBinding : public Binding {
  public:
    explicit SliderBinding(const View& first)
        : Binding(first, new QWidget)
        , label_(new TextLabel)
        , low_(new TextLabel)
        , slider_(new WithFocusRing<QSlider>(Qt::Horizontal))
        , high_(new TextLabel) {
        auto* layout = new QHBoxLayout(inner());
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(8);
        for (auto* label : {label_, low_})
            layout->addWidget(label);
        layout->addWidget(slider_, 1);
        layout->addWidget(high_);
        for (auto* label : {label_, low_, high_})
            label->setWraps(false);
        inner()->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
        slider_->setFocusPolicy(Qt::StrongFocus);
        slider_->setSingleStep(1);
        slider_->setMinimumWidth(120);
        QObject::connect(slider_, &QSlider::valueChanged, this,
                         [this](int position) { moved(position); });
    }

    bool fillsWidth() const override { return true; }
    void collectFocus(std::vector<QWidget*>& widgets) const override { widgets.push_back(slider_); }

  protected:
    std::string ownName() const override { return node_.label; }
    void apply(const View& next) override {
        node_ = std::get<Slider>(next.node);
        const auto small = roleFont(FontRole::caption, FontWeight::regular);
        for (auto* label : {low_, high_})
            label->setFont(small);
        label_->setText(text(node_.label));
        low_->setText(text(node_.minimumLabel));
        high_->setText(text(node_.maximumLabel));
        slider_->setAccessibleName(text(node_.label));
        applying_ = true;
        slider_->setRange(lowest(node_), lowest(node_) + steps(node_));
        slider_->setPageStep(std::max(1, steps(node_) / 4));
        slider_->setValue(lowest(node_) + stepOf(node_, node_.value));
        applying_ = false;
    }

  private:
    void moved(int position) {
        if (applying_)
            return;
        const auto changed = node_.changed;
        if (changed.run)
            changed.run(node_.minimum + (position - lowest(node_)) * node_.step);
    }

    Slider node_;
    TextLabel* label_;
    TextLabel* low_;
    QSlider* slider_;
    TextLabel* high_;
    bool applying_ = false;
};

} // namespace

std::unique_ptr<Binding> bindSlider(const View& view) {
    return std::make_unique<SliderBinding>(view);
}

} // namespace orrivane
