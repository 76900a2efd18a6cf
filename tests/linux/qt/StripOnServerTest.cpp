#include "support/PrivateXServer.h"
#include "support/StripFixture.h"
#include "support/StripScreen.h"

#include <tests/support/contracts/TrayPanelContract.h>

#include <QToolTip>

#include <algorithm>
#include <memory>

namespace orrivane {

namespace {

double testedScale() {
    bool valid = false;
    const double scale = qEnvironmentVariable("QT_SCALE_FACTOR").toDouble(&valid);
    return valid ? scale : 1;
}

// A stage on a real server; its dock is a plain window over the whole width.
class ServerStage : public FakePanelStage {
  public:
    explicit ServerStage(StripScreen& screen)
        : screen_(screen) {
        pixelsAPoint = testedScale();
        rootHeight = PrivateXServer::height;
        composited = false;
        dock = screen.addWindow({0, 0, PrivateXServer::width, 80}, 0x203040);
    }
    void adopt(std::uint32_t window) override {
        FakePanelStage::adopt(window);
        panel = window;
        existedWhenAdopted = !screen_.geometry(window).isEmpty();
    }
    void place(const PixelRect& rect) override {
        FakePanelStage::place(rect);
        screen_.place(panel, rect, dock);
    }
    void backdrop(const PixelRect& rect,
                  std::function<void(std::shared_ptr<const PixelImage>)> completion) override {
        completion(plainPicture(rect.width, rect.height, 0xff203040));
    }

    std::uint32_t dock = 0;
    std::uint32_t panel = 0;
    bool existedWhenAdopted = false;

  private:
    StripScreen& screen_;
};

class StripOnServer : public ::testing::Test {
  protected:
    StripScreen screen;
    ServerStage stage{screen};
    QtTrayPanel panel{stage};
    std::vector<std::string> clicks;

    void SetUp() override {
        screen.move({400, 290});
        panel.create({});
    }
    void TearDown() override { QToolTip::hideText(); }

    View cell(std::uint32_t key, double width, unsigned seed) {
        const Size size{width, 37};
        const auto pixels = static_cast<int>(2 * width);
        Drawing label{
            size,
            {ClipRectangle{{{0, 0}, size}, false},
             DrawnImage{
                 {{0, 0}, size}, Image(noisyPicture(pixels, 74, seed)), 2, ContentMode::fill}}};
        View view{key, "Cell " + std::to_string(key), "Cell", Button{}};
        view.node = Button{ButtonStyle::plain,
                           std::move(label),
                           {[this, key] { clicks.push_back("left " + std::to_string(key)); }},
                           {[this, key] { clicks.push_back("right " + std::to_string(key)); }}};
        return view;
    }
    void show(std::vector<View> cells, double right = 180) {
        double total = 0;
        for (const auto& each : cells)
            total += std::get<Button>(each.node).label.size.width;
        View root;
        root.node = HorizontalStack{0, Alignment::center, std::move(cells)};
        panel.setRoot(root);
        const double top = PrivateXServer::height / stage.scale();
        panel.setFrame({{right - total, top - 37}, {total, 37}});
        panel.orderFrontRegardless();
    }
    std::vector<View> two() { return {cell(1, 22, 1), cell(2, 31, 2)}; }

