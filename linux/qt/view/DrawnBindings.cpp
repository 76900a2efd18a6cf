#include <linux/qt/view/ControlBindings.h>

#include <linux/qt/view/DrawnWidget.h>
#include <linux/qt/view/TileWidget.h>

namespace orrivane {

namespace {

class CanvasBinding : public Binding {
  public:
    explicit CanvasBinding(const View& first)
        : Binding(first, new CanvasWidget)
        , fills_(!std::get<Canvas>(first.node).width) {}

    bool fillsWidth() const override { return fills_; }

  protected:
    void apply(const View& next) override {
        static_cast<CanvasWidget*>(inner())->set(std::get<Canvas>(next.node));
    }

  private:
    bool fills_;
};

class TileBinding : public Binding {
  public:
    explicit TileBinding(const View& first)
        : Binding(first, new TileWidget) {}

  protected:
    void apply(const View& next) override {
        static_cast<TileWidget*>(inner())->set(std::get<Tile>(next.node));
    }
};

} // namespace

std::unique_ptr<Binding> bindCanvas(const View& view) {
    return std::make_unique<CanvasBinding>(view);
}
std::unique_ptr<Binding> bindTile(const View& view) {
    return std::make_unique<TileBinding>(view);
}

} // namespace orrivane
