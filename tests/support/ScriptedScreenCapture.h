#pragma once

#include <Orrivane/platform/MainLoop.h>
#include <Orrivane/platform/ScreenCapture.h>
#include <tests/support/CallJournal.h>

#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <utility>

namespace orrivane {

/// How a request is answered.
struct CaptureReply {
    enum class Kind {
        now,   ///< inside the call
        later, ///< `seconds` after it
        never, ///< the completion is kept and not called
        drop,  ///< the completion is destroyed uncalled, inside the call
    };
    Kind kind = Kind::now;
    double seconds = 0;
    bool fails = false; ///< the answer is absent

    static CaptureReply now() { return {}; }
    static CaptureReply failure() { return {Kind::now, 0, true}; }
    static CaptureReply later(double seconds, bool fails = false) {
        return {Kind::later, seconds, fails};
    }
    static CaptureReply never() { return {Kind::never, 0, false}; }
    static CaptureReply drop() { return {Kind::drop, 0, false}; }
};

/// Screen capture by script. The loop outlives it.
class ScriptedScreenCapture : public ScreenCapture {
  public:
    struct CaptureCall {
        std::uint32_t windowID = 0;
        CaptureConfiguration configuration;

        friend bool operator==(const CaptureCall&, const CaptureCall&) = default;
    };

    explicit ScriptedScreenCapture(MainLoop& loop, CallJournal calls = {})
        : journal(std::move(calls))
        , loop_(loop) {}

    /// What a snapshot taken now contains. A window that is gone from here can no longer be
    /// captured, whatever older snapshots say.
    std::vector<ShareableWindow> windows;
    /// Used up in order by the calls for a snapshot; when empty, `contentReply` holds.
    std::deque<CaptureReply> contentReplies;
    CaptureReply contentReply;
    std::map<std::uint32_t, CaptureReply> captureReplies; ///< by window, else `captureReply`
    CaptureReply captureReply;
    std::map<std::uint32_t, Image> images; ///< by window, else a new one of the size asked for
    bool accessGranted = true;
    bool requestGrantsAccess = false; ///< the user agrees when asked

    int contentCalls = 0;
    std::vector<CaptureCall> captures; ///< every call, in order
    int requestCalls = 0;
    int inFlight = 0;     ///< captures whose completion neither ran nor died
    int mostInFlight = 0; ///< the highest value that it had
    CallJournal journal;

    void addWindow(std::uint32_t windowID, Size size, Point origin = {}) {
        windows.push_back({windowID, {origin, size}, nullptr});
    }
    void removeWindow(std::uint32_t windowID) {
        std::erase_if(windows,
                      [windowID](const auto& window) { return window.windowID == windowID; });
    }
    /// Requests that were told to stay unanswered, oldest first.
    [[nodiscard]] std::size_t unansweredCount() const { return unanswered_.size(); }
    /// Answers all of them now: late, but not never.
    void answerUnanswered();
    /// Destroys their completions uncalled.
    void dropUnanswered();

    void shareableContent(std::function<void(std::optional<ShareableContent>)> completion) override;
    void captureImage(const ShareableWindow& window, const CaptureConfiguration& configuration,
                      std::function<void(std::optional<Image>)> completion) override;
    bool preflightAccess() override;
    bool requestAccess() override;

  private:
    void reply(const CaptureReply& reply, std::function<void()> answer);

    MainLoop& loop_;
    std::vector<std::function<void()>> unanswered_;
    std::map<std::uint64_t, Subscription> timers_;
    std::uint64_t lastTimer_ = 0;
};

} // namespace orrivane
