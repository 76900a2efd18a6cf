#include <desktop/items/StatusKind.h>

#include <desktop/items/Drawings.h>

#include <algorithm>

namespace orrivane::desktop {

namespace {

using Type = MenuEntry::Type;
using Rhythm = StatusKind::Rhythm;

const MenuEntry line{Type::separator, {}};

MenuEntry action(std::string text) {
    return {Type::action, std::move(text)};
}
MenuEntry label(std::string text) {
    return {Type::label, std::move(text)};
}
MenuEntry section(std::string text) {
    return {Type::section, std::move(text)};
}
MenuEntry check(std::string text, bool on = false) {
    return {Type::check, std::move(text), on};
}
MenuEntry radio(std::string text, bool on = false) {
    return {Type::radio, std::move(text), on};
}

std::vector<StatusKind> machine() {
    return {
        {"battery",
         "Battery",
         54,
         Rhythm::still,
         {},
         {{drawings::battery,
           {section("Battery"), label("82 %, 5:10 Remaining"), line, check("Low Power Mode"),
            check("Optimise Charging", true), line, action("Energy Settings…")}}}},
        {"clock-world",
         "World Clock",
         60,
         Rhythm::everyMinute,
         {},
         {{drawings::worldClock,
           {section("Show the Time in"), radio("Tokyo", true), radio("Dubai"), radio("Lagos"),
            radio("Bogotá"), line, action("Add a City…")}}}},
        {"wifi",
         "Wi-Fi",
         24,
         Rhythm::still,
         {},
         {{drawings::wifi,
           {check("Wi-Fi", true), line, section("Known Networks"), radio("Harbour", true),
            radio("Attic 5 GHz"), radio("Train Guest"), line, action("Network Settings…")}}}},
        {"bluetooth",
         "Bluetooth",
         18,
         Rhythm::still,
         {},
         {{drawings::bluetooth,
           {check("Bluetooth", true), line, section("Devices"), check("Headphones", true),
            check("Trackball"), check("Keyboard"), line, action("Bluetooth Settings…")}}}},
        {"volume",
         "Sound",
         26,
         Rhythm::still,
         {},
         {{drawings::volume,
           {check("Mute"), line, section("Level"), radio("Quiet"), radio("Medium", true),
            radio("Loud"), line, action("Sound Settings…")}}}},
        {"keyboard",
         "Keyboard Layout",
         30,
         Rhythm::still,
         {},
         {{drawings::keyboard,
           {radio("English", true), radio("Deutsch"), radio("Français"), radio("Español"), line,
            action("Show Keyboard Viewer"), action("Keyboard Settings…")}}}},
        {"cpu",
         "Processor Monitor",
         42,
         Rhythm::everySecond,
         "Pause",
         {{drawings::cpu,
           {section("Load"), label("4 Cores"), line, check("Pause"),
            action("Show All Processes…")}}}},
        {"vpn",
         "Private Network",
         22,
         Rhythm::still,
         {},
         {{drawings::vpn,
           {check("Connect"), line, section("Place"), radio("Reykjavík", true), radio("Zürich"),
            radio("Singapore"), line, action("Network Settings…")}}}},
    };
}

std::vector<StatusKind> applications() {
    return {
        {"calendar",
         "Calendar",
         22,
         Rhythm::everyMinute,
         {},
         {{drawings::calendar,
           {section("Today"), label("09:30  Planning"), label("12:15  Lunch with Noor"),
            label("16:00  Review"), line, action("New Event…"), action("Open Calendar")}}}},
        {"weather",
         "Weather",
         48,
         Rhythm::still,
         {},
         {{drawings::weather,
           {label("18°, Sunny Intervals"), label("Rain Tomorrow"), line, radio("Celsius", true),
            radio("Fahrenheit"), line, action("Open Forecast…")}}}},
        {"mail",
         "Mail",
         26,
         Rhythm::still,
         {},
         {{drawings::mail,
           {label("3 New Messages"), line, action("New Message"), action("Mark All as Read"), line,
            action("Open Mail")}}}},
        {"cloud",
         "Cloud Drive",
         26,
         Rhythm::still,
         {},
         {{drawings::cloud,
           {label("Everything Is Up to Date"), line, check("Pause Syncing"), action("Open Folder"),
            action("Share a File…")}}}},
        {"music",
         "Music",
         20,
         Rhythm::still,
         {},
         {{drawings::music,
           {label("Low Tide, Second Movement"), line, check("Playing", true), action("Next"),
            action("Previous"), line, check("Shuffle")}}}},
        {"timer",
         "Timer",
         58,
         Rhythm::everySecond,
         "Pause",
         {{drawings::timer,
           {check("Pause"),
            {Type::restart, "Start Over"},
            line,
            radio("5 Minutes"),
            radio("25 Minutes", true),
            radio("45 Minutes")}}}},
        {"chat",
         "Chat",
         26,
         Rhythm::still,
         {},
         {{drawings::chat,
           {section("Unread"), action("Aino: See you there"), action("Team: Two Replies"), line,
            action("Mark All as Read"), check("Do Not Disturb")}}}},
        {"twins",
         "Twins",
         20,
         Rhythm::still,
         {},
         {{drawings::firstTwin, {action("First One"), action("First Two")}},
          {drawings::secondTwin, {action("Second One"), action("Second Two")}}}},
        {"nameless",
         {},
         20,
         Rhythm::still,
         {},
         {{drawings::nameless, {action("Who Am I?"), check("Stay Unnamed", true)}}}},
        {"sleepy",
         "Sleepy",
         26,
         Rhythm::still,
         {},
         {{drawings::sleepy, {action("Yawn"), line, {Type::hang, "Hang for 10 Seconds"}}}}},
    };
}

std::vector<StatusKind> allKinds() {
    std::vector<StatusKind> kinds = machine();
    for (auto& kind : applications())
        kinds.push_back(std::move(kind));
    return kinds;
}

} // namespace

const std::vector<StatusKind>& statusKinds() {
    static const std::vector<StatusKind> kinds = allKinds();
    return kinds;
}

const StatusKind* statusKind(std::string_view id) {
    const auto found = std::ranges::find(statusKinds(), id, &StatusKind::id);
    return found == statusKinds().end() ? nullptr : &*found;
}

} // namespace orrivane::desktop
