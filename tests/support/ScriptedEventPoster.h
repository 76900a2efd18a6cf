#pragma once

#include <Orrivane/platform/EventPoster.h>
#include <tests/support/CallJournal.h>
#include <tests/support/VirtualLoop.h>

#include <memory>
#include <set>
#include <utility>
#include <vector>

namespace orrivane {

/// Takes the place of the event system and keeps what was posted.
class ScriptedEventPoster : public EventPoster {
  public:
    struct Posted {
        MouseEventType type = MouseEventType::mouseMoved;
        Point position;
        std::uint64_t flags = 0;
        bool hasSource = false;
        double at = 0; ///< virtual seconds, 0 without a loop

        friend bool operator==(const Posted&, const Posted&) = default;
    };

    explicit ScriptedEventPoster(CallJournal calls = {}, const VirtualLoop* loop = nullptr)
        : journal(std::move(calls))
        , loop_(loop) {}

    bool refusesSource = false;
    std::set<int> failingEvents; ///< which creations fail, the first is number 1

    std::vector<Posted> posted;
    int sourcesCreated = 0;
    int sourcesReleased = 0;
    int eventsCreated = 0;     ///< failed ones included
    bool holdsButton = false;  ///< pressed and not released since
    bool holdsCommand = false; ///< held with the last event that was no release
    CallJournal journal;

    std::unique_ptr<EventSource> createSource() override {
        journal.note("createSource");
        if (refusesSource)
            return nullptr;
        ++sourcesCreated;
        return std::make_unique<Source>(*this);
    }
    std::unique_ptr<MouseEvent> createMouseEvent(EventSource* source, MouseEventType type,
                                                 Point position) override {
        journal.note("createMouseEvent");
        if (failingEvents.contains(++eventsCreated))
            return nullptr;
        auto event = std::make_unique<Event>();
        event->content = {type, position, 0, source != nullptr, 0};
        return event;
    }
    void setFlags(MouseEvent& event, std::uint64_t flags) override {
        dynamic_cast<Event&>(event).content.flags = flags;
    }
    void post(const MouseEvent& event) override {
        journal.note("postEvent");
        auto arrived = dynamic_cast<const Event&>(event).content;
        arrived.at = loop_ ? loop_->elapsed() : 0;
        if (arrived.type != MouseEventType::mouseMoved)
            holdsButton = arrived.type != MouseEventType::leftMouseUp;
        holdsCommand = holdsButton && (arrived.flags & commandFlag) != 0;
        posted.push_back(arrived);
    }

    static constexpr std::uint64_t commandFlag = 0x100000;

  private:
    struct Event : MouseEvent {
        Posted content;
    };
    class Source : public EventSource {
      public:
        explicit Source(ScriptedEventPoster& poster)
            : poster_(poster) {}
        Source(const Source&) = delete;
        Source& operator=(const Source&) = delete;
        ~Source() override {
            ++poster_.sourcesReleased;
            poster_.holdsButton = false;
            poster_.holdsCommand = false;
            poster_.journal.note("releaseSource");
        }

      private:
        ScriptedEventPoster& poster_;
    };

    const VirtualLoop* loop_;
};

} // namespace orrivane
