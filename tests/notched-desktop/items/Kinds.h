#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace orrivane::e2e {

struct ExpectedKind {
    std::string id;
    std::string className;
    std::string firstEntry; ///< the first of its menu that can be chosen

    friend std::ostream& operator<<(std::ostream& out, const ExpectedKind& kind) {
        return out << kind.id;
    }
};

/// The status applications with one icon each; "twins" has two.
inline const std::vector<ExpectedKind>& expectedKinds() {
    static const std::vector<ExpectedKind> kinds = {
        {"battery", "Battery", "Low Power Mode"},
        {"clock-world", "World Clock", "Tokyo"},
        {"wifi", "Wi-Fi", "Wi-Fi"},
        {"bluetooth", "Bluetooth", "Bluetooth"},
        {"volume", "Sound", "Mute"},
        {"keyboard", "Keyboard Layout", "English"},
        {"cpu", "Processor Monitor", "Pause"},
        {"vpn", "Private Network", "Connect"},
        {"calendar", "Calendar", "New Event…"},
        {"weather", "Weather", "Celsius"},
        {"mail", "Mail", "New Message"},
        {"cloud", "Cloud Drive", "Pause Syncing"},
        {"music", "Music", "Playing"},
        {"timer", "Timer", "Pause"},
        {"chat", "Chat", "Aino: See you there"},
        {"nameless", "", "Who Am I?"},
        {"sleepy", "Sleepy", "Yawn"},
    };
    return kinds;
}

} // namespace orrivane::e2e
