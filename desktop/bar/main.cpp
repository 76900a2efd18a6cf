#include <desktop/bar/BarWindow.h>
#include <desktop/bar/SettingsPortal.h>
#include <desktop/support/CommonOptions.h>
#include <linux/support/MenuBarPreferences.h>

#include <algorithm>
#include <cmath>
#include <iostream>

#include <QApplication>

namespace {

using namespace orrivane::desktop;

constexpr std::int64_t usualSpacing = 16;
constexpr std::int64_t usualSelectionPadding = 14;
constexpr double leastItemWidth = 16; // points, of an item that declares none

int told(std::int64_t points) {
    return static_cast<int>(std::clamp<std::int64_t>(points, INT32_MIN, INT32_MAX));
}

TrayHost::Settings traySettings(const Theme& theme) {
    const auto stored =
        orrivane::MenuBarPreferences::read(orrivane::MenuBarPreferences::userFile());
    // What is wider than a window can be is all the same to the row, at every scale.
    constexpr std::int64_t bound = ItemRow::widest;
    const auto spacing = std::clamp(stored.spacing.value_or(usualSpacing), -bound, bound);
    return {theme.barBackground,
            theme.barForeground,
            told(stored.spacing.value_or(usualSpacing)),
            told(stored.selectionPadding.value_or(usualSelectionPadding)),
            std::llround(static_cast<double>(spacing) * theme.scale),
            theme.pixels(leastItemWidth)};
}

// Without an address the bus library would start a bus of its own.
QDBusConnection sessionBus() {
    return qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ? QDBusConnection(QString())
                                                                   : QDBusConnection::sessionBus();
}

int usage(std::ostream& out, int status) {
    out << "Usage: ControlCenter [--scale S] [--dark]\n"
           "The desktop's menu bar: menus, status items of other programs, clock.\n";
    return status;
}

int run(const CommonOptions& options, int argc, char** argv) {
    std::string problem;
    auto wire = TrayWire::open(problem);
    if (!wire) {
        std::cerr << "ControlCenter: " << problem << '\n';
        return 1;
    }
    keepToolkitUnscaled();
    QApplication::setAttribute(Qt::AA_DontCreateNativeWidgetSiblings);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("ControlCenter"));
    QApplication::setQuitOnLastWindowClosed(false);
    const Theme theme = Theme::make(options.dark, options.scale);
    theme.install(application);
    // Before the tray is there: programs that wait for it find the portal too.
    SettingsPortal portal(options.dark);
    if (QString sentence; !portal.offer(sessionBus(), sentence))
        std::cerr << "ControlCenter: " << sentence.toStdString() << '\n';
    BarWindow bar(theme, std::move(wire), traySettings(theme));
    QObject::connect(&bar, &BarWindow::failed, [](const QString& sentence) {
        std::cerr << "ControlCenter: " << sentence.toStdString() << '\n';
        QApplication::exit(1);
    });
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv) try {
    std::string error;
    const auto options = CommonOptions::parse(argc, argv, error);
    if (!options) {
        std::cerr << "ControlCenter: " << error << '\n';
        return 2;
    }
    if (options->rest == std::vector<std::string>{"--help"})
        return usage(std::cout, 0);
    if (!options->rest.empty())
        return usage(std::cerr, 2);
    return run(*options, argc, argv);
} catch (const std::exception& failure) {
    std::cerr << "ControlCenter: " << failure.what() << '\n';
    return 1;
}
