#include <desktop/session/SessionOptions.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <optional>

namespace orrivane::desktop {

namespace {

constexpr std::string_view usage =
    "Usage: orrivane-desktop [OPTION]... [-- PROGRAM [ARGUMENT]...]\n"
    "A notched laptop in a window: a menu bar, status items and two applications. With a PROGRAM\n"
    "it ends when that ends, and with its exit status.\n"
    "\n"
    "  --panel 13|14|15|16      the screen of a known notched laptop (14)\n"
    "  --panel X,Y,WIDTH,HEIGHT any notch, in pixels\n"
    "  --size WIDTHxHEIGHT      the screen's size in pixels, with any notch\n"
    "  --scale SCALE            pixels a point, 0.5 to 4 (1)\n"
    "  --dark                   light on dark\n"
    "  --headless               without a window; so too where DISPLAY is not set\n"
    "  --items KIND,...|all|none   which status items (all)\n"
    "  --no-windows             without the two applications\n"
    "  --screens 1|2            with a second screen to the right (1)\n"
    "  --config DIR             keep preferences in DIR (else they pass)\n"
    "  --log FILE               write what is chosen in menus to FILE\n"
    "  --help, --version\n";

struct KnownPanel {
    std::string_view name;
    int width; // pixels at two a point
    int height;
    int rows;
};
constexpr std::array<KnownPanel, 4> knownPanels{{
    {"13", 2560, 1664, 64},
    {"14", 3024, 1964, 74},
    {"15", 2880, 1864, 64},
    {"16", 3456, 2234, 74},
}};
constexpr double housingWidth = 185; // points

std::optional<int> integer(std::string_view text) {
    int value = 0;
    const auto [stop, error] = std::from_chars(text.begin(), text.end(), value);
    return error == std::errc() && stop == text.end() ? std::optional(value) : std::nullopt;
}

std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> parts;
    while (true) {
        const auto end = text.find(separator);
        parts.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos)
            return parts;
        text.remove_prefix(end + 1);
    }
}

std::optional<std::vector<int>> integers(std::string_view text, char separator, std::size_t count) {
    std::vector<int> values;
    for (const auto& part : split(text, separator))
        if (const auto value = integer(part))
            values.push_back(*value);
    if (values.size() != count || std::ranges::count(text, separator) != std::ptrdiff_t(count) - 1)
        return std::nullopt;
    return values;
}

/// The arguments, taken one after the other.
class Reader {
  public:
    explicit Reader(std::span<const std::string_view> arguments)
        : rest_(arguments) {}

    std::variant<SessionOptions, SessionText> read() {
        while (!rest_.empty() && problem_.empty() && !text_) {
            const auto argument = take();
            if (argument == "--") {
                options_.program.assign(rest_.begin(), rest_.end());
                if (options_.program.empty())
                    problem_ = "after -- the program to run is missing";
                break;
            }
            option(argument);
        }
        if (problem_.empty() && !text_)
            finish();
        if (!problem_.empty())
            return SessionText{"orrivane-desktop: " + problem_ +
                                   "; orrivane-desktop --help lists the options.\n",
                               2};
        if (text_)
            return SessionText{*text_, 0};
        return options_;
    }

  private:
    std::string_view take() {
        const auto first = rest_.front();
        rest_ = rest_.subspan(1);
        return first;
    }

    std::string_view value(std::string_view option) {
        if (!rest_.empty())
            return take();
        problem_ = std::string(option) + " needs a value";
        return {};
    }

    void option(std::string_view name) {
        if (name == "--help" || name == "-h")
            text_ = usage;
        else if (name == "--version")
            text_ = "orrivane-desktop " ORRIVANE_VERSION "\n";
        else if (name == "--dark")
            options_.dark = true;
        else if (name == "--headless")
            options_.headless = true;
        else if (name == "--no-windows")
            options_.windows = false;
        else if (name == "--panel")
            panel_ = value(name);
        else if (name == "--size")
            size_ = value(name);
        else if (name == "--scale")
            scale(value(name));
        else if (name == "--items")
            items(value(name));
        else if (name == "--screens")
            screens(value(name));
        else if (name == "--config")
            options_.config = value(name);
        else if (name == "--log")
            options_.log = value(name);
        else
            problem_ = "unknown option '" + std::string(name) + "'";
    }