    QImage onScreen() { return screen.read(stage.places.back()); }
    bool screenShowsThePicture() {
        return pumpUntil([&] {
            return onScreen() == panel.widget()->picture().convertToFormat(QImage::Format_RGB32);
        });
    }
    QPoint middleOf(std::size_t cell) {
        const auto place = stage.places.back();
        return panel.widget()->cells().at(cell).pixels.center() + QPoint(place.x, place.y);
    }
};

} // namespace

TEST_F(StripOnServer, theScreenShowsEveryPixelOfThePicture) {
    show(two());
    EXPECT_TRUE(stage.existedWhenAdopted);
    EXPECT_TRUE(screenShowsThePicture());
    EXPECT_EQ(panel.widget()->picture().size(),
              QSize(stage.places.back().width, stage.places.back().height));
}

TEST_F(StripOnServer, theServerHasTheWindowWhereTheStagePutIt) {
    show(two());
    ASSERT_TRUE(screenShowsThePicture());
    EXPECT_EQ(screen.geometry(stage.panel), stage.places.back());
    EXPECT_TRUE(screen.isOverrideRedirect(stage.panel));
    EXPECT_TRUE(screen.isMapped(stage.panel));
}

TEST_F(StripOnServer, aPanelOfAnotherSizeIsShownWholeAgain) {
    show(two());
    ASSERT_TRUE(screenShowsThePicture());
    show({cell(1, 22, 1), cell(2, 31, 2), cell(3, 27, 3)}, 181);
    EXPECT_TRUE(screenShowsThePicture());
    EXPECT_EQ(screen.geometry(stage.panel), stage.places.back());
    show({cell(3, 27, 3)}, 200);
    EXPECT_TRUE(screenShowsThePicture());
    EXPECT_EQ(screen.geometry(stage.panel), stage.places.back());
}

TEST_F(StripOnServer, aPanelThatWasAwayIsShownWholeAgainAndInItsPlace) {
    show(two());
    ASSERT_TRUE(screenShowsThePicture());
    panel.orderOut();
    ASSERT_TRUE(pumpUntil([&] { return !screen.isMapped(stage.panel); }));
    show({cell(1, 22, 5), cell(2, 31, 6), cell(3, 13, 7)}, 190);
    EXPECT_TRUE(screenShowsThePicture());
    EXPECT_EQ(screen.geometry(stage.panel), stage.places.back());
}

TEST_F(StripOnServer, onlyWhatDiffersIsDrawn) {
    auto cells = two();
    show(cells);
    ASSERT_TRUE(screenShowsThePicture());
    const auto first = panel.widget()->cells()[0].pixels.topLeft();
    const auto second = panel.widget()->cells()[1].pixels.topLeft();
    constexpr std::uint32_t ink = 0xff00ff7f;
    for (const auto corner : {first, second})
        screen.scribble(stage.panel, {corner.x(), corner.y(), 4, 4}, ink);
    ASSERT_EQ(onScreen().pixel(second), ink);
    cells[1] = cell(2, 31, 9);
    show(cells);
    ASSERT_TRUE(pumpUntil([&] { return onScreen().pixel(second) != ink; }));
    EXPECT_EQ(onScreen().pixel(first), ink);
}

TEST_F(StripOnServer, whatWasCoveredIsDrawnAgain) {
    show(two());
    ASSERT_TRUE(screenShowsThePicture());
    const auto cover = screen.addWindow({0, 0, PrivateXServer::width, 80}, 0xff0000);
    ASSERT_TRUE(pumpUntil([&] { return onScreen().pixel(3, 3) == 0xffff0000; }));
    screen.place(cover, {0, 200, 10, 10}, 0);
    EXPECT_TRUE(screenShowsThePicture());
}

TEST_F(StripOnServer, showingItDoesNotRaiseItAboveWhatCoversTheDock) {
    const auto menu = screen.addWindow({0, 0, 20, 20}, 0x00ff00);
    show(two());
    ASSERT_TRUE(screenShowsThePicture());
    const auto stack = screen.stack();
    const auto at = [&](std::uint32_t window) { return std::ranges::find(stack, window); };
    EXPECT_LT(at(stage.dock), at(stage.panel));
    EXPECT_LT(at(stage.panel), at(menu));
    panel.orderOut();
    show(two());
    ASSERT_TRUE(screenShowsThePicture());
    const auto again = screen.stack();
    EXPECT_LT(std::ranges::find(again, stage.panel), std::ranges::find(again, menu));
}

TEST_F(StripOnServer, clicksReachTheCellUnderThePointerAndTheFocusStays) {
    show(two());
    ASSERT_TRUE(screenShowsThePicture());
    const auto focus = screen.focus();
    screen.click(middleOf(0), 1);
    ASSERT_TRUE(pumpUntil([&] { return clicks.size() == 1; }));
    screen.click(middleOf(1), 3);
    ASSERT_TRUE(pumpUntil([&] { return clicks.size() == 2; }));
    EXPECT_EQ(clicks, (std::vector<std::string>{"left 1", "right 2"}));
    EXPECT_EQ(screen.focus(), focus);
}

// Inside the panel the toolkit tells the mouse's place to the point, at its edges to the pixel.
TEST_F(StripOnServer, everyCornerOfACellIsThatCell) {
    show(two());
    ASSERT_TRUE(screenShowsThePicture());
    const auto place = stage.places.back();
    const QPoint origin(place.x, place.y);
    const auto first = panel.widget()->cells()[0].pixels;
    const int point = static_cast<int>(std::ceil(stage.scale())) - 1;
    const std::vector<QPoint> corners{origin,
                                      origin + QPoint(first.right() - point, place.height - 1),
                                      origin + QPoint(first.right() + 1 + point, 0),
                                      origin + QPoint(place.width - 1, place.height - 1)};
    for (std::size_t i = 0; i < corners.size(); ++i) {
        screen.click(corners[i], 1);
        ASSERT_TRUE(pumpUntil([&] { return clicks.size() == i + 1; })) << i;
    }
    EXPECT_EQ(clicks, (std::vector<std::string>{"left 1", "left 1", "left 2", "left 2"}));
}

TEST_F(StripOnServer, aPointerThatRestsOnACellSeesItsName) {
    show(two());
    ASSERT_TRUE(screenShowsThePicture());
    // Two motions: the toolkit takes the first for the pointer's coming in.
    screen.move(middleOf(1));
    screen.move(middleOf(1) + QPoint(1, 1));
    ASSERT_TRUE(pumpUntil([] { return QToolTip::isVisible(); }));
    EXPECT_EQ(QToolTip::text(), "Cell 2");
}

namespace {

struct ServerPanelWorld {
    StripScreen screen;
    // The contract's frames are points of a taller screen.
    struct Stage : ServerStage {
        explicit Stage(StripScreen& given)
            : ServerStage(given) {
            rootHeight = static_cast<int>(760 * scale());
        }
    } stage{screen};
    QtTrayPanel body{stage};

    TrayPanel& panel() { return body; }
    bool isVisible() {
        QCoreApplication::processEvents();
        return stage.panel != 0 && screen.isMapped(stage.panel);
    }
    Rect frame() {
        const auto pixels = screen.geometry(stage.panel);
        const double scale = stage.scale();
        return {{pixels.x / scale, (stage.rootHeight - pixels.bottom()) / scale},
                {pixels.width / scale, pixels.height / scale}};
    }
    void click(Point point) {
        const auto pixels = screen.geometry(stage.panel);
        screen.click({pixels.x + static_cast<int>(point.x * stage.scale()),
                      pixels.y + static_cast<int>(point.y * stage.scale())},
                     1);
    }
    bool hasFocus() { return screen.focus() == stage.panel; }
    template <typename Condition>
    bool pumpUntil(Condition condition) {
        return orrivane::pumpUntil(condition);
    }
};

} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, TrayPanelContract, ServerPanelWorld);

} // namespace orrivane
