#include <Orrivane/CommandLine.h>

#include <array>
#include <optional>

namespace orrivane {

namespace {

constexpr std::string_view usage =
    "Usage: orrivane [OPTION]\n"
    "Mirrors the status items that the notch hides in a tray left of it.\n"
    "\n"
    "      --set-notch X,Y,WIDTH,HEIGHT\n"
    "                    store where the notch is, in pixels of the whole desktop from\n"
    "                    its top left corner, and exit\n"
    "      --diagnose    say what it sees, what it would mirror and why not the rest, and\n"
    "                    exit; works beside a running Orrivane\n"
    "      --json        with --diagnose: for machines\n"
    "      --capture     with --diagnose: also try to take a picture of every item, and\n"
    "                    say what came of it; nothing is kept\n"
    "      --quit        end the Orrivane that runs on this desktop\n"
    "  -h, --help        show this help and exit\n"
    "      --version     show the version and exit\n";

UsageError unreadableNotch(std::string_view text) {
    return {std::string("'").append(text) +
            "' is no notch: give four numbers as in --set-notch 660,0,192,37 (left, top, width "
            "and height in pixels)."};
}

// Locale-independent and strict: the whole field must be one plain decimal number.
std::optional<double> number(std::string_view field) {
    if (field.empty() || field.size() > 16 ||
        field.find_first_not_of("0123456789.-") != std::string_view::npos)
        return std::nullopt;
    const bool negative = field.front() == '-';
    double value = 0;
    double place = 0;
    bool digits = false;
    for (const char c : field.substr(negative ? 1 : 0)) {
        if (c == '-' || (c == '.' && place != 0))
            return std::nullopt;
        if (c == '.') {
            place = 1;
            continue;
        }
        digits = true;
        value = value * 10 + (c - '0');
        place *= 10;
    }
    if (!digits)
        return std::nullopt;
    return (negative ? -value : value) / (place == 0 ? 1 : place);
}

// An option with a value; `at` is moved on to the value's argument.
std::optional<UsageError> parseSetNotch(std::span<const std::string_view> arguments,
                                        std::size_t& at, Command& command) {
    constexpr std::string_view setNotch = "--set-notch";
    const auto argument = arguments[at];
    std::optional<std::string_view> notch;
    if (argument.starts_with(setNotch) && argument.substr(setNotch.size()).starts_with('='))
        notch = argument.substr(setNotch.size() + 1);
    else if (argument == setNotch)
        notch = at + 1 < arguments.size() ? arguments[++at] : std::string_view{};
    if (!notch)
        return UsageError{"Unknown option '" + std::string(argument) +
                          "'; orrivane --help lists the options."};
    const auto parsed = CommandLine::parseNotch(*notch);
    if (const auto* error = std::get_if<UsageError>(&parsed))
        return *error;
    command = SetNotchCommand{std::get<Rect>(parsed)};
    return std::nullopt;
}

} // namespace

std::variant<Rect, UsageError> CommandLine::parseNotch(std::string_view text) {
    std::array<double, 4> values{};
    std::string_view rest = text;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const auto comma = rest.find(',');
        const bool last = i + 1 == values.size();
        if ((comma == std::string_view::npos) != last)
            return unreadableNotch(text);
        const auto value = number(rest.substr(0, comma));
        if (!value)
            return unreadableNotch(text);
        values[i] = *value;
        rest = last ? std::string_view{} : rest.substr(comma + 1);
    }
    if (values[2] <= 0 || values[3] <= 0)
        return unreadableNotch(text);
    return Rect{{values[0], values[1]}, {values[2], values[3]}};
}

Command CommandLine::parse(std::span<const std::string_view> arguments) {
    Command command = RunCommand{};
    DiagnoseCommand details;
    std::string_view asked;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const auto argument = arguments[i];
        if (argument == "-h" || argument == "--help")
            return PrintCommand{std::string(usage)};
        if (argument == "--version")
            return PrintCommand{"Orrivane " + std::string(version()) + "\n"};
        if (argument == "--json") {
            details.json = true;
            continue;
        }
        if (argument == "--capture") {
            details.capture = true;
            continue;
        }
        if (argument == "--quit")
            command = QuitCommand{};
        else if (argument == "--diagnose")
            command = DiagnoseCommand{};
        else if (const auto error = parseSetNotch(arguments, i, command))
            return *error;
        const auto name = argument.substr(0, argument.find('='));
        if (!asked.empty() && asked != name)
            return UsageError{std::string(asked) + " and " + std::string(name) +
                              " do not go together; give one at a time."};
        asked = name;
    }
    if (!details.json && !details.capture)
        return command;
    if (!std::holds_alternative<DiagnoseCommand>(command))
        return UsageError{std::string(details.json ? "--json" : "--capture") +
                          " goes with --diagnose only; orrivane --help lists the options."};
    return details;
}

std::string_view CommandLine::version() {
    return ORRIVANE_VERSION;
}

} // namespace orrivane
