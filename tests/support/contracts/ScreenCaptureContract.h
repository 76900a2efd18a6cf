#pragma once

#include <Orrivane/platform/ScreenCapture.h>
#include <tests/support/contracts/Contract.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace orrivane {

/// The world also offers: `ScreenCapture& capture()`, `std::uint32_t openWindow(Size points)` (it
/// can be captured when the call returns), `void closeWindow(id)` and `bool setAccess(bool)`.
/// Access is granted at first.
template <typename World>
class ScreenCaptureContract : public Contract<World> {
  protected:
    /// What became of one request: how often it was answered, with what, and whether its completion
    /// is still about.
    template <typename T>
    struct Request {
        int answers = 0;
        std::optional<T> answer;
        bool onMainThread = true;
        std::weak_ptr<int> completion;

        auto begin() {
            auto token = std::make_shared<int>(0);
            completion = token;
            return [this, token = std::move(token),
                    thread = std::this_thread::get_id()](std::optional<T> value) {
                ++answers;
                answer = std::move(value);
                onMainThread = onMainThread && std::this_thread::get_id() == thread;
            };
        }
    };

    ScreenCapture& capture() { return this->world.capture(); }

    std::optional<ShareableWindow> shareable(std::uint32_t id) {
        Request<ShareableContent> request;
        capture().shareableContent(request.begin());
        EXPECT_TRUE(this->world.pumpUntil([&] { return request.completion.expired(); }));
        if (!request.answer)
            return std::nullopt;
        const auto found =
            std::ranges::find(request.answer->windows, id, &ShareableWindow::windowID);
        if (found == request.answer->windows.end())
            return std::nullopt;
        return *found;
    }
    static CaptureConfiguration configuration(int width, int height) {
        return {width, height, false, CaptureResolution::best};
    }
};

TYPED_TEST_SUITE_P(ScreenCaptureContract);

TYPED_TEST_P(ScreenCaptureContract, aSnapshotHasEveryOpenWindowWithItsSize) {
    const auto first = this->world.openWindow({24, 22});
    const auto second = this->world.openWindow({40, 22});
    const auto one = this->shareable(first);
    const auto other = this->shareable(second);
    ASSERT_TRUE(one && other);
    EXPECT_EQ(one->frame.width(), 24);
    EXPECT_EQ(other->frame.width(), 40);
}

TYPED_TEST_P(ScreenCaptureContract, anImageHasThePixelsThatWereAskedFor) {
    const auto window = this->shareable(this->world.openWindow({24, 22}));
    ASSERT_TRUE(window);
    typename TestFixture::template Request<Image> request;
    this->capture().captureImage(*window, this->configuration(48, 74), request.begin());
    ASSERT_TRUE(this->world.pumpUntil([&] { return request.completion.expired(); }));
    EXPECT_EQ(request.answers, 1);
    EXPECT_TRUE(request.onMainThread);
    ASSERT_TRUE(request.answer);
    EXPECT_EQ(request.answer->pixelWidth(), 48);
    EXPECT_EQ(request.answer->pixelHeight(), 74);
}

TYPED_TEST_P(ScreenCaptureContract, severalCapturesMayBeUnderWayAndEachAnswersForItself) {
    typename TestFixture::template Request<Image> requests[3];
    std::vector<ShareableWindow> windows;
    for (int i = 0; i < 3; ++i) {
        const auto window = this->shareable(this->world.openWindow({20.0 + i, 22}));
        ASSERT_TRUE(window);
        windows.push_back(*window);
    }
    for (int i = 0; i < 3; ++i)
        this->capture().captureImage(windows[static_cast<std::size_t>(i)],
                                     this->configuration(40 + 2 * i, 44), requests[i].begin());
    for (int i = 0; i < 3; ++i) {
        auto& request = requests[i];
        ASSERT_TRUE(this->world.pumpUntil([&] { return request.completion.expired(); }));
        ASSERT_TRUE(request.answer);
        EXPECT_EQ(request.answer->pixelWidth(), 40 + 2 * i);
    }
}

TYPED_TEST_P(ScreenCaptureContract, aWindowThatClosedSinceTheSnapshotGivesNoImage) {
    const auto id = this->world.openWindow({24, 22});
    const auto window = this->shareable(id);
    ASSERT_TRUE(window);
    this->world.closeWindow(id);
    typename TestFixture::template Request<Image> request;
    this->capture().captureImage(*window, this->configuration(48, 44), request.begin());
    ASSERT_TRUE(this->world.pumpUntil([&] { return request.completion.expired(); }));
    EXPECT_LE(request.answers, 1);
    EXPECT_FALSE(request.answer);
    EXPECT_FALSE(this->shareable(id));
}

TYPED_TEST_P(ScreenCaptureContract, withoutPermissionNothingIsCaptured) {
    const auto window = this->shareable(this->world.openWindow({24, 22}));
    ASSERT_TRUE(window);
    EXPECT_TRUE(this->capture().preflightAccess());
    EXPECT_TRUE(this->capture().requestAccess());
    if (!this->world.setAccess(false))
        GTEST_SKIP() << "the permission cannot be taken away here";
    EXPECT_FALSE(this->capture().preflightAccess());
    typename TestFixture::template Request<ShareableContent> content;
    this->capture().shareableContent(content.begin());
    typename TestFixture::template Request<Image> image;
    this->capture().captureImage(*window, this->configuration(48, 44), image.begin());
    ASSERT_TRUE(this->world.pumpUntil(
        [&] { return content.completion.expired() && image.completion.expired(); }));
    EXPECT_FALSE(content.answer);
    EXPECT_FALSE(image.answer);
}

REGISTER_TYPED_TEST_SUITE_P(ScreenCaptureContract, aSnapshotHasEveryOpenWindowWithItsSize,
                            anImageHasThePixelsThatWereAskedFor,
                            severalCapturesMayBeUnderWayAndEachAnswersForItself,
                            aWindowThatClosedSinceTheSnapshotGivesNoImage,
                            withoutPermissionNothingIsCaptured);

} // namespace orrivane
