#include <desktop/support/CommonOptions.h>

#include <cstdlib>
#include <string_view>

#include <QByteArray>

namespace orrivane::desktop {

namespace {

std::optional<double> scaleOf(const char* text) {
    char* end = nullptr;
    const double scale = std::strtod(text, &end);
    if (end == text || *end != '\0' || !(scale >= 0.5 && scale <= 4))
        return std::nullopt;
    return scale;
}

} // namespace

std::optional<CommonOptions> CommonOptions::parse(int argc, char** argv, std::string& error) {
    CommonOptions options;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--dark") {
            options.dark = true;
        } else if (argument == "--scale") {
            const auto scale = i + 1 < argc ? scaleOf(argv[++i]) : std::nullopt;
            if (!scale) {
                error = "--scale needs a number from 0.5 to 4";
                return std::nullopt;
            }
            options.scale = *scale;
        } else {
            options.rest.emplace_back(argument);
        }
    }
    return options;
}

void keepToolkitUnscaled() {
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("QT_ENABLE_HIGHDPI_SCALING", "0");
    qputenv("QT_FONT_DPI", "96");
    for (const char* name : {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS", "QT_STYLE_OVERRIDE",
                             "QT_QPA_PLATFORMTHEME"})
        qunsetenv(name);
}

} // namespace orrivane::desktop