    void scale(std::string_view text) {
        const std::string copy(text);
        char* end = nullptr;
        const double number = std::strtod(copy.c_str(), &end);
        if (copy.empty() || *end != '\0' || !(number >= 0.5 && number <= 4))
            problem_ = "--scale takes a number from 0.5 to 4, not '" + copy + "'";
        else
            options_.scale = number;
    }

    void items(std::string_view text) {
        const auto& all = SessionOptions::allItems();
        chosen_ = true;
        if (text == "all" || text == "none") {
            options_.items = text == "all" ? all : std::vector<std::string>();
            return;
        }
        options_.items = split(text, ',');
        for (const auto& item : options_.items)
            if (std::ranges::find(all, item) == all.end())
                problem_ = "there is no status item '" + item + "'";
    }

    void screens(std::string_view text) {
        options_.screens = integer(text).value_or(0);
        if (options_.screens != 1 && options_.screens != 2)
            problem_ = "--screens takes 1 or 2, not '" + std::string(text) + "'";
    }

    void finish() {
        if (!chosen_)
            options_.items = SessionOptions::allItems();
        options_.panel = Panel::known(panel_, options_.scale);
        const bool isFree = options_.panel == Panel();
        if (isFree)
            freeNotch();
        if (size_.empty() || !problem_.empty())
            return;
        const auto size = integers(size_, 'x', 2);
        if (!isFree)
            problem_ = "--size goes with --panel X,Y,WIDTH,HEIGHT only";
        else if (!size || size->at(0) < 320 || size->at(1) < 200 || size->at(0) > 16384 ||
                 size->at(1) > 16384)
            problem_ = "--size takes pixels as in 1512x982, not '" + size_ + "'";
        else
            setSize(size->at(0), size->at(1));
    }

    void freeNotch() {
        const auto notch = integers(panel_, ',', 4);
        if (!notch || std::ranges::any_of(*notch, [](int number) { return number < 0; })) {
            problem_ =
                "--panel takes 13, 14, 15, 16 or a notch as in 663,0,185,37, not '" + panel_ + "'";
            return;
        }
        const auto usual = Panel::known("14", options_.scale);
        options_.panel = {usual.width,  usual.height, notch->at(0),
                          notch->at(1), notch->at(2), notch->at(3)};
    }

    void setSize(int width, int height) {
        options_.panel.width = width;
        options_.panel.height = height;
    }

    std::span<const std::string_view> rest_;
    SessionOptions options_;
    std::string panel_ = "14";
    std::string size_;
    bool chosen_ = false;
    std::string problem_;
    std::optional<std::string> text_;
};

} // namespace

Panel Panel::known(std::string_view name, double scale) {
    const auto found = std::ranges::find(knownPanels, name, &KnownPanel::name);
    if (found == knownPanels.end())
        return {};
    const auto pixels = [scale](double points) {
        return static_cast<int>(std::lround(points * scale));
    };
    const int width = pixels(found->width / 2.0);
    const int housing = pixels(housingWidth);
    return {width,   pixels(found->height / 2.0), (width - housing) / 2, 0,
            housing, pixels(found->rows / 2.0)};
}

const std::vector<std::string>& SessionOptions::allItems() {
    static const std::vector<std::string> all{
        "battery", "wifi",  "volume",  "bluetooth", "keyboard", "clock-world",
        "cpu",     "cloud", "weather", "music",     "calendar", "mail",
        "timer",   "vpn",   "chat",    "twins",     "nameless", "sleepy"};
    return all;
}

std::variant<SessionOptions, SessionText>
parseSession(std::span<const std::string_view> arguments) {
    return Reader(arguments).read();
}

} // namespace orrivane::desktop
