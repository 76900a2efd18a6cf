#include "support/Desk.h"

#include <linux/support/PixelImage.h>

namespace orrivane::x11 {
namespace {

/// What the dock shows behind the panel.
class BackdropTest : public Desk {
  protected:
    static constexpr int width = 300;
    static constexpr int height = 20;

    BackdropTest() {
        startTray({100, 5, width, height});
        paintDock();
    }
    static std::uint32_t pixelOfDock(int x, int y) {
        return 0x010000U * static_cast<std::uint32_t>(x % 256) +
               0x000100U * static_cast<std::uint32_t>(y) + 7;
    }
    void paintDock() {
        std::vector<std::uint32_t> pixels;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                pixels.push_back(pixelOfDock(x, y));
        tray->client.paint(tray->dock(), width, height, pixels);
    }
    struct Answer {
        int count = 0;
        std::shared_ptr<const PixelImage> image;
    };
    std::shared_ptr<Answer> ask(const PixelRect& rect) {
        settle();
        auto answer = std::make_shared<Answer>();
        port().stage.backdrop(rect, [answer](std::shared_ptr<const PixelImage> image) {
            ++answer->count;
            answer->image = std::move(image);
        });
        return answer;
    }
    /// The backdrop once the dock has drawn itself.
    std::shared_ptr<const PixelImage> backdrop(const PixelRect& rect) {
        const auto answer = ask(rect);
        paintDock();
        loop.advance(1);
        EXPECT_EQ(answer->count, 1);
        return answer->image;
    }
};

TEST_F(BackdropTest, isWhatTheDockShowsUnderThePanel) {
    const auto image = backdrop({150, 5, 30, height});
    ASSERT_TRUE(image);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < 30; ++x)
            ASSERT_EQ(image->at(x, y), 0xff000000U | pixelOfDock(50 + x, y)) << x << ' ' << y;
}

TEST_F(BackdropTest, isWhatTheDockShowsWhateverLiesOverIt) {
    const auto cover =
        app.create({.area = {0, 0, 1512, 982}, .overrideRedirect = true, .background = 0xff});
    app.map(cover);
    const auto image = backdrop({150, 5, 30, height});
    ASSERT_TRUE(image);
    EXPECT_EQ(image->at(3, 4), 0xff000000U | pixelOfDock(53, 4));
}

TEST_F(BackdropTest, showsTheColumnLeftOfAnIconInItsPlace) {
    addIcon({60, 2, 10, 16}, {.background = 0xffffff});
    addIcon({70, 2, 10, 16}, {.background = 0xffffff});
    const auto image = backdrop({150, 5, 40, height}); // from 50 to 90 of the dock
    ASSERT_TRUE(image);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < 40; ++x) {
            const int column = x >= 10 && x < 30 ? 59 : 50 + x;
            ASSERT_EQ(image->at(x, y), 0xff000000U | pixelOfDock(column, y)) << x << ' ' << y;
        }
}

TEST_F(BackdropTest, continuesTheDocksEdgesWhereTheBandIsLarger) {
    const auto image = backdrop({95, 0, 20, 37});
    ASSERT_TRUE(image);
    EXPECT_EQ(image->at(0, 0), 0xff000000U | pixelOfDock(0, 0));
    EXPECT_EQ(image->at(19, 36), 0xff000000U | pixelOfDock(14, height - 1));
}

TEST_F(BackdropTest, waitsUntilTheDockHasDrawnAndThenAnswersAtOnce) {
    const auto first = ask({150, 5, 30, height});
    const auto second = ask({160, 5, 30, height});
    loop.runUntilIdle();
    EXPECT_EQ(first->count + second->count, 0);
    paintDock();
    loop.advance(1);
    EXPECT_EQ(first->count, 1);
    EXPECT_EQ(second->count, 1);
    EXPECT_TRUE(first->image && second->image);
    EXPECT_EQ(ask({150, 5, 30, height})->count, 1);
}

TEST_F(BackdropTest, isReadInsideABorder) {
    tray->client.setBorder(tray->dock(), 3);
    const auto image = backdrop({153, 8, 30, height});
    ASSERT_TRUE(image);
    EXPECT_EQ(image->at(0, 0), 0xff000000U | pixelOfDock(50, 0));
}

TEST_F(BackdropTest, isNoneWithoutADockOrOutsideIt) {
    EXPECT_FALSE(backdrop({600, 5, 30, height}));
    EXPECT_FALSE(backdrop({150, 500, 30, height}));
    EXPECT_FALSE(backdrop({150, 5, 0, height}));
    tray->client.leave();
    EXPECT_TRUE(eventually([this] { return !port().items.dock(); }));
    const auto answer = ask({150, 5, 30, height});
    loop.advance(1);
    EXPECT_EQ(answer->count, 1);
    EXPECT_FALSE(answer->image);
}

TEST_F(BackdropTest, aDockThatEndsMeanwhileStillGetsAnAnswer) {
    const auto answer = ask({150, 5, 30, height});
    tray->client.leave();
    EXPECT_TRUE(eventually([this] { return !port().items.dock(); }));
    loop.advance(1);
    EXPECT_EQ(answer->count, 1);
    EXPECT_FALSE(answer->image);
}

} // namespace
} // namespace orrivane::x11
