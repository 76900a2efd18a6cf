#pragma once

#include <Orrivane/support/ObserverList.h>

#include <linux/support/PanelStage.h>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace orrivane {

/// A stage without a server: notes what it is told and answers as scripted.
class FakePanelStage : public PanelStage {
  public:
    struct Question {
        PixelRect rect;
        std::function<void(std::shared_ptr<const PixelImage>)> answer;
    };

    double pixelsAPoint = 1;
    int rootHeight = 1000; // pixels
    bool covered = false;
    bool composited = true;
    std::vector<std::string> calls;
    std::vector<PixelRect> places;
    std::vector<Question> questions; ///< about the backdrop, unanswered

    [[nodiscard]] double scale() const override { return pixelsAPoint; }
    [[nodiscard]] PixelRect pixels(const Rect& frame) const override {
        const auto edge = [this](double points) {
            return static_cast<int>(std::floor(points * pixelsAPoint + 0.5));
        };
        const int left = edge(frame.minX());
        const int bottom = rootHeight - edge(frame.minY());
        const int top = rootHeight - edge(frame.maxY());
        return {left, top, edge(frame.maxX()) - left, bottom - top};
    }
    void adopt(std::uint32_t) override { calls.emplace_back("adopt"); }
    void place(const PixelRect& rect) override {
        calls.emplace_back("place");
        places.push_back(rect);
    }
    bool dockIsCovered() override { return covered; }
    bool isComposited() override { return composited; }
    void backdrop(const PixelRect& rect,
                  std::function<void(std::shared_ptr<const PixelImage>)> completion) override {
        calls.emplace_back("backdrop");
        questions.push_back({rect, std::move(completion)});
    }
    Subscription onChange(std::function<void()> changed) override {
        return observers_.add(std::move(changed));
    }

    void change() { observers_.notify(); }

  private:
    ObserverList<> observers_;
};

} // namespace orrivane
