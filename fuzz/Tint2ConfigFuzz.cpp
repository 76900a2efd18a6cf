#include <linux/hosts/Tint2Config.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace orrivane;

/// A user's file: one line of it is exchanged and given back, and every other byte stays.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const int gap = data[0];
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    const auto line = Tint2Config::paddingLine(text);
    if (!line) {
        const auto with = Tint2Config::appended(text, "systray_padding = 0 0 0");
        const auto added = Tint2Config::find(with, "systray_padding = 0 0 0");
        if (!added || Tint2Config::removed(with, *added, Tint2Config::separator(text)) != text)
            std::abort();
        return 0;
    }
    const std::string own(*line);
    const auto written = Tint2Config::withGap(own, gap);
    if (Tint2Config::gap(written) != gap)
        std::abort();
    const auto changed = Tint2Config::replaced(text, *line, written);
    const auto found = Tint2Config::paddingLine(changed);
    if (!found || *found != written || Tint2Config::replaced(changed, *found, own) != text)
        std::abort();
    return 0;
}
