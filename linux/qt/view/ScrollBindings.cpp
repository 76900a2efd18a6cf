#include <linux/qt/view/ContainerBindings.h>

#include <linux/qt/view/ChildList.h>

#include <QEvent>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

namespace orrivane {

namespace {

/// A scroll area without frame or colour of its own.
class BareScrollArea : public QScrollArea {
  public:
    BareScrollArea() {
        setFrameShape(QFrame::NoFrame);
        setWidgetResizable(true);
        setFocusPolicy(Qt::NoFocus);
        viewport()->setAutoFillBackground(false);
    }
};

QWidget* makeContent(QScrollArea& area) {
    auto* content = new QWidget;
    area.setWidget(content);
    content->setAutoFillBackground(false);
    return content;
}

class VerticalScrollBinding : public Binding {
  public:
    explicit VerticalScrollBinding(const View& first)
        : Binding(first, new BareScrollArea)
        , content_(makeContent(*area()))
        , layout_(new QVBoxLayout)
        , list_(*layout_, Axis::vertical, Alignment::leading) {
        // What is left below the column stays empty. (An alignment would not do: it gives a column
        // of broken lines the height that they had unbroken.)
        auto* whole = new QVBoxLayout(content_);
        for (auto* each : {whole, layout_})
            each->setContentsMargins(0, 0, 0, 0);
        whole->setSpacing(0);
        whole->addLayout(layout_);
        whole->addStretch(1);
        area()->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        inner()->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        content_->installEventFilter(this);
    }

    bool fillsWidth() const override { return true; }
    void collectFocus(std::vector<QWidget*>& widgets) const override {
        list_.collectFocus(widgets);
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Resize)
            QTimer::singleShot(0, this, [this] { report(); });
        return Binding::eventFilter(watched, event);
    }

  protected:
    void apply(const View& next) override {
        const auto& scroll = std::get<VerticalScroll>(next.node);
        changed_ = scroll.contentHeightChanged;
        layout_->setSpacing(qRound(scroll.spacing));
        list_.update(scroll.children);
        area()->verticalScrollBar()->setSingleStep(20);
    }

  private:
    [[nodiscard]] QScrollArea* area() const { return static_cast<QScrollArea*>(inner()); }

    void report() {
        if (!inner() || !inner()->isVisible())
            return;
        const auto* whole = content_->layout();
        const int height = whole->hasHeightForWidth()
                               ? whole->totalHeightForWidth(content_->width())
                               : whole->totalSizeHint().height();
        if (std::exchange(reported_, height) == height)
            return;
        const auto changed = changed_;
        if (changed.run)
            changed.run(height);
    }

    QWidget* content_;
    QVBoxLayout* layout_;
    ChildList list_;
    ValueAction<double> changed_;
    int reported_ = -1;
};

/// As high as its content, with room for a bar while there is one.
class RowScrollArea : public BareScrollArea {
  public:
    QSize sizeHint() const override {
        const auto content = widget() ? widget()->sizeHint() : QSize();
        const bool scrolls = content.width() > width();
        return {content.width(),
                content.height() + (scrolls ? horizontalScrollBar()->sizeHint().height() : 0)};
    }
    QSize minimumSizeHint() const override {
        constexpr int fewTiles = 60;
        return {fewTiles, sizeHint().height()};
    }

  protected:
    void resizeEvent(QResizeEvent* event) override {
        BareScrollArea::resizeEvent(event);
        updateGeometry();
    }
};

class HorizontalScrollBinding : public Binding {
  public:
    explicit HorizontalScrollBinding(const View& first)
        : Binding(first, new RowScrollArea)
        , content_(makeContent(*static_cast<QScrollArea*>(inner())))
        , layout_(new QHBoxLayout(content_))
        , list_(*layout_, Axis::horizontal, Alignment::center) {
        layout_->setContentsMargins(0, 0, 0, 0);
        layout_->setAlignment(Qt::AlignLeft);
        auto* area = static_cast<QScrollArea*>(inner());
        area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        inner()->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }

    bool fillsWidth() const override { return true; }
    void collectFocus(std::vector<QWidget*>& widgets) const override {
        list_.collectFocus(widgets);
    }

  protected:
    void apply(const View& next) override {
        const auto& scroll = std::get<HorizontalScroll>(next.node);
        layout_->setSpacing(qRound(scroll.spacing));
        list_.update(scroll.children);
        inner()->updateGeometry();
    }

  private:
    QWidget* content_;
    QHBoxLayout* layout_;
    ChildList list_;
};

} // namespace

std::unique_ptr<Binding> bindVerticalScroll(const View& view) {
    return std::make_unique<VerticalScrollBinding>(view);
}
std::unique_ptr<Binding> bindHorizontalScroll(const View& view) {
    return std::make_unique<HorizontalScrollBinding>(view);
}

} // namespace orrivane
