#include <tests/support/ScriptedScreenCapture.h>

#include <tests/support/ScriptedImage.h>

#include <algorithm>
#include <memory>
#include <string>

namespace orrivane {

namespace {

// Lives as long as a capture's completion does.
class Flight {
  public:
    Flight(int& inFlight, int& most)
        : inFlight_(inFlight) {
        most = std::max(most, ++inFlight_);
    }
    Flight(const Flight&) = delete;
    Flight& operator=(const Flight&) = delete;
    ~Flight() { land(); }

    void land() {
        if (std::exchange(flying_, false))
            --inFlight_;
    }

  private:
    int& inFlight_;
    bool flying_ = true;
};

} // namespace

void ScriptedScreenCapture::reply(const CaptureReply& reply, std::function<void()> answer) {
    switch (reply.kind) {
    case CaptureReply::Kind::now:
        answer();
        return;
    case CaptureReply::Kind::later: {
        const auto id = ++lastTimer_;
        timers_[id] = loop_.wakeUp(reply.seconds, [this, id, answer = std::move(answer)] {
            timers_.erase(id);
            answer();
        });
        return;
    }
    case CaptureReply::Kind::never:
        unanswered_.push_back(std::move(answer));
        return;
    case CaptureReply::Kind::drop:
        return;
    }
}

void ScriptedScreenCapture::answerUnanswered() {
    for (const auto& answer : std::exchange(unanswered_, {}))
        answer();
}

void ScriptedScreenCapture::dropUnanswered() {
    unanswered_.clear();
}

void ScriptedScreenCapture::shareableContent(
    std::function<void(std::optional<ShareableContent>)> completion) {
    journal.note("shareableContent");
    ++contentCalls;
    auto next = contentReply;
    if (!contentReplies.empty()) {
        next = contentReplies.front();
        contentReplies.pop_front();
    }
    std::optional<ShareableContent> content;
    if (!next.fails && accessGranted)
        content = ShareableContent{windows};
    reply(next, [completion = std::move(completion), content] { completion(content); });
}

void ScriptedScreenCapture::captureImage(const ShareableWindow& window,
                                         const CaptureConfiguration& configuration,
                                         std::function<void(std::optional<Image>)> completion) {
    journal.note("captureImage " + std::to_string(window.windowID));
    captures.push_back({window.windowID, configuration});
    const auto scripted = captureReplies.find(window.windowID);
    const auto& next = scripted != captureReplies.end() ? scripted->second : captureReply;
    const bool exists =
        std::ranges::find(windows, window.windowID, &ShareableWindow::windowID) != windows.end();
    std::optional<Image> image;
    if (!next.fails && accessGranted && exists) {
        const auto kept = images.find(window.windowID);
        image = kept != images.end()
                    ? kept->second
                    : ScriptedImage::make(configuration.width, configuration.height);
    }
    auto flight = std::make_shared<Flight>(inFlight, mostInFlight);
    reply(next, [completion = std::move(completion), image, flight = std::move(flight)] {
        flight->land();
        completion(image);
    });
}

bool ScriptedScreenCapture::preflightAccess() {
    journal.note("preflightAccess");
    return accessGranted;
}

bool ScriptedScreenCapture::requestAccess() {
    journal.note("requestAccess");
    ++requestCalls;
    accessGranted = accessGranted || requestGrantsAccess;
    return accessGranted;
}

} // namespace orrivane
