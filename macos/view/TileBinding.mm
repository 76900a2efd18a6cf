#import <macos/view/Bindings.h>

#import <macos/view/TileView.h>

namespace orrivane {

namespace {

class TileBinding : public Binding {
  public:
    explicit TileBinding(const View& first)
        : Binding(first, [[ORVTileView alloc] initWithFrame:NSZeroRect]) {}

    void collectKeyViews(std::vector<NSView*>& views) const override { views.push_back(inner()); }

  protected:
    bool dimsWhenDisabled() const override { return true; }
    void apply(const View& next) override {
        forgetSizes();
        [tile() setTile:std::get<Tile>(next.node)];
        tile().enabled = isEnabled();
    }
    CGSize measureContent(CGFloat) override {
        const auto& size = [tile() drawing].size;
        return {size.width, size.height};
    }

  private:
    [[nodiscard]] ORVTileView* tile() const { return static_cast<ORVTileView*>(inner()); }
};

} // namespace

std::unique_ptr<Binding> bindTile(const View& view) {
    return std::make_unique<TileBinding>(view);
}

} // namespace orrivane
