#pragma once

#include <Orrivane/platform/EventPoster.h>

#include <linux/x11/CrashRelease.h>
#include <linux/x11/X11Screens.h>

#include <cstdint>
#include <optional>

namespace orrivane::x11 {

/// The pointer and the Command key by XTest. Command is the Super key: it goes down with the first
/// event that carries the flag, and up with the first one without it or with its source. Events
/// without a source hold nothing longer than the next one asks for. Where no key is Super there is
/// no source, and no event of a button.
class X11EventPoster : public EventPoster {
  public:
    X11EventPoster(Connection& connection, X11Screens& screens)
        : connection_(connection)
        , screens_(screens) {}
    ~X11EventPoster() override { releaseAll(); }

    std::unique_ptr<EventSource> createSource() override;
    std::unique_ptr<MouseEvent> createMouseEvent(EventSource* source, MouseEventType type,
                                                 Point position) override;
    void setFlags(MouseEvent& event, std::uint64_t flags) override;
    void post(const MouseEvent& event) override;

    /// The bit of the flags that stands for Command.
    static constexpr std::uint64_t commandFlag = 0x100000;

  private:
    class Source;
    class Event;
    struct Pixel {
        std::int16_t x;
        std::int16_t y;
    };

    [[nodiscard]] Pixel pixel(Point position);
    [[nodiscard]] std::uint8_t superKey();
    void holdCommand(bool down);
    void releaseAll();
    void prepareForACrash();
    void send(std::uint8_t type, std::uint8_t detail, Pixel at);

    Connection& connection_;
    X11Screens& screens_;
    std::uint8_t commandKey_ = 0; // as last looked up; 0: there is none
    std::uint8_t heldKey_ = 0;    // 0: none
    bool heldButton_ = false;
    std::optional<CrashRelease> crashRelease_; // of what is held
};

} // namespace orrivane::x11
